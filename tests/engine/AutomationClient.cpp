#include "AutomationClient.h"

#include "Folders.h"
#include "com/Registry.h"
#include "com/Text.h"

#include <gtest/gtest.h>

#include <tlhelp32.h>

#include <algorithm>
#include <fstream>
#include <iterator>

namespace solvane::engine {

std::string runServer(const wchar_t* options) {
    const Outcome outcome = Program(builtFile(L"OctaveAutomationServer.exe") + L' ' + options).wait();
    EXPECT_EQ(outcome.exitCode, 0u) << outcome.printed;
    return outcome.printed;
}

namespace {

/// Registers the server for the tests, and leaves the machine's registration as it was found.
class RegisteredServer : public testing::Environment {
public:
    void SetUp() override {
        ASSERT_HRESULT_SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED));
        wasRegistered_ = readRegistryString(HKEY_LOCAL_MACHINE,
                                            L"Software\\Classes\\SolvaneOctave.Application\\CLSID", L"")
                             .has_value();
        runServer(L"/RegServer");
    }
    void TearDown() override {
        CoUninitialize();
        runServer(wasRegistered_ ? L"/RegServer" : L"/UnregServer");
    }

private:
    bool wasRegistered_ = false;
};

[[maybe_unused]] const testing::Environment* const registeredServer =
    testing::AddGlobalTestEnvironment(new RegisteredServer);

} // namespace

AutomationClient::AutomationClient() {
    EXPECT_HRESULT_SUCCEEDED(create(object_));
}

HRESULT AutomationClient::create(ComRef<IDispatch>& object) {
    CLSID id;
    const HRESULT found = CLSIDFromProgID(L"SolvaneOctave.Application", &id);
    if (FAILED(found))
        return found;
    return CoCreateInstance(id, nullptr, CLSCTX_LOCAL_SERVER, IID_IDispatch, object.putVoid());
}

LateBound::Call AutomationClient::call(const wchar_t* member, WORD flags, const Variant* argument) {
    std::vector<VARIANT> arguments;
    if (argument)
        arguments.push_back(argument->get());
    return LateBound(object_.get()).call(member, flags, arguments);
}

std::wstring AutomationClient::execute(std::wstring_view command) {
    const Variant argument(command);
    const LateBound::Call done = call(L"Execute", DISPATCH_METHOD, &argument);
    EXPECT_HRESULT_SUCCEEDED(done.result) << narrow(command) << ": " << narrow(done.description);
    if (done.value.type() != VT_BSTR) {
        ADD_FAILURE() << "the result is no text but a variant of type " << done.value.type();
        return {};
    }
    return std::wstring(done.value.text());
}

std::wstring AutomationClient::failureOf(std::wstring_view command) {
    const Variant argument(command);
    const LateBound::Call failed = call(L"Execute", DISPATCH_METHOD, &argument);
    EXPECT_EQ(failed.result, DISP_E_EXCEPTION) << narrow(command);
    return failed.description;
}

ScriptFolder::ScriptFolder() {
    static int number = 0;
    path_ = (std::filesystem::temp_directory_path() /
             (L"Sölvane Tëst " + std::to_wstring(GetCurrentProcessId()) + L' ' + std::to_wstring(++number)))
                .wstring();
    std::filesystem::create_directories(path_);
}

ScriptFolder::~ScriptFolder() {
    deleteTree(path_);
}

void ScriptFolder::write(std::wstring_view name, std::string_view content) const {
    std::ofstream file(std::filesystem::path(path_) / name, std::ios::binary);
    file << content;
}

std::string ScriptFolder::read(std::wstring_view name) const {
    std::ifstream file(std::filesystem::path(path_) / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void ScriptFolder::makeOld() const {
    const FileHandle folder(CreateFileW(path_.c_str(), FILE_WRITE_ATTRIBUTES, 0, nullptr, OPEN_EXISTING,
                                        FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    const FILETIME old{0, 0x01d00000}; // 2014
    EXPECT_TRUE(SetFileTime(folder.get(), nullptr, nullptr, &old));
}

Program startClient(const ScriptFolder& folder, std::string_view script) {
    folder.write(L"client.vbs", script);
    return Program(L"cscript //nologo \"" + folder.path() + L"\\client.vbs\" \"" + folder.path() + L"\"");
}

bool waitUntil(const std::function<bool()>& condition) {
    for (int i = 0; i < 400 && !condition(); ++i)
        Sleep(50);
    return condition();
}

namespace {

/// The last of the processes that fulfil a condition; 0 if there is none.
DWORD findProcess(const std::function<bool(const PROCESSENTRY32W&)>& condition) {
    const FileHandle snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof entry;
    DWORD found = 0;
    for (BOOL more = Process32FirstW(snapshot.get(), &entry); more;
         more = Process32NextW(snapshot.get(), &entry))
        if (condition(entry))
            found = entry.th32ProcessID;
    return found;
}

DWORD findProcess(std::wstring_view program, DWORD parent) {
    return findProcess([=](const PROCESSENTRY32W& entry) {
        return compareNoCase(entry.szExeFile, program) == 0 &&
               (parent == 0 || entry.th32ParentProcessID == parent);
    });
}

} // namespace

bool isRunning(std::wstring_view program, DWORD parent) {
    return findProcess(program, parent) != 0;
}

DWORD serverOfThisProcess() {
    return findProcess(L"OctaveAutomationServer.exe", GetCurrentProcessId());
}

bool hasEnded(std::wstring_view program, DWORD parent) {
    return waitUntil([=] { return !isRunning(program, parent); });
}

bool isOctaveRunning(const std::string& processId) {
    const bool isOnWindows = findProcess([&](const PROCESSENTRY32W& entry) {
        return std::to_string(entry.th32ProcessID) == processId &&
               compareNoCase(entry.szExeFile, L"octave-cli.exe") == 0;
    });
    if (isOnWindows)
        return true;
    std::ifstream file("Z:\\proc\\" + processId + "\\cmdline", std::ios::binary);
    const std::string command{std::istreambuf_iterator<char>(file), {}};
    return command.find("octave") != std::string::npos;
}

} // namespace solvane::engine
