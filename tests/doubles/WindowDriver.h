#pragma once

#include "HostedUnit.h"

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

namespace solvane {

std::wstring classOf(HWND window);
/// As the window itself tells it, which may be another process's.
std::wstring textOf(HWND window);

/// A user before the unit's window. The window runs on the test's thread, as in a host; what the user does
/// runs on a second one. "Here" is the foremost dialog: the main window, or what has come up before it. A
/// wait that takes too long is a failure of the test, after which all windows are closed.
class WindowDriver {
public:
    using Actions = std::function<void(WindowDriver& user)>;

    /// Opens the unit's window and lets the user act in it. A window that is still open then is closed. The
    /// result is Edit's. `opening` is for boxes that come up before the window.
    static HRESULT edit(const HostedUnit& unit, const Actions& actions, const Actions& opening = {});
    /// The same before the window that another process opens on this thread of it. Lists cannot be read
    /// there.
    static void follow(DWORD thread, const Actions& actions);

    // ---- what is seen

    /// The foremost dialog.
    HWND here() const;
    /// Its descendants that are shown.
    std::vector<HWND> shown() const;
    std::wstring title() const { return textOf(here()); }
    /// The shown control of that number, here or on the page that is shown. Fails the test where there is
    /// none.
    HWND control(int id) const;
    /// The shown button of that label, with its "&". Fails the test where there is none.
    HWND button(const std::wstring& label) const;
    bool isEnabled(const std::wstring& label) const { return IsWindowEnabled(button(label)) != FALSE; }
    std::wstring text(int id) const { return textOf(control(id)); }
    /// All cells of a list, row by row.
    std::vector<std::vector<std::wstring>> rows(int list) const;
    int selectedRow(int list) const;
    /// The entries of a drop-down list or list box, or the labels of a row of tabs.
    std::vector<std::wstring> entries(int list) const;
    /// The keyboard's focus.
    HWND focus() const;

    // ---- what is done

    void pickTab(const std::wstring& label);
    /// The same by the number of the tabs' control and the tab's place, counted from 0: labels cannot be read
    /// before another process's window.
    void pickTab(int tabs, int index);
    /// Presses a button. It may bring up a dialog or a message box.
    void press(const std::wstring& label);
    void click(HWND control);
    void type(int id, const std::wstring& text);
    /// Selects an entry of a drop-down list.
    void choose(int list, const std::wstring& entry);
    void selectRow(int list, int row);
    void doubleClick(int list, int row);
    /// A key to what has the focus.
    void key(WORD virtualKey);
    /// Acts while keys are held, as VK_SHIFT.
    void holding(const std::vector<int>& virtualKeys, const std::function<void()>& act) const;
    void withControl(const std::function<void()>& act) const { holding({VK_CONTROL}, act); }
    /// Types into the label that is being edited in the list and ends with Enter, or with Escape.
    void endLabel(int list, const std::wstring& text, bool isAccepted = true);
    void resize(int width, int height);

    /// Waits for a dialog with this title to come up before the one that is here, or to be the only one.
    void await(const std::wstring& title);
    /// Waits for a message box with this title, answers it, and gives its text.
    std::wstring answer(const std::wstring& title, int button = IDOK);
    /// Waits for a file dialog with this title, and enters a path, or gives up with an empty one.
    void enterFile(const std::wstring& title, const std::wstring& path);
    /// Until the window has done all it was told.
    void settle() const;

private:
    explicit WindowDriver(DWORD thread) : thread_(thread) {}
    void act(const Actions& actions, const Actions& opening = {});
    void waitFor(const std::string& what, const std::function<bool()>& condition) const;
    void closeAll() const;
    HWND awaitChild(const std::string& what, const std::function<bool(HWND)>& isWanted) const;

    DWORD thread_; ///< of the windows
};

} // namespace solvane
