#pragma once

#include "HostedUnit.h"
#include "MatlabStandIn.h"
#include "ModelBag.h"
#include "RecordingBag.h"

#include <gtest/gtest.h>

namespace solvane {

/// Units that are loaded and saved; no script is run.
class PropertyBagTest : public testing::Test {
protected:
    PropertyBagTest() { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
    ~PropertyBagTest() override { CoUninitialize(); }

    HRESULT load(const HostedUnit& unit, IPropertyBag& bag) {
        return unit.as<IPersistPropertyBag>()->Load(&bag, &log);
    }
    HRESULT save(const HostedUnit& unit, IPropertyBag& bag) {
        return unit.as<IPersistPropertyBag>()->Save(&bag, TRUE, TRUE);
    }
    /// The parameters' names in the unit's order.
    std::vector<std::wstring> parameterNames(const HostedUnit& unit) {
        RecordingBag bag;
        EXPECT_EQ(save(unit, bag), S_OK);
        return bag.texts(L"parameters");
    }

    MatlabStandIn matlab;
    UnitModule module;
    RecordingLog log;
};

} // namespace solvane
