#pragma once

#include "HostTest.h"
#include "HostedUnit.h"
#include "RecordingLog.h"

namespace solvane {

/// A unit to load and save; runs no script.
class PropertyBagTest : public HostTest {
protected:
    HRESULT load(ModelBag& bag) { return unit.as<IPersistPropertyBag>()->Load(&bag, &log); }
    HRESULT save(ModelBag& bag) { return unit.as<IPersistPropertyBag>()->Save(&bag, TRUE, TRUE); }
    ModelBag saved() {
        ModelBag bag;
        EXPECT_EQ(save(bag), S_OK);
        return bag;
    }

    HostedUnit unit{module};
    RecordingLog log;
};

} // namespace solvane
