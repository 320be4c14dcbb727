// Construction up to a started Matlab, the behaviour of a unit whose start failed, and termination.

#include "Program.h"
#include "RuntimeTest.h"

namespace solvane {

namespace {

// A failure that the system cannot describe.
constexpr auto oddFailure = static_cast<HRESULT>(0x80041234);
const std::wstring oddFailureText = L"error code 0x80041234";

class Start : public RuntimeTest {
protected:
    /// The start command by its position: 1 the module's folder, 2 the working folder, 3 the gateway's
    /// folder.
    void answerPathCommand(int place, const MatlabAnswer& answer) {
        pathCommands_ = 0;
        matlab.onCommand = [this, place, answer](const std::wstring& command) {
            if (command.starts_with(L"addpath '"))
                ++pathCommands_;
            return pathCommands_ == place ? answer : MatlabAnswer();
        };
    }

private:
    int pathCommands_ = 0;
};

TEST_F(Start, addsThreeFoldersToMatlabsPathAndHidesIt) {
    const HostedUnit unit = createUnit();
    const std::wstring path = UnitModule::builtPath();
    const std::vector<std::wstring> expected{
        L"create",
        L"addpath '" + path.substr(0, path.rfind(L'\\')) + L"'",
        L"addpath '" + workingFolder() + L"'",
        L"addpath '" + temporary.path() + L"SolvaneUnitMEXMatlab.Application.9.14'",
        L"Visible=0",
    };
    EXPECT_EQ(matlab.calls(), expected);
    EXPECT_EQ(unit.as<ICapeUtilities>()->Initialize(), S_OK);
    EXPECT_TRUE(workingFolder().starts_with(temporary.path() + L"{"));
}

// Neither a Matlab that stays visible nor one that returns an empty text fails the start.
TEST_F(Start, toleratesMinorStartupProblems) {
    matlab.visibility = E_FAIL;
    matlab.unknownMembers[L"Visible"] = DISP_E_UNKNOWNNAME;
    for (const bool isNull : {false, true}) {
        matlab.onCommand = [&](const std::wstring&) {
            MatlabAnswer answer = printed(L"");
            if (isNull)
                answer.value.put()->vt = VT_BSTR;
            return answer;
        };
        EXPECT_EQ(createUnit().as<ICapeUtilities>()->Initialize(), S_OK);
    }
}

// A failed start fails only the later calls, which report its text.
TEST_F(Start, reportsEachFailure) {
    const std::wstring path = L"Failed to add to MATLAB path: ";
    const std::wstring gatewayFolder = temporary.path() + L"SolvaneUnitMEXMatlab.Application.9.14";
    const struct {
        std::function<void()> arrange;
        std::wstring text;
    } cases[] = {
        {[&] { matlab.registration.removeClass(); },
         L"Failed to get CLSDID for Matlab.Application; Matlab not installed?"},
        {[&] { matlab.creation = oddFailure; }, L"Failed to create Matlab application: " + oddFailureText},
        {[&] { matlab.unknownMembers[L"Execute"] = oddFailure; },
         path + L"GetIDsOfNames failed for Execute: " + oddFailureText},
        {[&] { answerPathCommand(1, failed(oddFailure)); },
         path + L"Call to Execute failed: " + oddFailureText},
        {[&] { answerPathCommand(1, printed(L"Warning: no such folder")); },
         path + L"Warning: no such folder"},
        {[&] { answerPathCommand(1, {.value = Variant(1.0)}); }, path + L"<unknown return value>"},
        {[&] { answerPathCommand(2, printed(L"Warning")); }, path}, // and the unit's own folder
        {[&] { answerPathCommand(3, failed(E_FAIL)); }, path + gatewayFolder},
    };
    for (const auto& row : cases) {
        row.arrange();
        const HostedUnit unit = createUnit();
        const std::wstring text = row.text == path ? path + workingFolder() : row.text;
        EXPECT_EQ(unit.as<ICapeUtilities>()->Initialize(), capeFailure);
        EXPECT_EQ(unit.error(), L"Initialization failed | " + text + L" | Initialize | ICapeUtilities");
        EXPECT_EQ(unit.validate(), text);
        EXPECT_EQ(unit.terminate(), S_OK);

        matlab.registration.setClass();
        matlab.creation = S_OK;
        matlab.unknownMembers.clear();
        matlab.onCommand = nullptr;
    }
}

// Wine requires this: its COM passes a server to whichever client asks first, and once returns a dead one.
TEST_F(Start, serializesCreationsAndRetriesAClassWithoutAServer) {
    matlab.creation = REGDB_E_CLASSNOTREG;
    int creations = 0;
    matlab.onCreate = [&] {
        EXPECT_FALSE(isMutexFree(L"SolvaneUnitOperationStartMutex"));
        if (++creations == 2)
            matlab.creation = S_OK;
    };
    EXPECT_EQ(createUnit().as<ICapeUtilities>()->Initialize(), S_OK);
    EXPECT_EQ(creations, 2);
    EXPECT_TRUE(isMutexFree(L"SolvaneUnitOperationStartMutex"));
}

/// Expects a stopped unit to reject every call.
void expectRefusals(const HostedUnit& unit, const std::wstring& text) {
    ComRef<IDispatch> dispatch;
    LONG count = 0;
    CapeValidationStatus status = CAPE_NOT_VALIDATED;
    Variant reports;
    Bstr report;
    const auto capeUnit = unit.as<ICapeUnit>();
    const auto utilities = unit.as<ICapeUtilities>();
    const auto ports = unit.as<ICapeCollection>();
    const auto unitReport = unit.as<ICapeUnitReport>();
    const struct {
        std::wstring names;
        std::function<HRESULT()> call;
    } rows[] = {
        {L"get_ports | ICapeUnit", [&] { return capeUnit->get_ports(dispatch.put()); }},
        {L"get_ValStatus | ICapeUnit", [&] { return capeUnit->get_ValStatus(&status); }},
        {L"Calculate | ICapeUnit", [&] { return capeUnit->Calculate(); }},
        {L"get_parameters | ICapeUtilities", [&] { return utilities->get_parameters(nullptr); }},
        {L"put_simulationContext | ICapeUtilities",
         [&] { return utilities->put_simulationContext(nullptr); }},
        {L"Edit | ICapeUtilities", [&] { return utilities->Edit(); }},
        {L"Item | ICapeCollection", [&] { return ports->Item(Variant(LONG{1}).get(), nullptr); }},
        {L"Count | ICapeCollection", [&] { return ports->Count(&count); }},
        {L"get_selectedReport | ICapeUnitReport",
         [&] { return unitReport->get_selectedReport(report.put()); }},
        {L"put_selectedReport | ICapeUnitReport",
         [&] { return unitReport->put_selectedReport(Bstr(L"Matlab Output").get()); }},
        {L"get_reports | ICapeUnitReport", [&] { return unitReport->get_reports(reports.put()); }},
        {L"ProduceReport | ICapeUnitReport", [&] { return unitReport->ProduceReport(report.put()); }},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(row.call(), capeFailure);
        EXPECT_EQ(unit.error(), text + L" | " + text + L" | " + row.names);
    }
    EXPECT_EQ(unit.validate(), text);
}

TEST_F(Start, rejectsEveryCallUnlessTheUnitIsRunning) {
    const HostedUnit unit = createUnit();
    matlab.creation = oddFailure;
    expectRefusals(createUnit(), L"Failed to create Matlab application: " + oddFailureText);
    ASSERT_EQ(unit.terminate(), S_OK);
    expectRefusals(unit, L"Terminate has been called on unit operation");
    matlab.forgetCalls();
    EXPECT_EQ(unit.terminate(), S_OK);
    EXPECT_EQ(matlab.calls(), std::vector<std::wstring>());
}

TEST_F(Start, leavesTheFolderBeforeTerminateDeletesIt) {
    const HostedUnit unit = createUnit();
    const std::wstring folder = workingFolder();
    std::vector<std::wstring> foundAtLeaving;
    matlab.onCommand = [&](const std::wstring& command) {
        if (command.starts_with(L"cd '"))
            foundAtLeaving = namesIn(folder);
        return printed(L"a warning is of no interest here");
    };
    writeFile(folder + L"results.dat", "1 2 3");
    matlab.forgetCalls();
    ASSERT_EQ(unit.terminate(), S_OK);
    const std::vector<std::wstring> expected{
        L"cd '" + temporary.path() + L"SolvaneUnitMEXMatlab.Application.9.14'", L"release"};
    EXPECT_EQ(matlab.calls(), expected);
    EXPECT_EQ(foundAtLeaving, (std::vector<std::wstring>{L"calc.m", L"results.dat", L"runUnit.m"}));
    // Only the gateway's folder remains.
    EXPECT_EQ(namesIn(temporary.path()), std::vector<std::wstring>{L"SolvaneUnitMEXMatlab.Application.9.14"});
}

TEST_F(Start, deletesAFolderWithASubFolderAtTheNextStart) {
    const HostedUnit unit = createUnit();
    const std::wstring kept = workingFolder() + L"kept";
    CreateDirectoryW(kept.c_str(), nullptr);
    writeFile(kept + L"\\deep.txt", "deep");
    EXPECT_EQ(unit.terminate(), S_OK);
    EXPECT_EQ(namesIn(workingFolder()), std::vector<std::wstring>{L"kept"});
    EXPECT_EQ(readFile(kept + L"\\deep.txt"), "deep");

    // The target of a link stays.
    const std::wstring outside = temporary.path() + L"outside";
    CreateDirectoryW(outside.c_str(), nullptr);
    writeFile(outside + L"\\mine.txt", "mine");
    runOnLinux(L"ln -s ../../outside link", kept + L"\\", L"link", true);
    CreateDirectoryW((kept + L"\\deeper").c_str(), nullptr);
    CreateDirectoryW((temporary.path() + L"{00000000-0000-0000-0000-000000000001}").c_str(), nullptr);
    writeFile(temporary.path() + L"{00000000-0000-0000-0000-000000000001}.left", "another's");
    const std::wstring left = workingFolder();
    for (const bool isLinkThere : {true, false}) { // Windows' functions do not delete it on Linux
        const HostedUnit next = createUnit();
        EXPECT_EQ(GetFileAttributesW((kept + L"\\deeper").c_str()), INVALID_FILE_ATTRIBUTES);
        EXPECT_EQ(GetFileAttributesW(left.c_str()) != INVALID_FILE_ATTRIBUTES, isLinkThere);
        if (isLinkThere)
            runOnLinux(L"rm link", kept + L"\\", L"link", false);
    }
    EXPECT_EQ(readFile(outside + L"\\mine.txt"), "mine");
    EXPECT_EQ(namesIn(temporary.path()),
              (std::vector<std::wstring>{L"SolvaneUnitMEXMatlab.Application.9.14", L"outside",
                                         L"{00000000-0000-0000-0000-000000000001}",
                                         L"{00000000-0000-0000-0000-000000000001}.left"}));
}

TEST_F(Start, deletesFoldersOfDeadProcesses) {
    const struct {
        const wchar_t* folder;
        std::vector<std::pair<const wchar_t*, const char*>> files;
        bool goes;
    } rows[] = {
        {L"{00000000-0000-0000-0000-000000000001}",
         {{L"runUnit.m", "%Solvane Unit Operation Script\r\nrest"}, {L"unitCalc.m", "x"}, {L"note.txt", "y"}},
         true},
        {L"{00000000-0000-0000-0000-000000000002}", {{L"runUnit.m", ""}}, true}, // died during construction
        {L"{00000000-0000-0000-0000-000000000003}", {{L"runUnit.m", "%Another's"}}, false},
        {L"{00000000-0000-0000-0000-000000000004}", {{L"note.txt", "%Another's"}}, false},
        {L"Drums", {{L"runUnit.m", "%Solvane Unit Operation Script\r\n"}}, false},
    };
    for (const auto& row : rows) {
        const std::wstring folder = temporary.path() + row.folder;
        CreateDirectoryW(folder.c_str(), nullptr);
        for (const auto& [name, bytes] : row.files)
            writeFile(folder + L'\\' + name, bytes);
    }
    const HostedUnit alive = createUnit();
    const std::wstring folderOfTheLiving = workingFolder();
    const HostedUnit next = createUnit();
    for (const auto& row : rows) {
        const std::wstring folder = temporary.path() + row.folder;
        EXPECT_EQ(GetFileAttributesW(folder.c_str()) == INVALID_FILE_ATTRIBUTES, row.goes) << narrow(folder);
        EXPECT_EQ(namesIn(folder + L'\\').size(), row.goes ? 0 : row.files.size()) << narrow(folder);
    }
    EXPECT_EQ(namesIn(folderOfTheLiving), (std::vector<std::wstring>{L"calc.m", L"runUnit.m"}));
}

constexpr UINT endedRightly = 7;

// The host of the test below, in a process of its own.
TEST_F(Start, DISABLED_hostWhoseModuleReleasesAtTheProcessesEnd) {
    HostedUnit unit = createUnit();
    releaseAtProcessEnd(unit.as<IUnknown>().get());
    unit.release();
    ExitProcess(endedRightly);
}

// At that time the system has ended the worker thread.
TEST_F(Start, allowsTheLastReleaseAtTheProcessesEnd) {
    std::wstring self(1024, L'\0');
    self.resize(GetModuleFileNameW(nullptr, self.data(), static_cast<DWORD>(self.size())));
    Program host(L"\"" + self + L"\" --gtest_also_run_disabled_tests --gtest_filter=Start.DISABLED_host*");
    if (WaitForSingleObject(host.handle(), 20'000) != WAIT_OBJECT_0)
        TerminateProcess(host.handle(), 1);
    const Outcome outcome = host.wait();
    EXPECT_EQ(outcome.exitCode, endedRightly) << outcome.printed;
    const std::vector<std::wstring> folders = namesIn(temporary.path()); // that process's temporary folder
    ASSERT_EQ(folders.size(), 1u);
    EXPECT_EQ(namesIn(temporary.path() + folders[0] + L"\\"),
              std::vector<std::wstring>{L"SolvaneUnitMEXMatlab.Application.9.14"});
}

TEST_F(Start, cleansUpForAHostThatOnlyReleases) {
    createUnit();
    EXPECT_EQ(matlab.calls().back(), L"release");
    EXPECT_EQ(namesIn(temporary.path()), std::vector<std::wstring>{L"SolvaneUnitMEXMatlab.Application.9.14"});
}

} // namespace

} // namespace solvane
