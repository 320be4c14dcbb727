#pragma once

#include "Folders.h"
#include "MatlabStandIn.h"
#include "NoMaterialLeft.h"
#include "UnitModule.h"
#include "com/Apartment.h"
#include "com/CapeError.h"

#include <gtest/gtest.h>

namespace solvane {

/// A single-threaded host with a temporary folder of its own, in front of a scripted Matlab.
class HostTest : public testing::Test {
protected:
    std::wstring workingFolder() { return matlab.workingFolder(); }

    Apartment apartment;
    TemporaryFolder temporary;
    MatlabStandIn matlab;
    UnitModule module;
};

} // namespace solvane
