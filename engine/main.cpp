/// OctaveAutomationServer: GNU Octave as a COM automation server, for programs that control Matlab in this
/// way. COM starts one process for each object that a client creates.
#include "AutomationObject.h"
#include "ClientWatch.h"
#include "OctaveProcess.h"
#include "OctaveSession.h"
#include "ServerRegistration.h"
#include "com/ClassFactory.h"
#include "com/ComRef.h"
#include "com/LastingStub.h"
#include "com/Text.h"

#include <algorithm>
#include <cstdio>
#include <vector>

namespace solvane::engine {

namespace {

// A server whose client never connects ends after this time, in milliseconds.
constexpr UINT unusedTimeout = 120000;

constexpr wchar_t usage[] =
    L"GNU Octave as a COM automation server\n"
    L"\n"
    L"  OctaveAutomationServer /RegServer             register for all users\n"
    L"  OctaveAutomationServer /RegServer /PerUser    register for this user\n"
    L"  OctaveAutomationServer /UnregServer           remove both registrations\n"
    L"  OctaveAutomationServer /UnregServer /PerUser  remove this user's registration\n"
    L"  OctaveAutomationServer /FindOctave            start Octave, and print its version and path\n"
    L"  OctaveAutomationServer --help                 this text\n"
    L"\n"
    L"Registers SolvaneOctave.Application, and also Matlab.Application unless that belongs to a Matlab.\n"
    L"Runs the Octave whose path is in the environment variable SOLVANE_OCTAVE, or in OctaveProgram of\n"
    L"Software\\SolvaneUO in HKEY_CURRENT_USER or HKEY_LOCAL_MACHINE, or otherwise the newest installed\n"
    L"one that starts.\n"
    L"\n"
    L"Exit codes: 0 done, 1 failed, 2 a bad command line.\n";

enum ExitCode { exitDone = 0, exitFailed = 1, exitUsage = 2 };

/// The program has no console of its own, which COM would show, but prints to its caller's.
void attachToConsole() {
    if (GetStdHandle(STD_OUTPUT_HANDLE) || !AttachConsole(ATTACH_PARENT_PROCESS))
        return;
    std::freopen("CONOUT$", "w", stdout);
    std::freopen("CONOUT$", "w", stderr);
}

int fail(const std::wstring& text) {
    std::fprintf(stderr, "OctaveAutomationServer: %ls\n", text.c_str());
    return exitFailed;
}

int runRegistration(RegistrationScope scope) {
    std::wstring error;
    bool standsForMatlab = false;
    if (!registerServer(scope, ComModule::current().path(), standsForMatlab, error))
        return fail(error);
    std::printf("Registered SolvaneOctave.Application%s\n",
                standsForMatlab ? " and Matlab.Application"
                                : "; Matlab.Application belongs to another server and was left unchanged");
    return exitDone;
}

int runRemoval(RegistrationScope scope) {
    std::wstring error;
    if (!unregisterServer(RegistrationScope::user, error) ||
        (scope == RegistrationScope::machine && !unregisterServer(scope, error)))
        return fail(error);
    std::printf("Removed the registration\n");
    return exitDone;
}

int runSearch() {
    OctaveProcess octave;
    std::wstring error;
    std::wstring version;
    if (!octave.launch(error) || !octave.waitUntilReady(error) ||
        FAILED(octave.execute(L"printf('%s', version)", version, error)))
        return fail(error);
    std::printf("GNU Octave %ls, %ls\n", version.c_str(), octave.program().path().c_str());
    return exitDone;
}

/// Runs until the object's end posts the quit message.
void runMessages() {
    const UINT_PTR timer = SetTimer(nullptr, 0, unusedTimeout, nullptr);
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (message.message == WM_TIMER && message.wParam == timer && ComModule::current().lockCount() == 0)
            return;
        DispatchMessageW(&message);
    }
}

/// Until the object's end.
HRESULT serveObject() {
    const LastingStub factories(IID_IClassFactory), objects(IID_IDispatch);
    ComRef<IUnknown> factory;
    DWORD registered = 0;
    HRESULT result = createClassFactory(createInstance<CAutomationObject>, factory.putVoid());
    if (SUCCEEDED(result))
        result = CoRegisterClassObject(automationClass, factory.get(), CLSCTX_LOCAL_SERVER, REGCLS_SINGLEUSE,
                                       &registered);
    if (SUCCEEDED(result)) {
        runMessages();
        CoRevokeClassObject(registered);
    }
    return result;
}

int runServer() {
    endWithClient(OctaveProcess::abandon);
    OctaveSession session;
    session.launch();

    if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)))
        return fail(L"Could not initialise COM");
    const HRESULT result = serveObject();
    CoUninitialize();
    return SUCCEEDED(result) ? exitDone : fail(L"Could not register the running server with COM");
}

int run(const std::vector<std::wstring>& options) {
    const auto has = [&](std::wstring_view name) {
        return std::any_of(options.begin(), options.end(), [&](const std::wstring& option) {
            return (option.starts_with(L'/') || option.starts_with(L'-')) &&
                   compareNoCase(std::wstring_view(option).substr(1), name) == 0;
        });
    };
    const bool isServer = has(L"Embedding");
    if (!isServer)
        attachToConsole();
    WSADATA sockets;
    if (WSAStartup(MAKEWORD(2, 2), &sockets) != 0)
        return fail(L"Could not initialise the sockets");
    if (isServer)
        return runServer();
    if (has(L"FindOctave"))
        return runSearch();
    const RegistrationScope scope = has(L"PerUser") ? RegistrationScope::user : RegistrationScope::machine;
    if (has(L"RegServer"))
        return runRegistration(scope);
    if (has(L"UnregServer"))
        return runRemoval(scope);
    std::printf("%ls", usage);
    return has(L"-help") || has(L"?") ? exitDone : exitUsage;
}

} // namespace

} // namespace solvane::engine

int wmain(int count, wchar_t** arguments) {
    solvane::ComModule module;
    return solvane::engine::run({arguments + std::min(count, 1), arguments + count});
}
