// Construction up to a started Matlab, what a unit says where that failed, and its end.

#include "RuntimeTest.h"

namespace solvane {

namespace {

// A failure for which the system has no words.
constexpr auto oddFailure = static_cast<HRESULT>(0x80041234);
constexpr wchar_t oddFailureText[] = L"error code 0x80041234";

class Start : public RuntimeTest {
protected:
    /// The start command by its place: 1 the module's folder, 2 the working folder, 3 the gateway's folder.
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

TEST_F(Start, aMatlabThatStaysVisibleIsNoFailure) {
    matlab.visibility = E_FAIL;
    matlab.unknownMembers[L"Visible"] = DISP_E_UNKNOWNNAME;
    EXPECT_EQ(createUnit().as<ICapeUtilities>()->Initialize(), S_OK);
}

// A failed start fails nothing but the later calls, which say why.
TEST_F(Start, eachFailureHasItsText) {
    const std::wstring gatewayFolder = temporary.path() + L"SolvaneUnitMEXMatlab.Application.9.14";
    struct Case {
        const char* what;
        std::function<void()> arrange;
        std::function<std::wstring()> text;
    };
    const Case cases[] = {
        {"no class", [&] { matlab.registration.removeClass(); },
         [] { return L"Failed to get CLSDID for Matlab.Application; Matlab not installed?"; }},
        {"creation", [&] { matlab.creation = oddFailure; },
         [&] { return std::wstring(L"Failed to create Matlab application: ") + oddFailureText; }},
        {"no Execute", [&] { matlab.unknownMembers[L"Execute"] = oddFailure; },
         [] {
             return std::wstring(L"Failed to add to MATLAB path: GetIDsOfNames failed for Execute: ") +
                    oddFailureText;
         }},
        {"first path command fails", [&] { answerPathCommand(1, failed(oddFailure)); },
         [&] {
             return std::wstring(L"Failed to add to MATLAB path: Call to Execute failed: ") + oddFailureText;
         }},
        {"first path command prints", [&] { answerPathCommand(1, printed(L"Warning: no such folder")); },
         [] { return L"Failed to add to MATLAB path: Warning: no such folder"; }},
        {"first path command gives no text", [&] { answerPathCommand(1, {.value = Variant(1.0)}); },
         [] { return L"Failed to add to MATLAB path: <unknown return value>"; }},
        {"second path command prints", [&] { answerPathCommand(2, printed(L"Warning")); },
         [&] { return L"Failed to add to MATLAB path: " + workingFolder(); }},
        {"third path command fails", [&] { answerPathCommand(3, failed(E_FAIL)); },
         [&] { return L"Failed to add to MATLAB path: " + gatewayFolder; }},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.what);
        row.arrange();
        const HostedUnit unit = createUnit();
        const std::wstring text = row.text();
        EXPECT_EQ(unit.as<ICapeUtilities>()->Initialize(), HRESULT(0x80040501));
        EXPECT_EQ(unit.error(), L"Initialization failed | " + text + L" | Initialize | ICapeUtilities");
        EXPECT_EQ(unit.validate(), text);
        EXPECT_EQ(unit.terminate(), S_OK);

        matlab.registration.setClass();
        matlab.creation = S_OK;
        matlab.unknownMembers.clear();
        matlab.onCommand = nullptr;
    }
}

TEST_F(Start, anEmptyTextIsAsGoodAsNone) {
    matlab.onCommand = [](const std::wstring&) { return printed(L""); };
    EXPECT_EQ(createUnit().as<ICapeUtilities>()->Initialize(), S_OK);
    matlab.onCommand = [](const std::wstring&) {
        MatlabAnswer nullText;
        nullText.value.put()->vt = VT_BSTR;
        return nullText;
    };
    EXPECT_EQ(createUnit().as<ICapeUtilities>()->Initialize(), S_OK);
}

/// Every call that a stopped unit refuses, with the names that its failure bears.
struct RefusedCall {
    const wchar_t* scope;
    const wchar_t* interfaceName;
    std::function<HRESULT(const HostedUnit&)> call;
};

const std::vector<RefusedCall>& refusedCalls() {
    static const std::vector<RefusedCall> calls{
        {L"get_ports", L"ICapeUnit",
         [](const HostedUnit& unit) {
             ComRef<IDispatch> ports;
             return unit.as<ICapeUnit>()->get_ports(ports.put());
         }},
        {L"get_ValStatus", L"ICapeUnit",
         [](const HostedUnit& unit) {
             CapeValidationStatus status;
             return unit.as<ICapeUnit>()->get_ValStatus(&status);
         }},
        {L"Calculate", L"ICapeUnit", [](const HostedUnit& unit) { return unit.calculate(); }},
        {L"get_parameters", L"ICapeUtilities",
         [](const HostedUnit& unit) { return unit.as<ICapeUtilities>()->get_parameters(nullptr); }},
        {L"put_simulationContext", L"ICapeUtilities",
         [](const HostedUnit& unit) { return unit.as<ICapeUtilities>()->put_simulationContext(nullptr); }},
        {L"get_reports", L"ICapeUnitReport",
         [](const HostedUnit& unit) {
             Variant reports;
             return unit.as<ICapeUnitReport>()->get_reports(reports.put());
         }},
        {L"ProduceReport", L"ICapeUnitReport",
         [](const HostedUnit& unit) {
             Bstr text;
             return unit.as<ICapeUnitReport>()->ProduceReport(text.put());
         }},
    };
    return calls;
}

void expectRefusals(const HostedUnit& unit, const std::wstring& text) {
    for (const RefusedCall& refused : refusedCalls()) {
        EXPECT_EQ(refused.call(unit), HRESULT(0x80040501));
        EXPECT_EQ(unit.error(),
                  text + L" | " + text + L" | " + refused.scope + L" | " + refused.interfaceName);
    }
    EXPECT_EQ(unit.validate(), text);
}

TEST_F(Start, aUnitWhoseMatlabDidNotStartRefusesEveryCall) {
    matlab.creation = oddFailure;
    expectRefusals(createUnit(), std::wstring(L"Failed to create Matlab application: ") + oddFailureText);
}

TEST_F(Start, aTerminatedUnitRefusesEveryCall) {
    const HostedUnit unit = createUnit();
    ASSERT_EQ(unit.terminate(), S_OK);
    expectRefusals(unit, L"Terminate has been called on unit operation");
    matlab.forgetCalls();
    EXPECT_EQ(unit.terminate(), S_OK);
    EXPECT_EQ(matlab.calls(), std::vector<std::wstring>());
}

TEST_F(Start, terminateLeavesTheFolderBeforeItDeletesIt) {
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
    // What is left is the gateway's folder.
    EXPECT_EQ(namesIn(temporary.path()), std::vector<std::wstring>{L"SolvaneUnitMEXMatlab.Application.9.14"});
}

TEST_F(Start, aSubFolderKeepsTheWorkingFolder) {
    const HostedUnit unit = createUnit();
    const std::wstring folder = workingFolder();
    CreateDirectoryW((folder + L"kept").c_str(), nullptr);
    writeFile(folder + L"kept\\deep.txt", "deep");
    EXPECT_EQ(unit.terminate(), S_OK);
    EXPECT_EQ(namesIn(folder), std::vector<std::wstring>{L"kept"});
    EXPECT_EQ(readFile(folder + L"kept\\deep.txt"), "deep");
}

TEST_F(Start, aHostThatOnlyReleasesLeavesNothingBehind) {
    createUnit();
    EXPECT_EQ(matlab.calls().back(), L"release");
    EXPECT_EQ(namesIn(temporary.path()), std::vector<std::wstring>{L"SolvaneUnitMEXMatlab.Application.9.14"});
}

} // namespace

} // namespace solvane
