#include "Door.h"
#include "Folders.h"
#include "HostedUnit.h"
#include "MatlabStandIn.h"
#include "MutatedModels.h"
#include "ProcessUsage.h"
#include "Segments.h"
#include "flowsheet/MessageBoxes.h"

namespace solvane::soak {

namespace {

class ModelDoor final : public Door {
public:
    Verdict attempt(std::uint32_t seed, int number) override {
        HostStream stream = models_.mutated(seed, number);
        const HRESULT result = unit_.as<IPersistStream>()->Load(&stream);
        if (result == S_OK)
            return {.isAccepted = true};
        if (result != E_OUTOFMEMORY && unit_.errorDescription().empty())
            return {.fault = "refused without a text, code " + std::to_string(result)};
        return {};
    }

private:
    TemporaryFolder temporary_;
    MatlabStandIn matlab_;
    UnitModule module_;
    HostedUnit unit_{module_};
    MutatedModels models_{temporary_.path()};
    host::MessageBoxes answers_{[](const std::string&, const std::string&) {}};
};

} // namespace

void soakModels(const Effort& effort, const Figures& figures) {
    ModelDoor door;
    const std::size_t peak = ProcessUsage::now().peak;
    soakDoor(door, effort, effort.of(3000, 100000), figures);
    figures.put("host: peak memory gained", (double(ProcessUsage::now().peak) - double(peak)) / 1024);
}

} // namespace solvane::soak
