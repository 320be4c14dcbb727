#include "AutomationClient.h"

#include "com/Registry.h"
#include "com/Text.h"

#include <gtest/gtest.h>

#include <tlhelp32.h>

#include <algorithm>
#include <fstream>
#include <iterator>

namespace solvane::engine {

namespace {

/// Registers the server for the tests, and leaves the machine's registration as it was found.
class RegisteredServer : public testing::Environment {
public:
    void SetUp() override {
        ASSERT_HRESULT_SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED));
        wasRegistered_ = readRegistryString(HKEY_LOCAL_MACHINE,
                                            L"Software\\Classes\\SolvaneOctave.Application\\CLSID", L"")
                             .has_value();
        ASSERT_EQ(runProgram(builtFile(L"OctaveAutomationServer.exe") + L" /RegServer"), 0u);
    }
    void TearDown() override {
        CoUninitialize();
        const wchar_t* option = wasRegistered_ ? L" /RegServer" : L" /UnregServer";
        EXPECT_EQ(runProgram(builtFile(L"OctaveAutomationServer.exe") + option), 0u);
    }

private:
    bool wasRegistered_ = false;
};

[[maybe_unused]] const testing::Environment* const registeredServer =
    testing::AddGlobalTestEnvironment(new RegisteredServer);

Handle startProgram(std::wstring command, HANDLE output) {
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = startup.hStdError = output;
    PROCESS_INFORMATION started{};
    EXPECT_TRUE(CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                               &started));
    const Handle thread(started.hThread);
    return Handle(started.hProcess);
}

} // namespace

std::wstring builtFile(std::wstring_view name) {
    std::wstring path = L"Z:" + widen(SOLVANE_BIN) + L"\\" + std::wstring(name);
    std::replace(path.begin(), path.end(), L'/', L'\\');
    return path;
}

DWORD runProgram(std::wstring command, std::string* printed) {
    Handle readEnd;
    Handle writeEnd;
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    CreatePipe(readEnd.put(), writeEnd.put(), &inherited, 0);
    const Handle process = startProgram(std::move(command), writeEnd.get());
    writeEnd.reset();
    char buffer[512];
    DWORD count = 0;
    while (ReadFile(readEnd.get(), buffer, sizeof buffer, &count, nullptr) && count > 0)
        if (printed)
            printed->append(buffer, count);
    WaitForSingleObject(process.get(), INFINITE);
    DWORD code = ~0u;
    GetExitCodeProcess(process.get(), &code);
    return code;
}

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

Call AutomationClient::call(const wchar_t* member, WORD flags, const Variant* argument) {
    Call call{};
    auto* name = const_cast<LPOLESTR>(member);
    DISPID id = 0;
    call.result = object_->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id);
    if (FAILED(call.result))
        return call;
    DISPID put = DISPID_PROPERTYPUT;
    DISPPARAMS parameters{};
    parameters.rgvarg = argument ? const_cast<VARIANT*>(&argument->get()) : nullptr;
    parameters.cArgs = argument ? 1 : 0;
    if (flags == DISPATCH_PROPERTYPUT) {
        parameters.rgdispidNamedArgs = &put;
        parameters.cNamedArgs = 1;
    }
    EXCEPINFO exception{};
    call.result = object_->Invoke(id, IID_NULL, LOCALE_SYSTEM_DEFAULT, flags, &parameters, call.value.put(),
                                  &exception, nullptr);
    call.description = viewOf(exception.bstrDescription);
    SysFreeString(exception.bstrDescription);
    SysFreeString(exception.bstrSource);
    SysFreeString(exception.bstrHelpFile);
    return call;
}

std::wstring AutomationClient::execute(std::wstring_view command) {
    const Variant argument(command);
    const Call done = call(L"Execute", DISPATCH_METHOD, &argument);
    EXPECT_HRESULT_SUCCEEDED(done.result) << narrow(command) << ": " << narrow(done.description);
    if (done.value.type() != VT_BSTR) {
        ADD_FAILURE() << "the result is no text but a variant of type " << done.value.type();
        return {};
    }
    return std::wstring(done.value.text());
}

ScriptFolder::ScriptFolder() {
    static int number = 0;
    path_ = (std::filesystem::temp_directory_path() /
             (L"Sölvane Tëst " + std::to_wstring(GetCurrentProcessId()) + L' ' + std::to_wstring(++number)))
                .wstring();
    std::filesystem::create_directories(path_);
}

ScriptFolder::~ScriptFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

void ScriptFolder::write(std::wstring_view name, std::string_view content) const {
    std::ofstream file(std::filesystem::path(path_) / name, std::ios::binary);
    file << content;
}

std::string ScriptFolder::read(std::wstring_view name) const {
    std::ifstream file(std::filesystem::path(path_) / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

Handle startClient(const ScriptFolder& folder, std::string_view script) {
    folder.write(L"client.vbs", script);
    return startProgram(L"cscript //nologo \"" + folder.path() + L"\\client.vbs\" \"" + folder.path() + L"\"",
                        GetStdHandle(STD_OUTPUT_HANDLE));
}

bool waitUntil(const std::function<bool()>& condition) {
    for (int i = 0; i < 400 && !condition(); ++i)
        Sleep(50);
    return condition();
}

bool isRunning(std::wstring_view program, DWORD parent) {
    const FileHandle snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof entry;
    for (BOOL more = Process32FirstW(snapshot.get(), &entry); more;
         more = Process32NextW(snapshot.get(), &entry))
        if (compareNoCase(entry.szExeFile, program) == 0 &&
            (parent == 0 || entry.th32ParentProcessID == parent))
            return true;
    return false;
}

bool hasEnded(std::wstring_view program, DWORD parent) {
    return waitUntil([=] { return !isRunning(program, parent); });
}

bool isOctaveRunning(const std::string& processId) {
    std::ifstream file("Z:\\proc\\" + processId + "\\cmdline", std::ios::binary);
    const std::string command{std::istreambuf_iterator<char>(file), {}};
    return command.find("octave") != std::string::npos;
}

} // namespace solvane::engine
