// The main window: its tabs and buttons, what it remembers, and its model files.

#include "UiTest.h"
#include "com/Text.h"

#include <commctrl.h>
#include <gmock/gmock.h>

namespace solvane {
namespace {

using testing::HasSubstr;

using MainWindow = UiTest;

TEST_F(MainWindow, closingAtOnceChangesNothing) {
    EXPECT_EQ(edit([](WindowDriver& user) { user.press(L"&Close"); }), S_FALSE);
    EXPECT_EQ(edit([](WindowDriver& user) { user.key(VK_ESCAPE); }), S_FALSE);
    EXPECT_EQ(unit.as<IPersistStream>()->IsDirty(), S_FALSE);
}

TEST_F(MainWindow, closesOnEnterOnlyFromTheButton) {
    edit(L"Parameters", [](WindowDriver& user) {
        focusOn(user.control(IDC_PARAMETER_LIST));
        user.key(VK_RETURN);
        ASSERT_TRUE(user.here());
        user.pickTab(L"Ports");
        focusOn(user.button(L"&Close"));
        user.key(VK_RETURN);
        EXPECT_FALSE(user.here());
    });
}

TEST_F(MainWindow, opensOnTheLastTabAtTheLastPlace) {
    RECT place{};
    std::vector<std::wstring> tabs;
    edit([&](WindowDriver& user) {
        tabs = user.entries(IDC_EDIT_TABS);
        for (const std::wstring& tab : tabs)
            user.pickTab(tab);
        user.pickTab(L"Matlab");
        SetWindowPos(user.here(), nullptr, 120, 90, 800, 600, SWP_NOZORDER);
        user.settle();
        GetWindowRect(user.here(), &place);
    });
    const HostedUnit other(module);
    WindowDriver::edit(other, [&](WindowDriver& user) {
        RECT now{};
        GetWindowRect(user.here(), &now);
        EXPECT_TRUE(EqualRect(&now, &place));
        EXPECT_EQ(tabs.at(static_cast<std::size_t>(TabCtrl_GetCurSel(user.control(IDC_EDIT_TABS)))),
                  L"Matlab");
        user.pickTab(L"Ports");
    });
}

TEST_F(MainWindow, savesAndLoadsAModel) {
    ModelBag model;
    model.script("1;").feeds({L"Feed A"}).products({L"Product B"});
    ASSERT_EQ(load(model), S_OK);
    const std::wstring file = temporary.path() + L"saved.svm";
    writeFile(file, "overwritten without a question");
    EXPECT_EQ(edit([&](WindowDriver& user) { saveModel(user, file); }), S_FALSE);
    EXPECT_TRUE(readFile(file).starts_with("PK"));

    HostedUnit second(module);
    WindowDriver::edit(second, [&](WindowDriver& user) {
        user.press(L"&Load model");
        EXPECT_EQ(user.answer(L"Load model:", IDCANCEL),
                  L"Loading a model will discard all information in the current unit operation. Proceed?");
        loadModel(user, file);
        loadModel(user, L""); // given up
    });
    LONG count = 0;
    second.as<ICapeCollection>()->Count(&count);
    EXPECT_EQ(count, 2);
    second.release();
}

TEST_F(MainWindow, reportsFailedSavesAndLoads) {
    const std::wstring file = temporary.path() + L"bad.svm";
    const std::wstring foreign = temporary.path() + L"\u65e5.svm";
    writeFile(file, "no zip");
    writeFile(foreign, "no zip");
    ModelBag model;
    model.script("1;").feeds({L"Feed"}).products({L"Product"}).reports({L"Report"}).file("data", "1");
    model.parameter(L"P", L"real", Variant(1.0));
    ASSERT_EQ(load(model), S_OK);
    EXPECT_EQ(edit([&](WindowDriver& user) {
                  loadModel(user, foreign);
                  EXPECT_THAT(narrow(user.answer(L"Failed to load:")), HasSubstr("ANSI code page"));
                  EXPECT_EQ(user.rows(IDC_PORT_FEEDS).size(), 1U);
                  saveModel(user, foreign);
                  EXPECT_THAT(narrow(user.answer(L"Failed to save:")), HasSubstr("ANSI code page"));
              }),
              S_FALSE);
    // From here on the former model is gone, whatever takes its place.
    EXPECT_EQ(edit([&](WindowDriver& user) {
                  loadModel(user, file);
                  EXPECT_EQ(user.answer(L"Failed to load:"), L"Failed to open SVM file as ZIP file");
                  const std::pair<const wchar_t*, int> lists[] = {{L"Parameters", IDC_PARAMETER_LIST},
                                                                  {L"Additional files", IDC_FILES_LIST},
                                                                  {L"Ports", IDC_PORT_FEEDS},
                                                                  {L"Ports", IDC_PORT_PRODUCTS}};
                  user.pickTab(L"Reports");
                  EXPECT_EQ(user.entries(IDC_REPORT_LIST), std::vector<std::wstring>{L"Matlab Output"});
                  for (const auto& [tab, list] : lists) {
                      user.pickTab(tab);
                      EXPECT_TRUE(user.rows(list).empty()) << narrow(tab);
                  }
              }),
              S_OK);
    EXPECT_EQ(unit.as<IPersistStream>()->IsDirty(), S_OK);
    edit([&](WindowDriver& user) {
        writeFile(workingFolder() + L"calc.m", "");
        saveModel(user, file);
        EXPECT_EQ(user.answer(L"Failed to save:"), L"Failed to add \"calc.m\" to zip: file has zero size");
        EXPECT_EQ(readFile(file), "no zip"); // what was there
    });
}

} // namespace
} // namespace solvane
