// A window that is opened again and again leaves nothing behind.

#include "ProcessUsage.h"
#include "UiTest.h"

#include <cstdio>

namespace solvane {
namespace {

using Openings = UiTest;

BOOL CALLBACK countIfShown(HWND window, LPARAM count) {
    *reinterpret_cast<int*>(count) += IsWindowVisible(window) ? 1 : 0;
    return TRUE;
}

TEST_F(Openings, leakNothingInAHundredRounds) {
    ModelBag model;
    model.script("1;").feeds({L"F"}).products({L"P"}).reports({L"R"}).file("data.txt", "1");
    model.parameter(L"p", L"real", Variant(1.0));
    ASSERT_EQ(load(model), S_OK);
    const auto openAll = [&](int count) {
        for (int i = 0; i < count; ++i)
            edit([&](WindowDriver& user) {
                if (i % 10 != 0)
                    return;
                for (const std::wstring& tab : user.entries(IDC_EDIT_TABS))
                    user.pickTab(tab);
                user.pickTab(L"Ports");
            });
    };
    openAll(10);
    const ProcessUsage before = ProcessUsage::now();
    openAll(100);
    const ProcessUsage after = ProcessUsage::now();
    std::printf("a hundred openings: %ld handles, %ld GDI objects, %td kB more\n",
                static_cast<long>(after.handles - before.handles),
                static_cast<long>(after.gdiObjects - before.gdiObjects),
                static_cast<std::ptrdiff_t>(after.memory - before.memory) / 1024);
    EXPECT_LE(after.handles, before.handles + 2); // the system's own come and go
    EXPECT_LE(after.gdiObjects, before.gdiObjects + 2);
    EXPECT_LE(after.memory, before.memory + (4U << 20));
    int windows = 0;
    EnumThreadWindows(GetCurrentThreadId(), countIfShown, reinterpret_cast<LPARAM>(&windows));
    EXPECT_EQ(windows, 0);
}

} // namespace
} // namespace solvane
