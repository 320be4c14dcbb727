#include "AutomationClient.h"

#include "channel/StopEvent.h"
#include "com/Handle.h"
#include "com/Registry.h"
#include "com/Text.h"

#include <gmock/gmock.h>

#include <optional>
#include <thread>

namespace solvane::engine {

namespace {

using testing::HasSubstr;
using testing::StartsWith;

std::string processIdOf(AutomationClient& octave) {
    std::string printed = narrow(octave.execute(L"disp(getpid())"));
    printed.erase(printed.find_last_not_of('\n') + 1);
    return printed;
}

bool hasOctaveEnded(const std::string& processId) {
    return waitUntil([&] { return !isOctaveRunning(processId); });
}

bool isLinuxProcess(const std::string& processId) {
    std::error_code ignored;
    return std::filesystem::exists("Z:\\proc\\" + processId, ignored);
}

bool haveServersEnded() {
    return hasEnded(L"OctaveAutomationServer.exe", GetCurrentProcessId());
}

TEST(Lifetime, endsServerAndOctaveOnQuitAndLastRelease) {
    AutomationClient first;
    AutomationClient second;
    const std::string firstOctave = processIdOf(first);
    const std::string secondOctave = processIdOf(second);
    EXPECT_NE(firstOctave, secondOctave);
    EXPECT_EQ(first.call(L"Quit", DISPATCH_METHOD).result, S_OK);
    EXPECT_TRUE(hasOctaveEnded(firstOctave));
    EXPECT_TRUE(isOctaveRunning(secondOctave));
    second.release();
    EXPECT_TRUE(hasOctaveEnded(secondOctave));
    EXPECT_TRUE(haveServersEnded());
}

TEST(Lifetime, restartsADeadOctaveWithPathAndFolder) {
    const ScriptFolder toolbox;
    const ScriptFolder left;
    const ScriptFolder current;
    toolbox.write(L"fromToolbox.m", "disp('toolbox')\n");
    left.write(L"fromLeft.m", "disp('left')\n");
    current.write(L"fromCurrent.m", "disp('current')\n");
    AutomationClient octave;
    octave.execute(L"addpath '" + toolbox.path() + L"'");
    octave.execute(L"addpath('" + left.path() + L"');");
    octave.execute(L"rmpath('" + left.path() + L"');");
    octave.execute(L"cd '" + left.path() + L"'");
    octave.execute(L"cd '" + current.path() + L"'");
    octave.failureOf(L"cd 'C:\\no such folder'");
    const std::string process = processIdOf(octave);

    for (const wchar_t* deadly :
         {L"x = 1; if ispc(), builtin('exit'), end; kill(getpid(), 9); disp(2)", L"builtin('exit')"}) {
        const Variant command(std::wstring_view{deadly});
        const LateBound::Call died = octave.call(L"Execute", DISPATCH_METHOD, &command);
        EXPECT_EQ(died.result, HRESULT_FROM_WIN32(ERROR_PROCESS_ABORTED)) << deadly;
        EXPECT_THAT(narrow(died.description), HasSubstr("Octave ended"));
        EXPECT_FALSE(isOctaveRunning(process));

        EXPECT_EQ(octave.execute(L"disp(exist('x'))"), L"0\n");
        EXPECT_EQ(octave.execute(L"fromToolbox, fromCurrent, disp(exist('fromLeft'))"),
                  L"toolbox\ncurrent\n0\n");
    }
}

TEST(Lifetime, startsOctaveInATemporaryFolder) {
    const ScriptFolder host;
    for (const wchar_t* name : {L"size.m", L"fileparts.m", L"strsplit.m"})
        host.write(name, "error('the host''s own')\n");
    const std::filesystem::path former = std::filesystem::current_path();
    std::filesystem::current_path(host.path());
    AutomationClient octave;
    std::filesystem::current_path(former);
    EXPECT_EQ(octave.execute(L"disp(size(1))"), L"   1   1\n");
    const bool isOnWindows = octave.isOnWindows();
    EXPECT_EQ(octave.execute(L"if ispc(), disp('--'), else, disp(stat(pwd()).modestr([6 9])), end"), L"--\n");
    const std::wstring folder = octave.execute(L"printf('%s', pwd())");
    octave.release();
    EXPECT_TRUE(haveServersEnded());
    std::error_code ignored;
    EXPECT_FALSE(std::filesystem::exists((isOnWindows ? L"" : L"\\\\?\\unix") + folder, ignored))
        << narrow(folder);
}

TEST(Lifetime, endsOctaveAfterItsClientIsKilled) {
    const ScriptFolder folder;
    const Program client =
        startClient(folder, "set octave = CreateObject(\"SolvaneOctave.Application\")\n"
                            "octave.Execute \"cd '\" & WScript.Arguments(0) & \"'\"\n"
                            "octave.Execute \"f = fopen('pid', 'w'); fprintf(f, '%d;', getpid()); fclose(f); "
                            "while true, end\"\n");
    ASSERT_TRUE(waitUntil([&] { return folder.read(L"pid").ends_with(';'); }));
    std::string process = folder.read(L"pid");
    process.pop_back();
    ASSERT_TRUE(isOctaveRunning(process));
    TerminateProcess(client.handle(), 1);
    EXPECT_TRUE(hasOctaveEnded(process));
}

/// Sets the stop event of this process as soon as the command has written its "pid".
class Stopper {
public:
    explicit Stopper(const ScriptFolder& folder)
        : event_(CreateEventW(nullptr, TRUE, FALSE, stopEventName(GetCurrentProcessId()).c_str())),
          thread_([this, &folder] {
              waitUntil([&] { return folder.read(L"pid").ends_with('\n'); });
              requested_ = GetTickCount64();
              SetEvent(event_.get());
          }) {}
    ~Stopper() { withdraw(); }
    void withdraw() {
        if (thread_.joinable())
            thread_.join();
        ResetEvent(event_.get());
    }
    ULONGLONG sinceRequest() const { return GetTickCount64() - requested_; }

private:
    Handle event_;
    ULONGLONG requested_ = 0;
    std::thread thread_;
};

TEST(Lifetime, stopsACommandOnItsClientsRequest) {
    const ScriptFolder folder;
    AutomationClient octave;
    const bool isOnWindows = octave.isOnWindows();
    octave.execute(L"cd '" + folder.path() + L"'");
    const std::wstring noted = L"f = fopen('pid', 'w'); fdisp(f, getpid()); fclose(f); ";
    // Octave for Windows ends in each case.
    struct Row {
        std::wstring endless;
        bool failsInOctave;
    };
    for (const auto& [endless, failsInOctave] : {Row{noted + L"while true, end", !isOnWindows},
                                                 {noted + L"pause(100)", !isOnWindows},
                                                 {L"system('echo $$ >pid; exec sleep 100')", false}}) {
        if (isOnWindows && endless.find(L"exec") != endless.npos)
            continue;
        std::filesystem::remove(folder.path() + L"\\pid");
        Stopper stopper(folder);
        const Variant command(endless);
        const LateBound::Call call = octave.call(L"Execute", DISPATCH_METHOD, &command);
        ASSERT_LT(stopper.sinceRequest(), 1500u) << narrow(endless) << narrow(call.description);
        EXPECT_EQ(call.result, failsInOctave ? DISP_E_EXCEPTION : HRESULT_FROM_WIN32(ERROR_PROCESS_ABORTED));
        EXPECT_EQ(narrow(call.description), failsInOctave ? runStopped : "The command was stopped");
        EXPECT_EQ(narrow(octave.failureOf(L"disp(1)")), "The command was stopped");
        std::string process = folder.read(L"pid");
        process.pop_back();
        if (failsInOctave)
            EXPECT_TRUE(isOctaveRunning(process));
        else
            EXPECT_TRUE(waitUntil([&] { return !isOctaveRunning(process) && !isLinuxProcess(process); }))
                << narrow(endless);
        stopper.withdraw();
        EXPECT_EQ(octave.execute(L"disp(1); while false, end"), L"1\n");
    }
    // A script that ends soon keeps what it printed.
    std::filesystem::remove(folder.path() + L"\\pid");
    const Stopper stopper(folder);
    EXPECT_EQ(octave.execute(noted + L"pause(0.2); disp(7)"), L"7\n");
}

TEST(Lifetime, reportsAMissingOctave) {
    const std::pair<const wchar_t*, const char*> programs[] = {
        {L"/nowhere/octave-cli", "There is no file /nowhere/octave-cli, the path of Octave in"},
        {L"C:\\windows\\system32\\hostname.exe", "Octave ended before it took commands: start "},
    };
    for (const auto& [program, text] : programs) {
        const ULONGLONG start = GetTickCount64();
        std::optional<OctaveSetting> setting(program);
        AutomationClient octave;
        setting.reset();
        for (int command = 0; command < 2; ++command)
            EXPECT_THAT(narrow(octave.failureOf(L"disp(1)")), StartsWith(text));
        EXPECT_LT(GetTickCount64() - start, 15000u) << "nothing was to be waited for";
    }
    EXPECT_TRUE(haveServersEnded());
}

TEST(Lifetime, prefersTheEnvironmentToTheRegistry) {
    constexpr wchar_t settings[] = L"Software\\SolvaneUO";
    const auto former = readRegistryString(HKEY_CURRENT_USER, settings, L"OctaveProgram");
    writeRegistryString(HKEY_CURRENT_USER, settings, L"OctaveProgram", L"Z:\\nowhere\\octave-cli.exe");
    EXPECT_THAT(narrow(AutomationClient().failureOf(L"disp(1)")),
                HasSubstr("OctaveProgram of HKEY_CURRENT_USER"));
    {
        const OctaveSetting found(L"/usr/bin/octave-cli");
        EXPECT_EQ(AutomationClient().execute(L"disp(1)"), L"1\n");
    }
    if (former)
        writeRegistryString(HKEY_CURRENT_USER, settings, L"OctaveProgram", *former);
    else
        RegDeleteKeyValueW(HKEY_CURRENT_USER, settings, L"OctaveProgram");
}

} // namespace

} // namespace solvane::engine
