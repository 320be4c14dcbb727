// What ends a dialog other than its buttons: an exception in it or in one of its pages, and the end of the
// host.

#include "ui/controls/Dialog.h"
#include "SimulatorWindow.h"
#include "UiTest.h"
#include "com/Module.h"
#include "com/Text.h"

#include <stdexcept>

namespace solvane {
namespace {

enum class Moment { never, creation, command, destruction };

/// Fails at one moment of its life. Its template is the module's.
class FailingPage : public Dialog {
public:
    explicit FailingPage(Moment moment) : Dialog(IDD_REPORT), moment_(moment) {}

private:
    void failAt(Moment moment) const {
        if (moment == moment_)
            throw std::runtime_error("page");
    }
    void onInit() override { failAt(Moment::creation); }
    void onCommand(int, int) override { failAt(Moment::command); }
    void onDestroy() override { failAt(Moment::destruction); }

    Moment moment_;
};

class Frame : public Dialog {
public:
    explicit Frame(Moment moment) : Dialog(IDD_INPUT), page_(moment) {}

private:
    void onInit() override {
        page_.createPage(window());
        PostMessageW(page_.window(), WM_COMMAND, IDC_REPORT_ADD, 0);
        PostMessageW(window(), WM_COMMAND, IDCANCEL, 0);
    }
    void onDestroy() override { DestroyWindow(page_.window()); }

    FailingPage page_;
};

using DialogEnd = UiTest;

TEST_F(DialogEnd, endsTheDialogAroundAPage) {
    ComModule templates;
    templates.instance = GetModuleHandleW(L"SolvaneUnitOperation.dll");
    EXPECT_EQ(Frame(Moment::never).runModal(nullptr), IDCANCEL);
    for (const Moment moment : {Moment::creation, Moment::command, Moment::destruction})
        EXPECT_THROW(Frame(moment).runModal(nullptr), std::runtime_error) << static_cast<int>(moment);
}

// The system ends its dialogs and boxes as if by OK.
TEST_F(DialogEnd, confirmsNothingIfTheHostQuits) {
    const struct {
        const wchar_t* tab;
        int list;
        const wchar_t* button;
        const wchar_t* title;
    } rows[] = {
        {L"Ports", IDC_PORT_FEEDS, L"&Remove", L"Delete port:"},
        {L"Parameters", IDC_PARAMETER_LIST, L"&Edit", L"Real parameter \"P\":"},
        {L"Parameters", IDC_PARAMETER_LIST, L"&Add", L"Add parameter:"},
        {L"Additional files", IDC_FILES_LIST, L"&New script", L"Add script file:"},
        {L"Additional files", IDC_FILES_LIST, L"&Load model", L"Load model:"},
    };
    ModelBag model;
    model.script("1;").feeds({L"Feed"}).file("data", "1").parameter(L"P", L"real", Variant(1.0));
    ASSERT_EQ(load(model), S_OK);
    SimulatorWindow host;
    host.onPaint = [] { PostQuitMessage(7); };
    for (const auto& row : rows) {
        const HRESULT edited = edit(row.tab, [&](WindowDriver& user) {
            user.selectRow(row.list, 0);
            user.press(row.button);
            user.await(row.title);
            host.post(WM_PAINT);
            user.settle();
        });
        EXPECT_EQ(edited, S_FALSE) << narrow(row.title);
        MSG message{};
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) && message.message != WM_QUIT)
            DispatchMessageW(&message);
        EXPECT_EQ(message.message, UINT{WM_QUIT}) << narrow(row.title);
    }
}

} // namespace
} // namespace solvane
