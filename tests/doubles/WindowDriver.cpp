#include "WindowDriver.h"

#include "com/Text.h"

#include <commctrl.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <stdexcept>
#include <thread>

namespace solvane {

std::wstring classOf(HWND window) {
    wchar_t name[64] = L"";
    GetClassNameW(window, name, 64);
    return name;
}

std::wstring textOf(HWND window) {
    std::wstring text(static_cast<std::size_t>(SendMessageW(window, WM_GETTEXTLENGTH, 0, 0)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(
        SendMessageW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()))));
    return text;
}

namespace {

constexpr wchar_t mainTitle[] = L"Solvane CAPE-OPEN Unit Operation:";
constexpr auto patience = std::chrono::seconds(15);

BOOL CALLBACK addIfShown(HWND window, LPARAM list) {
    if (IsWindowVisible(window))
        reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
    return TRUE;
}

std::vector<std::wstring> tabLabels(HWND tabs) {
    std::vector<std::wstring> labels;
    const auto count = static_cast<WPARAM>(SendMessageW(tabs, TCM_GETITEMCOUNT, 0, 0));
    for (WPARAM i = 0; i < count; ++i) {
        wchar_t text[64] = L"";
        TCITEMW item{};
        item.mask = TCIF_TEXT;
        item.pszText = text;
        item.cchTextMax = 64;
        SendMessageW(tabs, TCM_GETITEMW, i, reinterpret_cast<LPARAM>(&item));
        labels.emplace_back(text);
    }
    return labels;
}

std::vector<HWND> dialogsOf(DWORD thread) {
    std::vector<HWND> found;
    EnumThreadWindows(thread, addIfShown, reinterpret_cast<LPARAM>(&found));
    std::erase_if(found, [](HWND window) { return classOf(window) != L"#32770"; });
    return found;
}

} // namespace

HRESULT WindowDriver::edit(const HostedUnit& unit, const Actions& actions, const Actions& opening) {
    WindowDriver user(GetCurrentThreadId());
    std::thread second([&] { user.act(actions, opening); });
    const HRESULT result = unit.as<ICapeUtilities>()->Edit();
    second.join();
    return result;
}

void WindowDriver::follow(DWORD thread, const Actions& actions) {
    WindowDriver(thread).act(actions);
}

void WindowDriver::act(const Actions& actions, const Actions& opening) {
    try {
        if (opening)
            opening(*this);
        await(mainTitle);
        actions(*this);
    } catch (const std::exception& fault) {
        ADD_FAILURE() << fault.what();
    }
    closeAll();
}

std::vector<HWND> WindowDriver::shown() const {
    std::vector<HWND> found;
    if (const HWND window = here())
        EnumChildWindows(window, addIfShown, reinterpret_cast<LPARAM>(&found));
    return found;
}

void WindowDriver::waitFor(const std::string& what, const std::function<bool()>& condition) const {
    const auto end = std::chrono::steady_clock::now() + patience;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end)
            throw std::runtime_error("waited in vain for " + what + "; here is \"" +
                                     narrow(title(), CP_UTF8) + '"');
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
}

/// The one that is not disabled by another before it.
HWND WindowDriver::here() const {
    for (const HWND dialog : dialogsOf(thread_))
        if (IsWindowEnabled(dialog))
            return dialog;
    return nullptr;
}

HWND WindowDriver::awaitChild(const std::string& what, const std::function<bool(HWND)>& isWanted) const {
    HWND found = nullptr;
    waitFor(what, [&] {
        const std::vector<HWND> children = shown();
        const auto child = std::ranges::find_if(children, isWanted);
        found = child == children.end() ? nullptr : *child;
        return found != nullptr;
    });
    return found;
}

HWND WindowDriver::control(int id) const {
    return awaitChild("control " + std::to_string(id),
                      [id](HWND child) { return GetDlgCtrlID(child) == id; });
}

HWND WindowDriver::button(const std::wstring& label) const {
    return awaitChild("button \"" + narrow(label, CP_UTF8) + '"',
                      [&](HWND child) { return classOf(child) == L"Button" && textOf(child) == label; });
}

std::vector<std::vector<std::wstring>> WindowDriver::rows(int list) const {
    const HWND window = control(list);
    const auto columns = static_cast<int>(SendMessageW(
        reinterpret_cast<HWND>(SendMessageW(window, LVM_GETHEADER, 0, 0)), HDM_GETITEMCOUNT, 0, 0));
    std::vector<std::vector<std::wstring>> result(
        static_cast<std::size_t>(SendMessageW(window, LVM_GETITEMCOUNT, 0, 0)));
    for (std::size_t row = 0; row < result.size(); ++row)
        for (int column = 0; column < columns; ++column) {
            wchar_t text[1024] = L"";
            LVITEMW item{};
            item.iSubItem = column;
            item.pszText = text;
            item.cchTextMax = 1024;
            SendMessageW(window, LVM_GETITEMTEXTW, row, reinterpret_cast<LPARAM>(&item));
            result[row].emplace_back(text);
        }
    return result;
}

int WindowDriver::selectedRow(int list) const {
    return static_cast<int>(
        SendMessageW(control(list), LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
}

std::vector<std::wstring> WindowDriver::entries(int list) const {
    const HWND window = control(list);
    if (classOf(window) == WC_TABCONTROLW)
        return tabLabels(window);
    const bool isCombo = classOf(window) == L"ComboBox";
    std::vector<std::wstring> result;
    const LRESULT count = SendMessageW(window, isCombo ? CB_GETCOUNT : LB_GETCOUNT, 0, 0);
    for (LRESULT i = 0; i < count; ++i) {
        const auto index = static_cast<WPARAM>(i);
        std::wstring text(static_cast<std::size_t>(
                              SendMessageW(window, isCombo ? CB_GETLBTEXTLEN : LB_GETTEXTLEN, index, 0)),
                          L'\0');
        SendMessageW(window, isCombo ? CB_GETLBTEXT : LB_GETTEXT, index,
                     reinterpret_cast<LPARAM>(text.data()));
        result.push_back(text);
    }
    return result;
}

HWND WindowDriver::focus() const {
    GUITHREADINFO information{};
    information.cbSize = sizeof information;
    GetGUIThreadInfo(thread_, &information);
    return information.hwndFocus;
}

void WindowDriver::settle() const {
    // What was sent before this is done, or waits in a modal dialog; then what was posted gets its turn.
    for (int turn = 0; turn < 3; ++turn) {
        DWORD_PTR ignored = 0;
        SendMessageTimeoutW(here(), WM_NULL, 0, 0, SMTO_NORMAL, 5000, &ignored);
        std::this_thread::sleep_for(std::chrono::milliseconds(15));
    }
}

void WindowDriver::pickTab(const std::wstring& label) {
    for (const HWND child : shown()) {
        if (classOf(child) != WC_TABCONTROLW)
            continue;
        const std::vector<std::wstring> labels = tabLabels(child);
        const auto found = std::ranges::find(labels, label);
        if (found == labels.end())
            continue;
        const auto index = found - labels.begin();
        RECT place{};
        SendMessageW(child, TCM_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&place));
        const LPARAM point = MAKELPARAM((place.left + place.right) / 2, (place.top + place.bottom) / 2);
        PostMessageW(child, WM_LBUTTONDOWN, MK_LBUTTON, point);
        PostMessageW(child, WM_LBUTTONUP, 0, point);
        waitFor("the tab " + narrow(label),
                [&] { return SendMessageW(child, TCM_GETCURSEL, 0, 0) == index; });
        return settle();
    }
    throw std::runtime_error("no tab \"" + narrow(label) + '"');
}

void WindowDriver::pickTab(int tabs, int index) {
    const HWND window = control(tabs);
    SendNotifyMessageW(window, TCM_SETCURFOCUS, static_cast<WPARAM>(index), 0);
    waitFor("the tab " + std::to_string(index),
            [&] { return SendMessageW(window, TCM_GETCURSEL, 0, 0) == static_cast<LRESULT>(index); });
    settle();
}

void WindowDriver::click(HWND control) {
    SendNotifyMessageW(control, BM_CLICK, 0, 0);
    settle();
}

void WindowDriver::press(const std::wstring& label) {
    const HWND pressed = button(label);
    if (!IsWindowEnabled(pressed))
        throw std::runtime_error("the button \"" + narrow(label) + "\" is disabled");
    click(pressed);
}

void WindowDriver::type(int id, const std::wstring& text) {
    SendMessageW(control(id), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
    settle();
}

void WindowDriver::choose(int list, const std::wstring& entry) {
    const HWND window = control(list);
    const std::vector<std::wstring> all = entries(list);
    const auto found = std::ranges::find(all, entry);
    if (found == all.end())
        throw std::runtime_error("no entry \"" + narrow(entry) + '"');
    SendMessageW(window, CB_SETCURSEL, static_cast<WPARAM>(found - all.begin()), 0);
    SendNotifyMessageW(GetParent(window), WM_COMMAND, MAKEWPARAM(list, CBN_SELCHANGE),
                       reinterpret_cast<LPARAM>(window));
    settle();
}

void WindowDriver::selectRow(int list, int row) {
    LVITEMW item{};
    item.state = item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    SendMessageW(control(list), LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    settle();
}

void WindowDriver::doubleClick(int list, int row) {
    const HWND window = control(list);
    RECT place{};
    SendMessageW(window, LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&place));
    const LPARAM point = MAKELPARAM(place.left + 8, (place.top + place.bottom) / 2);
    PostMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, point);
    PostMessageW(window, WM_LBUTTONUP, 0, point);
    PostMessageW(window, WM_LBUTTONDBLCLK, MK_LBUTTON, point);
    PostMessageW(window, WM_LBUTTONUP, 0, point);
    settle();
}

void WindowDriver::key(WORD virtualKey) {
    PostMessageW(focus(), WM_KEYDOWN, virtualKey, 1);
    PostMessageW(focus(), WM_KEYUP, virtualKey, static_cast<LPARAM>(0xC0000001));
    settle();
}

void WindowDriver::holding(const std::vector<int>& virtualKeys, const std::function<void()>& act) const {
    AttachThreadInput(GetCurrentThreadId(), thread_, TRUE);
    BYTE keys[256]{};
    for (const int key : virtualKeys)
        keys[key] = 0x80;
    SetKeyboardState(keys);
    act();
    for (const int key : virtualKeys)
        keys[key] = 0;
    SetKeyboardState(keys);
    AttachThreadInput(GetCurrentThreadId(), thread_, FALSE);
}

void WindowDriver::endLabel(int list, const std::wstring& text, bool isAccepted) {
    const HWND window = control(list);
    HWND label = nullptr;
    waitFor("a label to be edited", [&] {
        label = reinterpret_cast<HWND>(SendMessageW(window, LVM_GETEDITCONTROL, 0, 0));
        return label != nullptr;
    });
    SendMessageW(label, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
    PostMessageW(label, WM_KEYDOWN, isAccepted ? VK_RETURN : VK_ESCAPE, 1);
    settle();
}

void WindowDriver::resize(int width, int height) {
    SetWindowPos(here(), nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    settle();
}

void WindowDriver::await(const std::wstring& wanted) {
    waitFor("\"" + narrow(wanted) + '"', [&] { return here() && title() == wanted; });
    settle();
}

std::wstring WindowDriver::answer(const std::wstring& wanted, int button) {
    await(wanted);
    constexpr int textControl = 0xFFFF;
    const HWND box = here();
    const std::wstring text = textOf(GetDlgItem(box, textControl));
    PostMessageW(box, WM_COMMAND, static_cast<WPARAM>(button), 0);
    waitFor("the answer to " + narrow(wanted), [&] { return !IsWindow(box); });
    settle();
    return text;
}

void WindowDriver::enterFile(const std::wstring& wanted, const std::wstring& path) {
    await(wanted);
    const HWND dialog = here();
    constexpr int fileName = 1148;
    if (!path.empty())
        SendMessageW(GetDlgItem(dialog, fileName), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(path.c_str()));
    PostMessageW(dialog, WM_COMMAND, path.empty() ? IDCANCEL : IDOK, 0);
    waitFor("the end of " + narrow(wanted), [&] { return !IsWindow(dialog); });
    settle();
}

void WindowDriver::closeAll() const {
    const auto end = std::chrono::steady_clock::now() + patience;
    while (std::chrono::steady_clock::now() < end) {
        if (dialogsOf(thread_).empty())
            return;
        if (const HWND dialog = here()) // none for a moment, while one gives way to the next
            PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
}

} // namespace solvane
