#include "Window.h"

#include "HostedUnit.h"
#include "MatlabStandIn.h"
#include "Verdict.h"

namespace solvane {

namespace {

/// Counts the controls of the next dialog of this thread that is activated, and closes it.
class ClosingHook {
public:
    ClosingHook() : hook_(SetWindowsHookExW(WH_CBT, onEvent, nullptr, GetCurrentThreadId())) { controls = 0; }
    ~ClosingHook() { UnhookWindowsHookEx(hook_); }
    ClosingHook(const ClosingHook&) = delete;
    ClosingHook& operator=(const ClosingHook&) = delete;

    static inline int controls = 0;

private:
    static LRESULT CALLBACK onEvent(int code, WPARAM window, LPARAM details) {
        if (code == HCBT_ACTIVATE && controls == 0) {
            const HWND dialog = reinterpret_cast<HWND>(window);
            EnumChildWindows(dialog, count, 0);
            PostMessageW(dialog, WM_CLOSE, 0, 0);
        }
        return CallNextHookEx(nullptr, code, window, details);
    }
    static BOOL CALLBACK count(HWND, LPARAM) {
        ++controls;
        return TRUE;
    }

    HHOOK hook_;
};

INT_PTR CALLBACK bareProcedure(HWND dialog, UINT message, WPARAM, LPARAM controls) {
    if (message == WM_INITDIALOG) {
        for (LPARAM i = 0; i < controls; ++i)
            CreateWindowExW(0, L"BUTTON", L"A control", WS_CHILD | WS_VISIBLE, 10, static_cast<int>(10 + i),
                            80, 20, dialog, nullptr, nullptr, nullptr);
        return TRUE;
    }
    if (message == WM_CLOSE)
        EndDialog(dialog, 0);
    return message == WM_CLOSE ? TRUE : FALSE;
}

void openBare(int controls) {
    struct {
        DLGTEMPLATE dialog;
        WORD menuClassTitle[3];
    } const shape{{WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_VISIBLE, 0, 0, 10, 10, 388, 262}, {}};
    DialogBoxIndirectParamW(nullptr, &shape.dialog, nullptr, bareProcedure, controls);
}

} // namespace

bool compareWindow() {
    constexpr int turns = 20;
    MatlabStandIn matlab;
    const UnitModule module;
    const HostedUnit unit(module);
    const auto utilities = unit.as<ICapeUtilities>();
    std::vector<double> windows, bareOnes;
    int controls = 0;
    for (int turn = 0; turn <= turns; ++turn) {
        const double window = microseconds([&] {
            const ClosingHook hook;
            utilities->Edit();
            controls = ClosingHook::controls;
        });
        const double bare = microseconds([&] {
            const ClosingHook hook;
            openBare(controls);
        });
        if (turn == 0) // warms up
            continue;
        windows.push_back(window);
        bareOnes.push_back(bare);
    }
    return printAtMost("window opened and closed / bare dialog", {windows, bareOnes}, 5);
}

} // namespace solvane
