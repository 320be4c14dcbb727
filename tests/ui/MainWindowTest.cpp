// The main window: its tabs and buttons, what it remembers, and its model files.

#include "UiTest.h"
#include "com/Text.h"

#include <commctrl.h>

namespace solvane {
namespace {

using MainWindow = UiTest;

TEST_F(MainWindow, closingAtOnceChangesNothing) {
    EXPECT_EQ(edit([](WindowDriver& user) { user.press(L"&Close"); }), S_FALSE);
    EXPECT_EQ(edit([](WindowDriver& user) { user.key(VK_ESCAPE); }), S_FALSE);
    EXPECT_EQ(unit.as<IPersistStream>()->IsDirty(), S_FALSE);
}

TEST_F(MainWindow, itOpensOnTheLastTabAndAtTheLastPlace) {
    RECT place{};
    edit([&](WindowDriver& user) {
        for (const wchar_t* tab :
             {L"Ports", L"Parameters", L"Reports", L"Additional files", L"About", L"Matlab"})
            user.pickTab(tab);
        SetWindowPos(user.here(), nullptr, 120, 90, 800, 600, SWP_NOZORDER);
        user.settle();
        GetWindowRect(user.here(), &place);
    });
    const HostedUnit other(module);
    WindowDriver::edit(other, [&](WindowDriver& user) {
        RECT now{};
        GetWindowRect(user.here(), &now);
        EXPECT_TRUE(EqualRect(&now, &place));
        EXPECT_EQ(SendMessageW(user.control(IDC_EDIT_TABS), TCM_GETCURSEL, 0, 0), 3);
        user.pickTab(L"Ports");
    });
}

TEST_F(MainWindow, aModelGoesToAFileAndComesBack) {
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

TEST_F(MainWindow, whatCannotBeSavedOrLoadedIsTold) {
    const std::wstring file = temporary.path() + L"bad.svm";
    writeFile(file, "no zip");
    edit([&](WindowDriver& user) {
        loadModel(user, file);
        EXPECT_EQ(user.answer(L"Failed to load:"), L"Failed to open SVM file as ZIP file");
        writeFile(workingFolder() + L"calc.m", "");
        saveModel(user, file);
        EXPECT_EQ(user.answer(L"Failed to save:"), L"Failed to add \"calc.m\" to zip: file has zero size");
    });
}

} // namespace
} // namespace solvane
