// One run: the commands to Matlab, and the effect of its answers.

#include "FakeMaterial11.h"
#include "RuntimeTest.h"

#include <gmock/gmock.h>

namespace solvane {

namespace {

using testing::_;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;
using testing::StartsWith;

// A failure that the system cannot describe.
constexpr auto oddFailure = static_cast<HRESULT>(0x80041234);
constexpr wchar_t notAvailable[] = L"Matlab output not available\r\n";

class Run : public RuntimeTest {
protected:
    HostedUnit unit = createUnit();

    void runsInto(const MatlabAnswer& answer) {
        matlab.onRun = [answer](const std::wstring&) { return answer; };
    }
    /// The failure of a calculation, followed by the output report.
    void expectFailure(const std::wstring& text, const std::wstring& output) {
        EXPECT_EQ(unit.calculate(), capeFailure);
        EXPECT_EQ(unit.error(), L"Calculate failed | " + text + L" | Calculate | ICapeUnit");
        EXPECT_EQ(unit.output(), output + text);
    }
};

MatlabAnswer nullText() {
    MatlabAnswer answer;
    answer.value.put()->vt = VT_BSTR;
    return answer;
}

TEST_F(Run, keepsWhatMatlabPrinted) {
    const struct {
        MatlabAnswer answer;
        std::wstring output;
    } cases[] = {
        {printed(L"MATLAB output:\nx = 1\nMATLAB done\n"), L"MATLAB output:\nx = 1\nMATLAB done\n"},
        {printed(L"\ad\aone\a"), L"done"},
        {printed(L""), L""},
        {nullText(), L""},
        {{}, L""},
        {{.value = Variant(4.0)}, L"<unknown return value>"},
        {{.value = Variant(LONG{4})}, L"<unknown return value>"},
    };
    EXPECT_EQ(unit.output(), L"Unit operation has not yet been run...");
    for (const auto& row : cases) {
        runsInto(row.answer);
        matlab.forgetCalls();
        EXPECT_EQ(unit.calculate(), S_OK);
        EXPECT_EQ(matlab.calls(), (std::vector<std::wstring>{L"cd '" + workingFolder() + L"'", L"runUnit"}));
        EXPECT_EQ(unit.output(), row.output);
    }
}

TEST_F(Run, recoversAfterAFailedCall) {
    runsInto(failed(oddFailure));
    expectFailure(L"Failed to calculate: Call to Execute failed: error code 0x80041234", notAvailable);
    const std::wstring directory = L"Failed to change MATLAB working directory: ";
    matlab.unknownMembers[L"Execute"] = oddFailure;
    expectFailure(directory + L"GetIDsOfNames failed for Execute: error code 0x80041234", notAvailable);
    matlab.unknownMembers.clear();
    const struct {
        MatlabAnswer answer;
        std::wstring text;
    } cases[] = {
        {printed(L"Warning: name is too long\n"), L"Warning: name is too long\n"},
        {failed(oddFailure), L"Call to Execute failed: error code 0x80041234"},
        {{.value = Variant(true)}, L"<unknown return value>"},
    };
    for (const auto& row : cases) {
        matlab.onCommand = [&](const std::wstring&) { return row.answer; };
        matlab.forgetCalls();
        expectFailure(directory + row.text, notAvailable);
        EXPECT_EQ(matlab.calls().size(), 1u);
    }
    matlab.onCommand = nullptr;
    runsInto(printed(L"fine"));
    EXPECT_EQ(unit.calculate(), S_OK);
    EXPECT_EQ(unit.output(), L"fine");
}

TEST_F(Run, failsWithTheJoinedLinesOfAScriptError) {
    const struct {
        const wchar_t* output;
        const wchar_t* text;
    } cases[] = {
        {L"Evaluation error: simple", L"simple"},
        {L"MATLAB output:\nEvaluation error: no such name: x\nMATLAB done\n", L"no such name: x"},
        {L"Evaluation error: Error in ==> unitCalc\r\n  \tOn line 3  ==> y\r\n\r\n\nMATLAB done\r\n",
         L"Error in ==> unitCalc, On line 3  ==> y"},
        {L"Evaluation error: \n  \n\t indented, \nMATLAB done", L"indented, "},
        {L"Evaluation error: a\nMATLAB done\nb", L"a"},
        {L"MATLAB done\nEvaluation error: a\nb", L"a, b"},
        {L"Evaluation error: \nMATLAB done", L""},
        {L"Evaluation error: , \nMATLAB done", L", "},
        {L"Evaluation error: , MATLAB done", L", "},
        {L"Evaluation error: outer Evaluation error: inner\n", L"outer Evaluation error: inner"},
    };
    for (const auto& row : cases) {
        runsInto(printed(row.output));
        expectFailure(row.text, row.output);
    }
}

constexpr wchar_t calculationMutex[] = L"SolvaneUnitOperationCalculationMutex";

// One mutex guards path and directory but not the script. The other, of a shared Matlab, guards the script
// with its directory, so that nobody changes Matlab's directory in between.
TEST_F(Run, guardsPathAndFolderChangesWithMutexes) {
    for (const bool isDedicated : {false, true}) {
        matlab.dedicated = isDedicated;
        std::vector<std::wstring> seen;
        const auto see = [&](const std::wstring& command) {
            seen.push_back(command.substr(0, command.find(L' ')) +
                           (isMutexFree(calculationMutex) ? L"" : L" calculation") +
                           (isMutexFree(sharedMatlabMutex) ? L"" : L" shared"));
            return MatlabAnswer();
        };
        matlab.onCommand = see;
        matlab.onRun = [&](const std::wstring&) { return see(L"runUnit"); };
        {
            const HostedUnit another = createUnit();
            EXPECT_EQ(another.calculate(), S_OK);
        }
        matlab.onCommand = nullptr;
        const std::wstring shared = isDedicated ? L"" : L" shared";
        EXPECT_THAT(seen, ElementsAre(L"addpath calculation", L"addpath calculation", L"addpath calculation",
                                      L"cd calculation" + shared, L"runUnit" + shared, L"cd" + shared));
        EXPECT_TRUE(isMutexFree(calculationMutex));
        EXPECT_TRUE(isMutexFree(sharedMatlabMutex));
    }
}

// The failures of a call whose server has ended.
TEST_F(Run, startsAnotherMatlabAfterOneHasEnded) {
    matlab.onRun = [&](const std::wstring&) {
        matlab.unknownMembers[L"Execute"] = HRESULT_FROM_WIN32(RPC_S_SERVER_UNAVAILABLE);
        return failed(HRESULT_FROM_WIN32(RPC_S_CALL_FAILED));
    };
    matlab.forgetCalls();
    EXPECT_EQ(unit.calculate(), capeFailure);
    EXPECT_THAT(narrow(unit.errorDescription()), StartsWith("Failed to calculate: Call to Execute failed: "));
    EXPECT_THAT(matlab.calls(), SizeIs(2));

    matlab.unknownMembers.clear();
    matlab.onRun = nullptr;
    matlab.creation = oddFailure;
    EXPECT_EQ(unit.calculate(), capeFailure);
    EXPECT_THAT(narrow(unit.errorDescription()), StartsWith("Failed to create Matlab application: "));

    matlab.creation = S_OK;
    matlab.forgetCalls();
    EXPECT_EQ(unit.calculate(), S_OK);
    EXPECT_THAT(matlab.calls(), ElementsAre(L"create", _, L"addpath '" + workingFolder() + L"'", _,
                                            L"Visible=0", L"cd '" + workingFolder() + L"'", L"runUnit"));
    matlab.forgetCalls();
    EXPECT_EQ(unit.calculate(), S_OK);
    EXPECT_THAT(matlab.calls(), SizeIs(2));
}

TEST_F(Run, clearsReportsBeforeAFailedRun) {
    ModelBag bag;
    bag.script("").reports({L"Matlab Output", L"Duties"});
    unit = createUnit(bag);
    matlab.onRun = [](const std::wstring& folder) {
        GatewayClient client(folder);
        writeFile(folder + L"report.txt", "12 kW");
        client.expect(request(CommandCode::setReport) << "Duties", succeeded());
        return printed(L"good");
    };
    ASSERT_EQ(unit.calculate(), S_OK);
    EXPECT_EQ(unit.report(L"duties"), L"12 kW");
    EXPECT_EQ(unit.report(L"duties"), L"12 kW");

    runsInto(printed(L"no report this time"));
    ASSERT_EQ(unit.calculate(), S_OK);
    EXPECT_EQ(unit.report(L"Duties"), L"Report not available...\r\n");

    runsInto(failed(oddFailure));
    EXPECT_EQ(unit.calculate(), capeFailure);
    EXPECT_EQ(unit.report(L"Duties"), L"Report not available...\r\n");
    EXPECT_EQ(unit.report(L"Nothing"), L"?");
    EXPECT_EQ(unit.error(), L"Invalid report name | Invalid report name: no such report | "
                            L"put_selectedReport | ICapeUnitReport");
}

// ---- products

Wire productRequest(std::int32_t port, const std::string& constraint1, const std::string& constraint2) {
    return request(CommandCode::setProduct)
           << port << 2.5 << 0.25 << 0.75 << 350.0 << 2e5 << constraint1 << constraint2;
}

class RunWithProducts : public Run {
protected:
    RunWithProducts() {
        ModelBag bag;
        bag.script("").products({L"Top", L"Bottom"});
        unit = createUnit(bag);
        EXPECT_EQ(unit.connect(L"Top", top->dispatch()), S_OK);
        EXPECT_EQ(unit.connect(L"Bottom", bottom->dispatch()), S_OK);
    }
    void scriptSets(const std::vector<Wire>& requests, const std::wstring& output = L"done") {
        matlab.onRun = [requests, output](const std::wstring& folder) {
            GatewayClient client(folder);
            for (const Wire& each : requests)
                client.expect(each, succeeded());
            return printed(output);
        };
    }
    static std::size_t flashes(FakeMaterial11& material) {
        return material.record->callsOf("CalcEquilibrium").size();
    }

    const ComRef<FakeMaterial11> top = FakeMaterial11::create(makeFakeStream(2));
    const ComRef<FakeMaterial11> bottom = FakeMaterial11::create(makeFakeStream(2));
};

TEST_F(RunWithProducts, flashesEachProductAsLastStated) {
    scriptSets({productRequest(1, "pressure", "enthalpy"), productRequest(2, "temperature", "pressure"),
                productRequest(1, "temperature", "pressure")});
    EXPECT_EQ(unit.calculate(), S_OK) << testing::PrintToString(unit.error());
    EXPECT_EQ(unit.output(), L"done");
    for (FakeMaterial11* product : {top.get(), bottom.get()}) {
        EXPECT_EQ(product->record->callsOf("SetOverallProp(totalFlow, mole, R8[2.5])").size(), 1u);
        EXPECT_EQ(product->record->callsOf("SetOverallProp(fraction, mole, R8[0.25, 0.75])").size(), 1u);
        EXPECT_EQ(product->record->callsOf("SetOverallProp(temperature, null, R8[350])").size(), 1u);
        EXPECT_EQ(flashes(*product), 1u);
    }
    // Statements of the previous run do not count, and no product is flashed before all are set.
    scriptSets({productRequest(2, "temperature", "pressure")});
    expectFailure(L"setProduct was not called for product 1 (Top)", L"done");
    scriptSets({productRequest(1, "temperature", "pressure")});
    expectFailure(L"setProduct was not called for product 2 (Bottom)", L"done");
    EXPECT_EQ(flashes(*top) + flashes(*bottom), 2u);
}

TEST_F(RunWithProducts, leavesLaterProductsAloneAfterAFailure) {
    const std::vector<Wire> both{productRequest(1, "temperature", "pressure"),
                                 productRequest(2, "temperature", "pressure")};
    scriptSets(both, L"Evaluation error: too late");
    expectFailure(L"too late", L"Evaluation error: too late");
    EXPECT_EQ(flashes(*top) + flashes(*bottom), 0u);

    bottom->record->add({.call = "CalcEquilibrium",
                         .result = static_cast<HRESULT>(ECapeComputationHR),
                         .text = L"no solution below the triple point",
                         .value = {}});
    scriptSets(both);
    expectFailure(L"Failed to flash product 2 (Bottom): no solution below the triple point", L"done");
    EXPECT_EQ(flashes(*top), 1u);
}

// A Greek user of a Western system.
TEST_F(RunWithProducts, passesHostTextsThroughTheThreadsCodePage) {
    FakeStream stream = makeFakeStream(2);
    stream.compounds[1] = L"\u03B2";
    const auto greek = FakeMaterial11::create(stream);
    for (const wchar_t* port : {L"Top", L"Bottom"})
        ASSERT_EQ(unit.connect(port, greek->dispatch()), S_OK);
    greek->record->add({.call = "CalcEquilibrium",
                        .result = static_cast<HRESULT>(ECapeComputationHR),
                        .text = L"\u03BB\u03CD\u03C3\u03B7",
                        .value = {}});
    scriptSets({productRequest(1, "temperature", "pressure"), productRequest(2, "temperature", "pressure")});
    const LCID former = GetThreadLocale();
    SetThreadLocale(MAKELCID(MAKELANGID(LANG_GREEK, SUBLANG_DEFAULT), SORT_DEFAULT));
    expectFailure(L"Failed to flash product 1 (Top): \u03BB\u03CD\u03C3\u03B7", L"done");
    SetThreadLocale(former);
    EXPECT_THAT(readFile(workingFolder() + L"initRun.m"), HasSubstr("compNames={'C1' '\xE2'};"));
}

TEST_F(RunWithProducts, doesNotRunAnInvalidUnit) {
    ASSERT_EQ(unit.disconnect(L"Bottom"), S_OK);
    matlab.forgetCalls();
    EXPECT_EQ(unit.calculate(), capeFailure);
    EXPECT_EQ(unit.error(), L"Unit is not valid | Unit is not valid:  | Calculate | ");
    EXPECT_EQ(unit.output(), L"Unit is not valid: \r\n");
    EXPECT_EQ(unit.validate(), L"Product port \"Bottom\" is not connected");
    EXPECT_EQ(matlab.calls(), std::vector<std::wstring>());
}

} // namespace

} // namespace solvane
