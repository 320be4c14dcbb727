// Reports, name and port counts, and the host's log, called by a client in place of the gateway.

#include "FakeMaterial11.h"
#include "RuntimeTest.h"
#include "com/Dispatch.h"

namespace solvane {

namespace {

/// A host's simulation context with its log, on the test's frame.
class DiagnosticContext final : public DispatchImpl<ICapeDiagnostic> {
public:
    bool hasLog = true;
    ULONG references = 0;
    std::function<void()> onLog;
    std::vector<std::wstring> lines;

    STDMETHODIMP QueryInterface(REFIID iid, void** result) override {
        const bool isKnown =
            iid == IID_IUnknown || iid == IID_IDispatch || (hasLog && iid == __uuidof(ICapeDiagnostic));
        *result = isKnown ? this : nullptr;
        references += isKnown ? 1 : 0;
        return isKnown ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references; }
    STDMETHODIMP_(ULONG) Release() override { return --references; }

    STDMETHODIMP PopUpMessage(BSTR) override { return E_NOTIMPL; }
    STDMETHODIMP LogMessage(BSTR text) override {
        lines.emplace_back(viewOf(text));
        if (onLog)
            onLog();
        return E_FAIL; // the unit ignores it
    }
};

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

TEST_F(UnitCommands, readReportsFromTheirFilesOrReportTheFailure) {
    bag.reports({L"Duties", L"Other"});
    const HostedUnit unit = createUnit(bag);
    const std::string text = "Q = 12 kW\r\n\t5 \xe9\x80";
    const auto runWith = [&](const std::function<void(const std::wstring& file)>& writeReport) {
        run(unit, [&](GatewayClient& script, const std::wstring& folder) {
            writeReport(folder + L"report.txt");
            script.expect(request(CommandCode::setReport) << "DUTIES", succeeded());
        });
        return unit.report(L"Duties");
    };
    EXPECT_EQ(runWith([&](const auto& file) { writeFile(file, text + '\0' + "unseen"); }), widen(text));
    EXPECT_EQ(unit.report(L"Other"), L"Report not available...\r\n");
    EXPECT_EQ(runWith([](const auto& file) { writeFile(file, ""); }), L"");

    const std::wstring missing = runWith([](const auto& file) { DeleteFileW(file.c_str()); });
    EXPECT_TRUE(missing.starts_with(L"Unable to open \"report.txt\": ")) << narrow(missing);
    // Nobody may still write to it.
    FileHandle writer;
    const std::wstring open = runWith([&](const auto& file) {
        writer.reset(
            CreateFileW(file.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS, 0, nullptr));
    });
    EXPECT_TRUE(open.starts_with(L"Unable to open \"report.txt\": ")) << narrow(open);
    EXPECT_NE(open, missing);
}

TEST_F(UnitCommands, rejectReportsThatAScriptMayNotSet) {
    bag.reports({L"Matlab Output", L"Duties"});
    const HostedUnit unit = createUnit(bag);
    run(unit, [](GatewayClient& script, const std::wstring&) {
        for (const char* name : {"Matlab Output", "MATLAB OUTPUT"})
            script.expect(request(CommandCode::setReport) << name,
                          refused("Cannot write to the Matlab output report"));
        script.expect(request(CommandCode::setReport) << "Duty", refused("Invalid report name: Duty"));
        script.expect(request(CommandCode::setReport) << "", refused("Invalid report name: "));
    });
}

TEST_F(UnitCommands, returnTheUnitsNameAndPortCounts) {
    bag.feeds({L"A", L"B"}).products({L"C"});
    const HostedUnit unit = createUnit(bag);
    for (const wchar_t* port : {L"A", L"B", L"C"})
        ASSERT_EQ(unit.connect(port, FakeMaterial11::create()->dispatch()), S_OK);
    const auto identification = unit.as<ICapeIdentification>();
    identification->put_ComponentName(Bstr(L"Flash-101 \u00e9").get());
    run(unit, [](GatewayClient& script, const std::wstring&) {
        script.expect(request(CommandCode::getUnitName), succeeded() << "Flash-101 \xe9");
        script.expect(request(CommandCode::getFeedCount), succeeded() << 2u);
        script.expect(request(CommandCode::getProductCount), succeeded() << 1u);
    });
    // The name fills the block, and then no longer fits.
    for (const std::size_t length : {2048 - 5, 2048 - 4}) {
        identification->put_ComponentName(Bstr(std::wstring(length, L'n')).get());
        run(unit, [&](GatewayClient& script, const std::wstring&) {
            script.expect(request(CommandCode::getUnitName), length == 2048 - 5
                                                                 ? succeeded() << std::string(length, 'n')
                                                                 : refused("memory overrun"));
        });
    }
}

TEST_F(UnitCommands, logToTheHostOrLeaveTheStatusUnchanged) {
    DiagnosticContext context;
    const HostedUnit unit = createUnit(bag);
    const auto utilities = unit.as<ICapeUtilities>();
    const auto logs = [&](const std::string& line, const Wire& reply) {
        run(unit, [&](GatewayClient& script, const std::wstring&) {
            script.expect(request(CommandCode::logMessage) << line, reply);
        });
    };
    const Wire untouched = request(CommandCode::logMessage);
    logs("line", untouched);
    context.hasLog = false;
    ASSERT_EQ(utilities->put_simulationContext(&context), S_OK);
    logs("line", untouched);
    // Each command queries the context again.
    context.hasLog = true;
    logs("iteration 1", succeeded());
    logs("", untouched);
    logs("\xe9t\xe9", succeeded());
    // A log that is released inside its own call must live until the call ends.
    context.onLog = [&] {
        utilities->put_simulationContext(nullptr);
        EXPECT_EQ(context.references, 1u);
    };
    logs("last", succeeded());
    EXPECT_EQ(context.references, 0u);
    logs("line", untouched);
    EXPECT_EQ(context.lines, (std::vector<std::wstring>{L"iteration 1", L"\u00e9t\u00e9", L"last"}));
}

} // namespace

} // namespace solvane
