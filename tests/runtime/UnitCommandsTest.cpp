// Reports, the unit's small facts, and the host's log, from a client that plays the gateway.

#include "DiagnosticContext.h"
#include "FakeMaterial11.h"
#include "RuntimeTest.h"

namespace solvane {

namespace {

constexpr std::uint32_t setReportCode = 3;
constexpr std::uint32_t getUnitNameCode = 12;
constexpr std::uint32_t getFeedCountCode = 13;
constexpr std::uint32_t getProductCountCode = 14;
constexpr std::uint32_t logMessageCode = 18;

class UnitCommands : public RuntimeTest {
protected:
    UnitCommands() { bag.script(""); }

    /// Calculates a unit whose script is the function.
    void run(const HostedUnit& unit,
             const std::function<void(GatewayClient& script, const std::wstring& folder)>& script) {
        matlab.onRun = [&](const std::wstring& folder) {
            GatewayClient client(folder);
            script(client, folder);
            return MatlabAnswer();
        };
        unit.calculate();
        matlab.onRun = nullptr;
    }

    ModelBag bag;
};

TEST_F(UnitCommands, aReportTakesTheTextOfTheFile) {
    bag.reports({L"Duties", L"Other"});
    const HostedUnit unit = createUnit(bag);
    std::string text = "Q = 12 kW\r\n\t5 \xe9\x80";
    run(unit, [&](GatewayClient& script, const std::wstring& folder) {
        writeFile(folder + L"report.txt", text + '\0' + "unseen");
        script.expect(request(setReportCode) << "DUTIES", succeeded());
    });
    EXPECT_EQ(unit.report(L"Duties"), widen(text));
    EXPECT_EQ(unit.report(L"Other"), L"Report not available...\r\n");

    run(unit, [&](GatewayClient& script, const std::wstring& folder) {
        writeFile(folder + L"report.txt", "");
        script.expect(request(setReportCode) << "Duties", succeeded());
        writeFile(folder + L"report.txt", "later");
        script.expect(request(setReportCode) << "Other", succeeded());
    });
    EXPECT_EQ(unit.report(L"Duties"), L"");
    EXPECT_EQ(unit.report(L"Other"), L"later");
}

TEST_F(UnitCommands, aMissingReportFileIsToldInTheReport) {
    bag.reports({L"Duties"});
    const HostedUnit unit = createUnit(bag);
    run(unit, [](GatewayClient& script, const std::wstring&) {
        script.expect(request(setReportCode) << "Duties", succeeded());
    });
    const std::wstring missing = unit.report(L"Duties");
    EXPECT_TRUE(missing.starts_with(L"Unable to open \"report.txt\": ")) << narrow(missing);

    // Nor may anyone still write to it.
    run(unit, [](GatewayClient& script, const std::wstring& folder) {
        const FileHandle writer(CreateFileW((folder + L"report.txt").c_str(), GENERIC_WRITE, FILE_SHARE_READ,
                                            nullptr, CREATE_ALWAYS, 0, nullptr));
        script.expect(request(setReportCode) << "Duties", succeeded());
    });
    EXPECT_TRUE(unit.report(L"Duties").starts_with(L"Unable to open \"report.txt\": "));
    EXPECT_NE(unit.report(L"Duties"), missing);
}

TEST_F(UnitCommands, reportsThatAScriptMayNotSet) {
    bag.reports({L"Matlab Output", L"Duties"});
    const HostedUnit unit = createUnit(bag);
    run(unit, [](GatewayClient& script, const std::wstring&) {
        for (const char* name : {"Matlab Output", "MATLAB OUTPUT"})
            script.expect(request(setReportCode) << name,
                          refused("Cannot write to the Matlab output report"));
        script.expect(request(setReportCode) << "Duty", refused("Invalid report name: Duty"));
        script.expect(request(setReportCode) << "", refused("Invalid report name: "));
    });
}

TEST_F(UnitCommands, nameAndCountsOfTheUnit) {
    bag.feeds({L"A", L"B"}).products({L"C"});
    const HostedUnit unit = createUnit(bag);
    for (const wchar_t* port : {L"A", L"B", L"C"})
        ASSERT_EQ(unit.connect(port, FakeMaterial11::create()->dispatch()), S_OK);
    const auto identification = unit.as<ICapeIdentification>();
    identification->put_ComponentName(Bstr(L"Flash-101 \u00e9").get());
    run(unit, [](GatewayClient& script, const std::wstring&) {
        script.expect(request(getUnitNameCode), succeeded() << "Flash-101 \xe9");
        script.expect(request(getFeedCountCode), succeeded() << 2u);
        script.expect(request(getProductCountCode), succeeded() << 1u);
    });
    // The name fills the block, and then no longer fits.
    identification->put_ComponentName(Bstr(std::wstring(2048 - 5, L'n')).get());
    run(unit, [](GatewayClient& script, const std::wstring&) {
        script.expect(request(getUnitNameCode), succeeded() << std::string(2048 - 5, 'n'));
    });
    identification->put_ComponentName(Bstr(std::wstring(2048 - 4, L'n')).get());
    run(unit, [](GatewayClient& script, const std::wstring&) {
        script.expect(request(getUnitNameCode), refused("memory overrun"));
    });
}

TEST_F(UnitCommands, logLinesGoToTheHost) {
    DiagnosticContext context;
    const HostedUnit unit = createUnit(bag);
    ASSERT_EQ(unit.as<ICapeUtilities>()->put_simulationContext(&context), S_OK);
    run(unit, [](GatewayClient& script, const std::wstring&) {
        script.expect(request(logMessageCode) << "iteration 1", succeeded());
        // Nothing to log: the code stays where a status would stand.
        script.expect(request(logMessageCode) << "", request(logMessageCode));
        script.expect(request(logMessageCode) << "\xe9t\xe9", succeeded());
    });
    EXPECT_EQ(context.lines, (std::vector<std::wstring>{L"iteration 1", L"\u00e9t\u00e9"}));
    unit.as<ICapeUtilities>()->put_simulationContext(nullptr);
}

TEST_F(UnitCommands, withNowhereToLogTheStatusStaysUntouched) {
    DiagnosticContext context;
    context.hasLog = false;
    const HostedUnit unit = createUnit(bag);
    const auto logs = [](const Wire& reply) {
        return [reply](GatewayClient& script, const std::wstring&) {
            script.expect(request(logMessageCode) << "line", reply);
        };
    };
    run(unit, logs(request(logMessageCode)));
    unit.as<ICapeUtilities>()->put_simulationContext(&context);
    run(unit, logs(request(logMessageCode)));
    // The context is asked again at each command.
    context.hasLog = true;
    run(unit, logs(succeeded()));
    unit.as<ICapeUtilities>()->put_simulationContext(nullptr);
    run(unit, logs(request(logMessageCode)));
    EXPECT_EQ(context.lines.size(), 1u);
}

} // namespace

} // namespace solvane
