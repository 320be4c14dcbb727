#include "MessageBoxes.h"

#include "com/Text.h"

#include <string_view>

namespace solvane::host {

namespace {

/// The window class of dialogs.
constexpr std::wstring_view dialogClass = L"#32770";

/// The id of the control that shows a message box's text; other dialogs have no such control.
constexpr int textControl = 0xFFFF;

thread_local MessageBoxes* current = nullptr;

std::wstring textOf(HWND window) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

bool isDialog(HWND window) {
    std::wstring name(dialogClass.size() + 2, L'\0'); // longer names are cut, and differ
    name.resize(static_cast<std::size_t>(GetClassNameW(window, name.data(), static_cast<int>(name.size()))));
    return name == dialogClass;
}

} // namespace

MessageBoxes::MessageBoxes(Sink sink)
    : sink_(std::move(sink)),
      hook_(SetWindowsHookExW(WH_CALLWNDPROCRET, sawMessage, nullptr, GetCurrentThreadId())) {
    current = this;
}

MessageBoxes::~MessageBoxes() {
    UnhookWindowsHookEx(hook_);
    current = nullptr;
}

/// A box has its texts once it has handled WM_INITDIALOG; its own loop takes the key.
LRESULT CALLBACK MessageBoxes::sawMessage(int code, WPARAM isOwn, LPARAM message) {
    const auto& seen = *reinterpret_cast<const CWPRETSTRUCT*>(message);
    if (code == HC_ACTION && current && seen.message == WM_INITDIALOG && isDialog(seen.hwnd)) {
        if (const HWND text = GetDlgItem(seen.hwnd, textControl)) {
            current->sink_(narrow(textOf(seen.hwnd), CP_UTF8), narrow(textOf(text), CP_UTF8));
            PostMessageW(seen.hwnd, WM_KEYDOWN, VK_RETURN, 0);
        }
    }
    return CallNextHookEx(nullptr, code, isOwn, message);
}

} // namespace solvane::host
