// The host calls the unit again from inside a run: from a material's method or while it paints.

#include "FakeMaterial11.h"
#include "HostStream.h"
#include "RuntimeTest.h"
#include "SimulatorWindow.h"

#include <utility>

namespace solvane {

namespace {

constexpr char painting[] = "painting";

/// The place where the host calls back: inside a material's call that begins so, or in a paint handler.
constexpr const char* places[] = {"GetCompoundList", "CreateMaterial", "copy.GetPhaseList",
                                  "GetOverallProp",  painting,         "CalcEquilibrium"};

class Reentry : public RuntimeTest {
protected:
    Reentry() {
        bag.feeds({L"Feed"}).products({L"Product"}).script("1;").parameter(L"Duty", L"real", Variant(1.0));
    }

    void createConnectedUnit() {
        unit = createUnit(bag);
        for (const wchar_t* port : {L"Feed", L"Product"})
            ASSERT_EQ(unit.connect(port, material->dispatch()), S_OK);
    }

    /// Calculates a new unit; the host runs `action` once at that place.
    HRESULT calculateAnd(const char* place, const std::function<void()>& action) {
        SCOPED_TRACE(place);
        createConnectedUnit();
        SimulatorWindow window;
        const Handle done(CreateEventW(nullptr, FALSE, FALSE, nullptr));
        const auto once = [&, isDone = false]() mutable {
            if (!std::exchange(isDone, true))
                action();
            SetEvent(done.get());
        };
        window.onPaint = once;
        material->record->onCall = [&](const std::string& call) {
            if (call.starts_with(place))
                window.onPaint();
        };
        matlab.onRun = [&](const std::wstring& folder) {
            GatewayClient script(folder);
            script.call(request(CommandCode::getFeedProp) << 1 << "temperature");
            if (place == painting) {
                window.post(WM_PAINT);
                EXPECT_EQ(WaitForSingleObject(done.get(), 5000), WAIT_OBJECT_0);
            }
            script.call(request(CommandCode::setProduct)
                        << 1 << 12.5 << std::vector{0.5, 0.3, 0.2} << 300.0 << 1e5 << "temperature"
                        << "pressure");
            return MatlabAnswer();
        };
        // Releases the call's own reference: some hosts hold only one in all.
        ICapeUnit* calculating = unit.as<ICapeUnit>().get();
        const HRESULT result = calculating->Calculate();
        material->record->onCall = nullptr;
        return result;
    }

    ComRef<FakeMaterial11> material = FakeMaterial11::create();
    ModelBag bag;
    HostedUnit unit{ComRef<IUnknown>()};
};

TEST_F(Reentry, rejectsForbiddenCallsAndContinuesTheRun) {
    HostStream empty;
    const struct {
        std::function<HRESULT()> call;
        std::wstring error; ///< before and after the reason
        std::wstring tail;
    } rows[] = {
        {[&] { return unit.calculate(); }, L"Cannot calculate the unit", L"Calculate | ICapeUnit"},
        {[&] { return unit.load(bag); }, L"Cannot load the unit", L"Load | IPersistPropertyBag"},
        {[&] { return unit.as<IPersistStream>()->Load(&empty); }, L"Cannot load the unit",
         L"Load | IPersistStream"},
        {[&] { return unit.as<ICapeUtilities>()->Edit(); }, L"Cannot edit the unit",
         L"Edit | ICapeUtilities"},
    };
    for (const char* place : places) {
        const HRESULT calculated = calculateAnd(place, [&] {
            for (const auto& row : rows) {
                EXPECT_EQ(row.call(), capeFailure);
                const std::wstring error = unit.error();
                EXPECT_NE(
                    error.find(row.error + L" while it is calculating; try again afterwards | " + row.tail),
                    std::wstring::npos)
                    << narrow(error);
            }
        });
        EXPECT_EQ(calculated, S_OK) << place << ": " << narrow(unit.error());
    }
}

TEST_F(Reentry, allowsReadingSavingAndChangingValues) {
    for (const char* place : places) {
        HostStream saved;
        const HRESULT calculated = calculateAnd(place, [&] {
            EXPECT_NE(unit.output(), L"?");
            EXPECT_EQ(unit.setParameter(L"Duty", Variant(7.0)), S_OK);
            EXPECT_EQ(unit.as<IPersistStream>()->Save(&saved, TRUE), S_OK) << narrow(unit.error());
            unit.validate();
        });
        EXPECT_EQ(calculated, S_OK) << place << ": " << narrow(unit.error());
        const HostedUnit copy = createUnit();
        ASSERT_EQ(copy.as<IPersistStream>()->Load(&saved), S_OK);
        EXPECT_EQ(copy.parameter(L"Duty").real(), 7.0);
    }
}

TEST_F(Reentry, defersTerminateToTheEndOfTheRun) {
    const std::wstring text = L"Terminate has been called on unit operation";
    for (const char* place : places) {
        const HRESULT calculated = calculateAnd(place, [&] {
            EXPECT_EQ(unit.terminate(), S_OK);
            EXPECT_EQ(unit.calculate(), capeFailure);
            EXPECT_EQ(unit.terminate(), S_OK);
        });
        if (place != places[std::size(places) - 1]) { // at that place, nothing is left to do
            EXPECT_EQ(calculated, capeFailure) << place;
            EXPECT_EQ(unit.error(), L"Calculate failed | " + text + L" | Calculate | ICapeUnit") << place;
        }
        EXPECT_EQ(unit.validate(), text);
        EXPECT_EQ(matlab.calls().back(), L"release");
        EXPECT_EQ(namesIn(workingFolder()), std::vector<std::wstring>());
        EXPECT_EQ(material->AddRef(), 2u) << place;
        material->Release();
    }
}

TEST_F(Reentry, defersTheLastReleaseToTheEndOfTheRun) {
    for (const char* place : places) {
        EXPECT_EQ(calculateAnd(place, [&] { unit.release(); }), S_OK) << place;
        EXPECT_EQ(matlab.calls().back(), L"release");
        EXPECT_EQ(namesIn(workingFolder()), std::vector<std::wstring>());
    }
}

TEST_F(Reentry, answersATerminatedUnitsScriptWithFailures) {
    createConnectedUnit();
    SimulatorWindow window;
    window.onPaint = [&] { unit.terminate(); };
    matlab.onRun = [&](const std::wstring& folder) {
        GatewayClient script(folder);
        window.post(WM_PAINT);
        Sleep(400); // longer than the longest delay of a paint message
        script.expect(request(CommandCode::getUnitName),
                      refused("Terminate has been called on unit operation"));
        return MatlabAnswer();
    };
    EXPECT_EQ(unit.calculate(), capeFailure);
}

} // namespace

} // namespace solvane
