// A host that calls its unit in the middle of a run: from its materials' methods and while it paints.

#include "Damage.h"
#include "Door.h"
#include "FakeMaterial10.h"
#include "FakeMaterial11.h"
#include "Folders.h"
#include "GatewayClient.h"
#include "HostStream.h"
#include "HostedUnit.h"
#include "MatlabStandIn.h"
#include "Segments.h"
#include "SimulatorWindow.h"
#include "com/CapeError.h"

#include <array>

namespace solvane::soak {

namespace {

constexpr std::array feedProperties = {"temperature", "fraction", "enthalpy", "nonsense"};

/// One unit, its materials, and calls to it at random moments of one run.
class WilfulHost {
public:
    WilfulHost(const UnitModule& module, Damage& damage) : damage_(damage), unit_(module) {
        bag_.feeds({L"Feed"}).products({L"Product"}).script("1;").parameter(L"Duty", L"real", Variant(1.0));
        unit_.load(bag_);
        record_->onCall = [this](const std::string&) { comeBack(); };
        window_.onPaint = [this] { comeBack(); };
        for (const wchar_t* port : {L"Feed", L"Product"})
            connect(port);
    }
    ~WilfulHost() { record_->onCall = nullptr; }

    /// As the script of the run, on a thread of its own. It sees what it may see of a unit that ends.
    void runScript(const std::wstring& folder, std::uint32_t seed) {
        GatewayClient script(folder);
        Damage own(seed, 0);
        for (int i = 0; i < 5; ++i) {
            window_.post(WM_PAINT);
            script.call(request(CommandCode::getFeedProp) << 1 << std::string(own.anyOf(feedProperties)));
        }
        script.call(request(CommandCode::setProduct)
                    << 1 << 12.5 << std::vector{0.5, 0.3, 0.2} << 300.0 << 1e5 << "temperature"
                    << "pressure");
    }

    HRESULT calculate() {
        // The host's own reference, which may go meanwhile, is the only one.
        ICapeUnit* unit = unit_.as<ICapeUnit>().get();
        const HRESULT result = unit->Calculate();
        check(result, "Calculate");
        return result;
    }

    const std::string& fault() const { return fault_; }

private:
    HRESULT connect(const wchar_t* port) {
        const auto prepare = [&](auto material) {
            material->record = record_;
            return unit_.connect(port, material->dispatch());
        };
        return damage_.oneIn(2) ? prepare(FakeMaterial10::create()) : prepare(FakeMaterial11::create());
    }

    HRESULT callUnit(std::size_t what) {
        HostStream stream;
        switch (what) {
        case 0:
            return unit_.terminate();
        case 1:
            unit_.release();
            return S_OK;
        case 2:
            return unit_.calculate();
        case 3:
            return unit_.load(bag_);
        case 4:
            return unit_.as<IPersistStream>()->Load(&stream);
        case 5:
            return unit_.as<IPersistStream>()->Save(&stream, TRUE);
        case 6:
            return unit_.as<ICapeUtilities>()->Edit();
        case 7:
            return unit_.validate() == L"?" ? E_FAIL : S_OK;
        case 8:
            return unit_.port(L"Product") ? unit_.disconnect(L"Product") : S_OK;
        case 9:
            return unit_.port(L"Feed") ? connect(L"Feed") : S_OK;
        case 10:
            return unit_.port(L"Product") ? connect(L"Product") : S_OK;
        case 11:
            unit_.setParameter(L"Duty", Variant(2.0));
            return S_OK;
        default:
            unit_.output();
            return S_OK;
        }
    }

    void comeBack() {
        if (depth_ == 3 || !unit_.as<IUnknown>() || !damage_.oneIn(8))
            return;
        ++depth_;
        // Calls that end the unit are rare, so that others follow.
        const std::size_t what = damage_.oneIn(8) ? damage_.below(2) : 2 + damage_.below(11);
        check(callUnit(what), ("call " + std::to_string(what)).c_str());
        --depth_;
    }

    /// Every refusal must have a text.
    void check(HRESULT result, const char* what) {
        if (FAILED(result) &&
            (result != capeFailure || (unit_.as<IUnknown>() && unit_.errorDescription().empty())))
            fault_ = std::string("a refusal without a text: ") + what;
    }

    Damage& damage_;
    HostedUnit unit_;
    ModelBag bag_;
    SimulatorWindow window_;
    std::shared_ptr<CallRecord> record_ = std::make_shared<CallRecord>();
    int depth_ = 0;
    std::string fault_;
};

class ReentryDoor final : public Door {
public:
    Verdict attempt(std::uint32_t seed, int number) override {
        matlab_.forgetCalls();
        Damage damage(seed, number);
        WilfulHost host(module_, damage);
        matlab_.onRun = [&](const std::wstring& folder) {
            host.runScript(folder, seed + static_cast<std::uint32_t>(number));
            return MatlabAnswer();
        };
        const bool isDone = host.calculate() == S_OK;
        return {.isAccepted = isDone, .fault = host.fault()};
    }

private:
    MatlabStandIn matlab_;
    UnitModule module_;
};

} // namespace

void soakReentry(const Effort& effort, const Figures& figures) {
    const TemporaryFolder temporary;
    ReentryDoor door;
    soakDoor(door, effort, effort.of(1000, 20000), figures);
}

} // namespace solvane::soak
