#pragma once

#include "CapeOpen.h"
#include "Folders.h"
#include "MatlabStandIn.h"
#include "ServerModule.h"
#include "unit/ClassIds.h"

#include <gtest/gtest.h>

namespace solvane {

/// A single-threaded host in front of a scripted Matlab, with the module just loaded.
class ServerTest : public testing::Test {
protected:
    ServerTest() { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
    ~ServerTest() override { CoUninitialize(); }

    TemporaryFolder temporary;
    MatlabStandIn matlab;
    ServerModule module;
};

} // namespace solvane
