#include "MexPlacement.h"

#include "com/Failure.h"
#include "com/Handle.h"
#include "com/Module.h"
#include "com/Registry.h"
#include "com/Text.h"
#include "unit/model/WorkingFolder.h"

#include <array>
#include <mutex>

namespace solvane {

namespace {

struct MexPlace {
    std::string folder;
    bool done = false;
};
// Shared by all units of the process. Hosts may create several at a time, each on a thread of its own.
MexPlace place;
CriticalSection placing;

void copyTo(const std::string& source, const std::string& target) {
    CopyFileA(source.c_str(), target.c_str(), FALSE);
}

} // namespace

const std::string& mexFolder() {
    return place.folder;
}

std::optional<std::wstring> installedMatlab() {
    return readRegistryString(HKEY_CLASSES_ROOT, L"Matlab.Application\\CurVer", L"");
}

bool isOldMatlab(const std::wstring& currentVersion) {
    constexpr std::size_t versionPosition = std::wstring_view(L"Matlab.Application.").size();
    if (currentVersion.size() <= versionPosition)
        return false;
    const std::wstring version = currentVersion.substr(versionPosition);
    return version[0] == L'5' || version[0] == L'6' ||
           (version[0] == L'7' && version.size() > 2 && version[2] == L'0');
}

bool placeMexFile(std::string& error) {
    const std::lock_guard guard(placing);
    if (place.done)
        return true;
    if (!findTemporaryFolder(place.folder, error))
        return false;
    const std::optional<std::wstring> version = installedMatlab();
    place.folder += "SolvaneUnitMEX" + (version ? narrow(*version) : "SolvaneUnitMEX");
    CreateDirectoryA(place.folder.c_str(), nullptr);
    if (!version)
        return fail(error,
                    "Unable to determine current version of Matlab.Application; Matlab not installed?");

    const std::string modulePath = narrow(ComModule::current().path());
    const std::string source = modulePath.substr(0, modulePath.rfind('\\') + 1) + "CapeOpenUnitMex.";
    const std::string target = place.folder + "\\CapeOpenUnitMex.";
    if (isOldMatlab(*version)) {
        copyTo(source + "dll5", target + "dll");
    } else {
        DeleteFileA((target + "dll").c_str()); // placed for an older Matlab
        copyTo(source + "mexw32-77", target + "mexw32");
        copyTo(source + "mexw64-77", target + "mexw64");
    }
    place.done = true;
    return true;
}

} // namespace solvane
