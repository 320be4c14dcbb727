#pragma once

#include "GatewayClient.h"
#include "HostTest.h"
#include "HostedUnit.h"
#include "com/Text.h"

#include <memory>

namespace solvane {

inline constexpr wchar_t sharedMatlabMutex[] = L"SolvaneUnitOperationSharedMatlabMutex";

/// Whether another thread could get the mutex of this name now.
bool isMutexFree(const wchar_t* name);

class RuntimeTest : public HostTest {
protected:
    HostedUnit createUnit() const { return HostedUnit(module); }
    HostedUnit createUnit(ModelBag& bag) const {
        HostedUnit unit = createUnit();
        EXPECT_EQ(unit.load(bag), S_OK);
        return unit;
    }

    /// Calculates a unit of this model, whose script is the function.
    void calculate(ModelBag& bag, const std::function<void(GatewayClient& script)>& script);
    void calculate(const std::function<void(GatewayClient& script)>& script) {
        calculate(ModelBag().script(""), script);
    }
};

} // namespace solvane
