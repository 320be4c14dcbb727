// What becomes of an exception in a dialog or in one of its pages.

#include "ui/controls/Dialog.h"
#include "UiTest.h"
#include "com/Module.h"

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

using DialogFailure = UiTest;

TEST_F(DialogFailure, endsTheDialogAroundAPage) {
    ComModule templates;
    templates.instance = GetModuleHandleW(L"SolvaneUnitOperation.dll");
    EXPECT_EQ(Frame(Moment::never).runModal(nullptr), IDCANCEL);
    for (const Moment moment : {Moment::creation, Moment::command, Moment::destruction})
        EXPECT_THROW(Frame(moment).runModal(nullptr), std::runtime_error) << static_cast<int>(moment);
}

} // namespace
} // namespace solvane
