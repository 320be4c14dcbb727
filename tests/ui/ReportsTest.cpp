// The page of the reports.

#include "UiTest.h"

namespace solvane {
namespace {

using Names = std::vector<std::wstring>;

class Reports : public UiTest {
protected:
    Reports() {
        ModelBag model;
        model.script("1;").reports({L"Balance"});
        model.values[L"report \\ Balance"] = Variant(std::wstring_view(L"closed"));
        EXPECT_EQ(load(model), S_OK);
    }

    static void add(WindowDriver& user, const std::wstring& name) {
        enter(user, L"&Add", L"Add report:", name);
    }
};

TEST_F(Reports, addsAReportThatWaitsForTheScriptAndRemovesOne) {
    matlab.onRun = [](const std::wstring&) { return printed(L"{\\rtf1 not \\b a formatted text}"); };
    ASSERT_EQ(unit.calculate(), S_OK);
    EXPECT_EQ(edit(L"Reports",
                   [&](WindowDriver& user) {
                       EXPECT_EQ(user.text(IDC_REPORT_TEXT), unit.output());
                       EXPECT_FALSE(user.isEnabled(L"&Remove"));
                       add(user, L"Fin's");
                       EXPECT_EQ(user.answer(L"Report added:"),
                                 L"To specify the report, add the following to the calculation "
                                 L"script:\r\n\r\nsetReport('Fin's',reportContent);");
                       EXPECT_EQ(user.text(IDC_REPORT_LIST), L"Fin's");
                       EXPECT_EQ(user.text(IDC_REPORT_TEXT), L"Report not available...\r\n");
                       user.choose(IDC_REPORT_LIST, L"Balance");
                       user.press(L"&Remove");
                       EXPECT_EQ(user.answer(L"Remove report:", IDCANCEL), L"Remove report \"Balance\"?");
                       EXPECT_EQ(user.text(IDC_REPORT_LIST), L"Balance");
                       user.press(L"&Remove");
                       user.answer(L"Remove report:");
                       EXPECT_EQ(user.entries(IDC_REPORT_LIST), (Names{L"Matlab Output", L"Fin's"}));
                       EXPECT_EQ(user.focus(), user.control(IDC_REPORT_LIST));
                       EXPECT_EQ(user.text(IDC_REPORT_TEXT), unit.output());
                       EXPECT_FALSE(user.isEnabled(L"&Remove"));
                   }),
              S_OK);
    EXPECT_EQ(unit.report(L"Balance"), L"?");
    EXPECT_EQ(unit.report(L"Fin's"), L"Report not available...\r\n");
}

TEST_F(Reports, rejectsEmptyAndKnownNames) {
    EXPECT_EQ(edit(L"Reports",
                   [](WindowDriver& user) {
                       for (const wchar_t* name : {L"matlab output", L"BALANCE"}) {
                           add(user, name);
                           EXPECT_EQ(user.answer(L"Error:"), L"The specified report name already exists");
                       }
                       add(user, L"");
                       EXPECT_EQ(user.title(), L"Add report:");
                       user.key(VK_ESCAPE);
                       EXPECT_EQ(user.entries(IDC_REPORT_LIST), (Names{L"Matlab Output", L"Balance"}));
                       // Escape in the view too ends the whole window.
                       focusOn(user.control(IDC_REPORT_TEXT));
                       user.key(VK_ESCAPE);
                       EXPECT_EQ(user.here(), nullptr);
                   }),
              S_FALSE);
}

TEST_F(Reports, keepsTheSelectedPositionAfterALoad) {
    const std::wstring file = temporary.path() + L"one.svm";
    edit(L"Reports", [&](WindowDriver& user) {
        saveModel(user, file);
        for (const wchar_t* name : {L"Second", L"Third"}) {
            add(user, name);
            user.answer(L"Report added:");
        }
        user.choose(IDC_REPORT_LIST, L"Balance");
        EXPECT_EQ(user.text(IDC_REPORT_TEXT), L"closed");
        user.press(L"&Remove");
        user.answer(L"Remove report:");
        user.choose(IDC_REPORT_LIST, L"Second");
        EXPECT_EQ(user.text(IDC_REPORT_TEXT), L"Report not available...\r\n");
        user.choose(IDC_REPORT_LIST, L"Third");
        loadModel(user, file);
        EXPECT_EQ(user.entries(IDC_REPORT_LIST), (Names{L"Matlab Output", L"Balance"}));
        EXPECT_EQ(user.text(IDC_REPORT_LIST), L"Balance");
        EXPECT_TRUE(user.isEnabled(L"&Remove"));
        user.choose(IDC_REPORT_LIST, L"Matlab Output");
        loadModel(user, file);
        EXPECT_EQ(user.text(IDC_REPORT_LIST), L"Matlab Output");
    });
}

} // namespace
} // namespace solvane
