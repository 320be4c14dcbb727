#include "Dialog.h"

#include "com/Module.h"
#include "runtime/QuitMessage.h"

#include <utility>

namespace solvane {

Dialog::~Dialog() {
    if (window_)
        DestroyWindow(window_);
}

INT_PTR Dialog::runModal(HWND owner) {
    const INT_PTR result = DialogBoxParamW(ComModule::current().instance, MAKEINTRESOURCEW(templateId_),
                                           owner, procedure, reinterpret_cast<LPARAM>(this));
    if (failure_)
        std::rethrow_exception(std::exchange(failure_, nullptr));
    return isQuitting() ? IDCANCEL : result;
}

void Dialog::createPage(HWND parent) {
    CreateDialogParamW(ComModule::current().instance, MAKEINTRESOURCEW(templateId_), parent, procedure,
                       reinterpret_cast<LPARAM>(this));
    if (failure_)
        std::rethrow_exception(std::exchange(failure_, nullptr));
}

void Dialog::onCommand(int id, int) {
    if (id == IDOK || id == IDCANCEL)
        end(id);
}

INT_PTR CALLBACK Dialog::procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
        SetWindowLongPtrW(window, DWLP_USER, lParam);
        reinterpret_cast<Dialog*>(lParam)->window_ = window;
    }
    auto* dialog = reinterpret_cast<Dialog*>(GetWindowLongPtrW(window, DWLP_USER));
    if (!dialog)
        return FALSE;
    try {
        return dialog->handle(message, wParam, lParam);
    } catch (...) {
        Dialog& failed = message == WM_INITDIALOG ? *dialog : dialog->outermost();
        failed.failure_ = std::current_exception();
        failed.end(IDABORT);
        return FALSE;
    }
}

INT_PTR Dialog::handle(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_INITDIALOG:
        onInit();
        return !IsChild(window_, GetFocus()); // whether the system is to choose the focus
    case WM_COMMAND:
        onCommand(LOWORD(wParam), HIWORD(wParam));
        return TRUE;
    case WM_NOTIFY:
        SetWindowLongPtrW(window_, DWLP_MSGRESULT, onNotify(*reinterpret_cast<const NMHDR*>(lParam)));
        return TRUE;
    case WM_SIZE:
        onSize(LOWORD(lParam), HIWORD(lParam));
        return TRUE;
    case WM_DESTROY:
        onDestroy();
        return TRUE;
    case WM_NCDESTROY:
        SetWindowLongPtrW(window_, DWLP_USER, 0);
        window_ = nullptr;
        return FALSE;
    default:
        return onMessage(message, wParam, lParam).value_or(FALSE);
    }
}

Dialog& Dialog::outermost() {
    const HWND root = GetAncestor(window_, GA_ROOT);
    if (GetWindowLongPtrW(root, DWLP_DLGPROC) != reinterpret_cast<LONG_PTR>(procedure))
        return *this; // a page in a window of another kind
    return *reinterpret_cast<Dialog*>(GetWindowLongPtrW(root, DWLP_USER));
}

std::wstring windowText(HWND window) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

std::wstring Dialog::text(int id) const {
    return windowText(control(id));
}

} // namespace solvane
