/// Included where tests use materials: fails each test after which something still holds one.
#pragma once

#include "FakeMaterial.h"

#include <gtest/gtest.h>

namespace solvane {

class NoMaterialLeft : public testing::EmptyTestEventListener {
    void OnTestEnd(const testing::TestInfo&) override {
        EXPECT_EQ(FakeMaterial::alive.exchange(0), 0) << "materials are still held";
    }
};

inline const bool materialsAreCounted = [] {
    testing::UnitTest::GetInstance()->listeners().Append(new NoMaterialLeft); // which owns it
    return true;
}();

} // namespace solvane
