/// The base of all windows of the unit: a dialog template from the module's resources, and virtual functions
/// for its events.
#pragma once

#include <windows.h>

#include <exception>
#include <optional>
#include <string>

namespace solvane {

/// A modal dialog, or a page within another window. Controls are known by their numbers in the template.
///
/// No exception leaves the window procedure: the dialog ends, and runModal rethrows it. An exception of a
/// page leaves createPage or, later, ends the dialog around the page.
class Dialog {
public:
    explicit Dialog(int templateId) : templateId_(templateId) {}
    Dialog(const Dialog&) = delete;
    Dialog& operator=(const Dialog&) = delete;
    virtual ~Dialog();

    /// Returns the value passed to `end`, or IDCANCEL if the host quits meanwhile. Without an owner, the
    /// active window owns the dialog.
    INT_PTR runModal(HWND owner = GetActiveWindow());
    /// A page that fills a part of `parent`, hidden at first.
    void createPage(HWND parent);

    HWND window() const { return window_; }
    void show(bool isShown) const { ShowWindow(window_, isShown ? SW_SHOW : SW_HIDE); }

protected:
    // Events, for the derived class to handle.
    /// The first control gets the focus unless this sets it elsewhere.
    virtual void onInit() {}
    /// A button was pressed, a control's text or selection changed; `notification` is its BN_, EN_ or CBN_
    /// code. OK and Cancel end the dialog unless this is overridden.
    virtual void onCommand(int id, int notification);
    /// A notification from a list or a tab control; returns the answer.
    virtual LRESULT onNotify(const NMHDR&) { return 0; }
    /// The size of the client area, in pixels.
    virtual void onSize(int, int) {}
    /// The window is being destroyed; its controls still exist.
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
