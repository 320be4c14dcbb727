#pragma once

#include "Folders.h"
#include "GatewayClient.h"
#include "HostedUnit.h"
#include "MatlabStandIn.h"
#include "ModelBag.h"
#include "UnitModule.h"
#include "com/Text.h"

#include <gtest/gtest.h>

#include <memory>

namespace solvane {

/// CoInitializeEx and its counterpart.
class Apartment {
public:
    explicit Apartment(COINIT kind) { CoInitializeEx(nullptr, kind); }
    ~Apartment() { CoUninitialize(); }
    Apartment(const Apartment&) = delete;
    Apartment& operator=(const Apartment&) = delete;
};

/// Whether another thread could have the mutex of this name now.
bool isMutexFree(const wchar_t* name);

/// A single-threaded host with a temporary folder of its own, in front of a scripted Matlab.
class RuntimeTest : public testing::Test {
protected:
    Apartment apartment{COINIT_APARTMENTTHREADED};
    TemporaryFolder temporary;
    MatlabStandIn matlab;
    UnitModule module;

    HostedUnit createUnit() const { return HostedUnit(module); }
    HostedUnit createUnit(ModelBag& bag) const {
        HostedUnit unit = createUnit();
        EXPECT_EQ(unit.load(bag), S_OK);
        return unit;
    }

    std::wstring workingFolder() { return matlab.workingFolder(); }

    /// Calculates a unit of this model, whose script is the function.
    void calculate(ModelBag& bag, const std::function<void(GatewayClient& script)>& script);
    void calculate(const std::function<void(GatewayClient& script)>& script) {
        calculate(ModelBag().script(""), script);
    }
};

} // namespace solvane
