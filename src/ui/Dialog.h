/// What all windows of the unit are made of: a dialog template of the module's resources, and virtual
/// functions for what happens to it.
#pragma once

#include <windows.h>

#include <exception>
#include <optional>
#include <string>

namespace solvane {

/// A modal dialog, or a page within another window. Controls are known by their numbers in the template.
///
/// An exception does not leave the window's procedure: the dialog ends, and runModal throws it again. That of
/// a page comes out of createPage or, later, ends the dialog around the page.
class Dialog {
public:
    explicit Dialog(int templateId) : templateId_(templateId) {}
    Dialog(const Dialog&) = delete;
    Dialog& operator=(const Dialog&) = delete;
    virtual ~Dialog();

    /// Returns what `end` was called with. Owned by the active window where no owner is given.
    INT_PTR runModal(HWND owner = GetActiveWindow());
    /// A page that fills a part of `parent`, hidden at first.
    void createPage(HWND parent);

    HWND window() const { return window_; }
    void show(bool isShown) const { ShowWindow(window_, isShown ? SW_SHOW : SW_HIDE); }

protected:
    // What happens, for the derived class to answer.
    /// The first control has the focus afterwards, unless this gives it to another one.
    virtual void onInit() {}
    /// A button was pressed, a control's text or selection changed; `notification` is its BN_, EN_ or CBN_
    /// code. OK and Cancel end the dialog unless this is overridden.
    virtual void onCommand(int id, int notification);
    /// From a list or a tab control; what is returned is the answer.
    virtual LRESULT onNotify(const NMHDR&) { return 0; }
    /// The size of the client area, in pixels.
    virtual void onSize(int, int) {}
    /// The window is about to go, its controls still there.
    virtual void onDestroy() {}
    /// Any other message; nothing for the default.
    virtual std::optional<INT_PTR> onMessage(UINT, WPARAM, LPARAM) { return std::nullopt; }

    void end(INT_PTR result) const { EndDialog(window_, result); }

    HWND control(int id) const { return GetDlgItem(window_, id); }
    std::wstring text(int id) const;
    void setText(int id, const std::wstring& text) const { SetDlgItemTextW(window_, id, text.c_str()); }
    void focus(int id) const {
        SendMessageW(window_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(control(id)), TRUE);
    }
    void enable(int id, bool isEnabled) const { EnableWindow(control(id), isEnabled); }
    bool isChecked(int id) const { return IsDlgButtonChecked(window_, id) == BST_CHECKED; }
    void check(int id, bool isChecked) const {
        CheckDlgButton(window_, id, isChecked ? BST_CHECKED : BST_UNCHECKED);
    }

private:
    static INT_PTR CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    INT_PTR handle(UINT message, WPARAM wParam, LPARAM lParam);
    /// The dialog whose runModal is at work: this one, or the one around this page.
    Dialog& outermost();

    int templateId_;
    HWND window_ = nullptr;
    std::exception_ptr failure_;
};

/// The text of any window.
std::wstring windowText(HWND window);

} // namespace solvane
