#include "HostKind.h"

#include <windows.h>

#include <string>
#include <string_view>

namespace solvane {

namespace {

struct HostProgram {
    const char* fileName;
    HostKind kind;
};
constexpr HostProgram hostPrograms[] = {
    {"apwin.exe", HostKind::aspenPlus},
    {"apmain.exe", HostKind::aspenPlus},
    {"hysys.exe", HostKind::hysys},
    {"proii.exe", HostKind::proII},
    {"unisimdesign.exe", HostKind::unisimDesign},
    {"brume.exe", HostKind::brume},
    {"brume64.exe", HostKind::brume},
};

std::string programName(std::string_view commandLine) {
    std::string_view path;
    if (commandLine.starts_with('"'))
        path = commandLine.substr(1, commandLine.find('"', 1) - 1);
    else
        path = commandLine.substr(0, commandLine.find_first_of(" \t"));
    std::string name(path.substr(path.rfind('\\') + 1));
    CharLowerA(name.data());
    return name;
}

} // namespace

HostKind detectHost() {
    static const HostKind hostKind = [] {
        const std::string program = programName(GetCommandLineA());
        for (const HostProgram& host : hostPrograms)
            if (program == host.fileName)
                return host.kind;
        return HostKind::other;
    }();
    return hostKind;
}

} // namespace solvane
