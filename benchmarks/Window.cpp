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

/// Opens and closes the window of a model beside a bare dialog with as many controls.
Timed timeWindow(std::size_t scriptBytes, int turns) {
    MatlabStandIn matlab;
    const UnitModule module;
    const HostedUnit unit(module);
    const std::string line = "x = 1; % a line of a long script, with a comment that says why it is here\n";
    std::string script;
    while (script.size() < scriptBytes)
        script += line;
    ModelBag bag;
    bag.script(script);
    if (unit.load(bag) != S_OK)
        return {};
    const auto utilities = unit.as<ICapeUtilities>();
    Timed timed;
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
        if (controls == 0) // it was not the window that opened
            return {};
        if (turn == 0) // warms up
            continue;
        timed.times.push_back(window);
        timed.references.push_back(bare);
    }
    return timed;
}

} // namespace

bool compareWindow() {
    bool isMet = printAtMost("window opened and closed / bare dialog", timeWindow(0, 20), 5);
    isMet &= printTimeAtMost("window with a script of 5 MB opened and closed / bare dialog",
                             timeWindow(5'000'000, 5), 2e6);
    return isMet;
}

} // namespace solvane
