#include "TabKeys.h"

#include <commctrl.h>

namespace solvane {

namespace {

bool isTabControl(HWND window) {
    wchar_t name[32] = L"";
    GetClassNameW(window, name, 32);
    return lstrcmpW(name, WC_TABCONTROLW) == 0;
}

/// Null where there is none.
HWND tabControlOf(HWND focus) {
    const HWND dialog = GetAncestor(focus, GA_ROOT);
    for (HWND around = focus; around != dialog; around = GetParent(around))
        if (isTabControl(around))
            return around;
    return FindWindowExW(dialog, nullptr, WC_TABCONTROLW, nullptr);
}

void enterPage(HWND tabs) {
    if (const HWND first = GetNextDlgTabItem(tabs, nullptr, FALSE))
        SendMessageW(GetAncestor(tabs, GA_ROOT), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(first), TRUE);
}

/// Selects a tab as a click does. TabCtrl_SetCurFocus would notify by itself, but Wine's control ignores
/// clicks after it.
void selectTab(HWND tabs, int tab) {
    TabCtrl_SetCurSel(tabs, tab);
    const auto id = static_cast<UINT_PTR>(GetDlgCtrlID(tabs));
    const NMHDR change{tabs, id, static_cast<UINT>(TCN_SELCHANGE)};
    SendMessageW(GetParent(tabs), WM_NOTIFY, id, reinterpret_cast<LPARAM>(&change));
}

bool takeTabKey(const MSG& message) {
    const HWND focus = message.hwnd;
    if (SendMessageW(focus, WM_GETDLGCODE, VK_TAB, reinterpret_cast<LPARAM>(&message)) & DLGC_WANTALLKEYS)
        return false; // the script's view
    const bool isBackwards = GetKeyState(VK_SHIFT) < 0;
    if (GetKeyState(VK_CONTROL) >= 0) {
        if (isBackwards || !isTabControl(focus))
            return false;
        enterPage(focus);
        return true;
    }
    const HWND tabs = tabControlOf(focus);
    const int count = tabs ? TabCtrl_GetItemCount(tabs) : 0;
    if (count == 0)
        return false;
    selectTab(tabs, (TabCtrl_GetCurSel(tabs) + (isBackwards ? count - 1 : 1)) % count);
    enterPage(tabs);
    return true;
}

LRESULT CALLBACK filterMessage(int code, WPARAM wParam, LPARAM lParam) {
    const auto& message = *reinterpret_cast<const MSG*>(lParam);
    if (code == MSGF_DIALOGBOX && message.message == WM_KEYDOWN && message.wParam == VK_TAB &&
        takeTabKey(message))
        return TRUE;
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

} // namespace

TabKeys::TabKeys() : hook_(SetWindowsHookExW(WH_MSGFILTER, filterMessage, nullptr, GetCurrentThreadId())) {}

TabKeys::~TabKeys() {
    UnhookWindowsHookEx(hook_);
}

} // namespace solvane
