// Model files and streams with random damage: whatever the bytes, the unit reports a failure and continues.

#include "MemoryGrowth.h"
#include "ModelFileTest.h"
#include "MutatedModels.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace solvane {
namespace {

using Clock = std::chrono::steady_clock;

constexpr int ordinaryCount = 10000;
constexpr int longCount = 300000; ///< with SOLVANE_LONG set

using Mutation = ModelFileTest;

TEST_F(Mutation, damagedModelsNeitherCrashNorLeakNorLeaveTheFolder) {
    const int count = std::getenv("SOLVANE_LONG") ? longCount : ordinaryCount;
    const int warmUp = count / 10;
    const std::vector<std::wstring> outside = namesIn(temporary.path());
    const std::vector<std::wstring> current = namesIn(L".\\");
    const MutatedModels models(temporary.path());
    ProcessUsage before;
    MemoryGrowth memory(count);
    int loaded = 0;
    auto longest = Clock::duration::zero();
    const auto start = Clock::now();
    for (int number = 0; number < count; ++number) {
        if (number == warmUp)
            before = ProcessUsage::now();
        memory.at(number);
        HostStream stream = models.mutated(0, number);
        boxes.clear();
        const auto began = Clock::now();
        const HRESULT hr = unit.as<IPersistStream>()->Load(&stream);
        longest = std::max(longest, Clock::now() - began);
        loaded += hr == S_OK;
        if (hr != S_OK && hr != E_OUTOFMEMORY) {
            ASSERT_EQ(hr, capeFailure) << "mutation " << number;
            ASSERT_FALSE(unit.errorDescription().empty()) << "mutation " << number;
        }
    }
    const ProcessUsage after = ProcessUsage::now();
    const auto inSeconds = [](Clock::duration time) { return std::chrono::duration<double>(time).count(); };
    std::printf(
        "%d mutated models in %.1f s, the longest in %.3f s; %d of them loaded; %.0f kB more, %zu kB at "
        "the peak\n",
        count, inSeconds(Clock::now() - start), inSeconds(longest), loaded, memory.gained() / 1024,
        (after.peak - before.peak) / 1024);
    EXPECT_GT(loaded, count / 100); // else the damage is too coarse to reach far
    EXPECT_LT(loaded, count * 9 / 10);
    EXPECT_NE(before.handles, 0U);
    EXPECT_EQ(after.handles, before.handles);
#ifndef SOLVANE_GUARDED_HEAP // it takes time and keeps pages
    EXPECT_LT(inSeconds(longest), 10);
    EXPECT_LT(memory.gained(), 1 << 20);
    EXPECT_LT(after.peak, before.peak + (100U << 20));
#endif
    EXPECT_EQ(namesIn(temporary.path()), outside);
    EXPECT_EQ(namesIn(L".\\"), current);
    ASSERT_EQ(load(models.container()), S_OK);
    EXPECT_EQ(unit.parameter(L"r").real(), 1.5);
}

} // namespace
} // namespace solvane
