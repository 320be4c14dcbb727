#include "TextView.h"

#include "com/Text.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace solvane {

namespace {

constexpr LONG endOfText = 0x7FFFFFFE;

/// Wine's control removes a text line by line, each in time proportional to the whole: from this length on a
/// new control is quicker.
constexpr int longText = 10'000;

/// It takes as long to set the tab stops of a text as to lay it out: from this length on they are the
/// control's.
constexpr std::size_t longestWithTabStops = 1'000'000;

constexpr UINT unicodePage = 1200;

// Characters are passed as they are in memory; the caller converts a file's code page.
constexpr WPARAM streamFormat = SF_TEXT | SF_UNICODE;

DWORD CALLBACK feed(DWORD_PTR source, BYTE* block, LONG size, LONG* count) {
    auto& rest = *reinterpret_cast<std::wstring_view*>(source);
    std::size_t length = std::min(rest.size(), static_cast<std::size_t>(size) / sizeof(wchar_t));
    // A line end that is split between two blocks would become two.
    if (length > 1 && length < rest.size() && rest[length - 1] == L'\r')
        --length;
    std::memcpy(block, rest.data(), length * sizeof(wchar_t));
    rest.remove_prefix(length);
    *count = static_cast<LONG>(length * sizeof(wchar_t));
    return 0;
}

DWORD CALLBACK collect(DWORD_PTR target, BYTE* block, LONG size, LONG* count) {
    auto& text = *reinterpret_cast<std::wstring*>(target);
    const std::size_t length = static_cast<std::size_t>(size) / sizeof(wchar_t);
    text.resize(text.size() + length);
    std::memcpy(text.data() + text.size() - length, block, length * sizeof(wchar_t));
    *count = size;
    return 0;
}

CHARFORMATW coloured(COLORREF colour, DWORD effects) {
    CHARFORMATW format{};
    format.cbSize = sizeof format;
    format.dwMask = CFM_COLOR;
    format.crTextColor = colour;
    format.dwEffects = effects;
    return format;
}

} // namespace

void TextView::create(HWND parent) {
    parent_ = parent;
    // The scroll bars stay: whenever one came or went, Wine's control would lay out all of a long text anew.
    constexpr DWORD style = WS_CHILD | WS_TABSTOP | WS_VSCROLL | WS_HSCROLL | ES_DISABLENOSCROLL |
                            ES_MULTILINE | ES_AUTOVSCROLL | ES_AUTOHSCROLL | ES_WANTRETURN | ES_NOHIDESEL;
    window_ = CreateWindowExW(WS_EX_CLIENTEDGE, RICHEDIT_CLASSW, L"",
                              style | (kind_ == Kind::readOnly ? DWORD{ES_READONLY} : 0), 0, 0, 0, 0, parent,
                              reinterpret_cast<HMENU>(static_cast<INT_PTR>(id_)), nullptr, nullptr);
    SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    formerProcedure_ = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure)));
    if (kind_ == Kind::editable) // an output's verdict has a colour
        ask(EM_SETTEXTMODE, TM_PLAINTEXT | TM_MULTILEVELUNDO | TM_MULTICODEPAGE, 0);
    ask(EM_SETUNDOLIMIT, 1'000'000, 0); // as deep as the control can
    ask(EM_EXLIMITTEXT, 0, endOfText);
    font_.giveTo(window_);
}

/// Of the whole text, whose lines hand them on to new ones.
void TextView::setTabStops() const {
    constexpr int twipsPerInch = 1440;
    const HDC device = GetDC(window_);
    const int dpi = GetDeviceCaps(device, LOGPIXELSX);
    ReleaseDC(window_, device);
    PARAFORMAT format{};
    format.cbSize = sizeof format;
    format.dwMask = PFM_TABSTOPS;
    format.cTabCount = MAX_TAB_STOPS;
    for (int i = 0; i < MAX_TAB_STOPS; ++i)
        format.rgxTabs[i] = MulDiv((i + 1) * tabWidth * font_.characterWidth(window_), twipsPerInch, dpi);
    select(0, -1);
    ask(EM_SETPARAFORMAT, 0, reinterpret_cast<LPARAM>(&format));
}

void TextView::destroy() {
    if (window_)
        discard(std::exchange(window_, nullptr));
}

void TextView::discard(HWND control) const {
    SetWindowLongPtrW(control, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(formerProcedure_));
    DestroyWindow(control);
}

void TextView::replaceControl() {
    const HWND former = window_;
    RECT place{};
    GetWindowRect(former, &place);
    MapWindowPoints(HWND_DESKTOP, parent_, reinterpret_cast<POINT*>(&place), 2);
    const bool hasFocus = GetFocus() == former;
    create(parent_);
    SetWindowPos(window_, former, place.left, place.top, place.right - place.left, place.bottom - place.top,
                 SWP_NOACTIVATE);
    EnableWindow(window_, IsWindowEnabled(former));
    show((GetWindowLongW(former, GWL_STYLE) & WS_VISIBLE) != 0);
    if (hasFocus)
        SetFocus(window_);
    discard(former);
}

// ---- the text

bool TextView::setText(std::wstring_view text) {
    if (GetWindowTextLengthW(window_) > longText)
        replaceControl();
    if (onNewText) // a control of another size would lay out all of it again
        onNewText(static_cast<LONG>(std::ranges::count(text, L'\n')) + 1);
    const bool isLong = text.size() > longestWithTabStops; // the stream uses the text up
    EDITSTREAM stream{reinterpret_cast<DWORD_PTR>(&text), 0, feed};
    ask(EM_STREAMIN, streamFormat, reinterpret_cast<LPARAM>(&stream));
    if (kind_ == Kind::editable && !isLong)
        setTabStops();
    if (kind_ == Kind::readOnly) { // the other has no formats
        const CHARFORMATW plain = coloured(0, CFE_AUTOCOLOR);
        ask(EM_SETCHARFORMAT, SCF_ALL, reinterpret_cast<LPARAM>(&plain));
    }
    ask(EM_EMPTYUNDOBUFFER, 0, 0);
    setCaret({});
    POINT top{}; // a view that has no size yet is somewhere else
    ask(EM_SETSCROLLPOS, 0, reinterpret_cast<LPARAM>(&top));
    return stream.dwError == 0;
}

void TextView::replaceText(const std::wstring& text) {
    select(0, -1);
    ask(EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text.c_str()));
    setCaret({});
}

bool TextView::getText(std::wstring& text) const {
    text.clear();
    EDITSTREAM stream{reinterpret_cast<DWORD_PTR>(&text), 0, collect};
    ask(EM_STREAMOUT, streamFormat, reinterpret_cast<LPARAM>(&stream));
    return stream.dwError == 0;
}

void TextView::append(const std::wstring& text, COLORREF colour) {
    select(endOfText, endOfText);
    const LONG begin = selection().cpMin;
    ask(EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(text.c_str()));
    select(begin, endOfText);
    const CHARFORMATW format = coloured(colour, 0);
    ask(EM_SETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&format));
    select(endOfText, endOfText);
    ask(EM_SCROLLCARET, 0, 0);
}

/// Not by the control: Wine's pastes with formats, and in plain text replaces the whole text.
void TextView::paste() const {
    if (!OpenClipboard(window_))
        return;
    if (const HANDLE memory = GetClipboardData(CF_TEXT))
        if (const auto* bytes = static_cast<const char*>(GlobalLock(memory))) {
            const std::wstring text = widen(std::string_view(bytes, strnlen(bytes, GlobalSize(memory))));
            GlobalUnlock(memory);
            ask(EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text.c_str()));
        }
    CloseClipboard();
    ask(EM_SCROLLCARET, 0, 0);
}

// ---- the caret

TextPlace TextView::caret() const {
    const auto line = static_cast<long>(ask(EM_EXLINEFROMCHAR, 0, caret_));
    const auto lineBegin = static_cast<long>(ask(EM_LINEINDEX, static_cast<WPARAM>(line), 0));
    return {line + 1, caret_ - lineBegin + 1};
}

void TextView::setCaret(const TextPlace& place) {
    const auto lineCount = static_cast<long>(ask(EM_GETLINECOUNT, 0, 0));
    const long line = std::clamp(place.line - 1, 0L, std::max(lineCount - 1, 0L));
    const auto begin = static_cast<long>(ask(EM_LINEINDEX, static_cast<WPARAM>(line), 0));
    const auto length = static_cast<long>(ask(EM_LINELENGTH, static_cast<WPARAM>(begin), 0));
    const long position = begin + std::clamp(place.column - 1, 0L, length);
    select(position, position);
    ask(EM_SCROLLCARET, 0, 0);
    noteSelection();
}

void TextView::select(LONG begin, LONG end) const {
    const CHARRANGE range{begin, end};
    ask(EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&range));
}

CHARRANGE TextView::selection() const {
    CHARRANGE range{};
    ask(EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&range));
    return range;
}

LONG TextView::length() const {
    const GETTEXTLENGTHEX characters{GTL_NUMCHARS | GTL_PRECISE, unicodePage};
    return static_cast<LONG>(ask(EM_GETTEXTLENGTHEX, reinterpret_cast<WPARAM>(&characters), 0));
}

POINTL TextView::placeOf(LONG character) const {
    POINTL place{};
    ask(EM_POSFROMCHAR, reinterpret_cast<WPARAM>(&place), character);
    return place;
}

/// With few requests: in a long text each one takes Wine's control long.
VisibleLines TextView::visibleLines() const {
    VisibleLines lines{};
    lines.first = static_cast<LONG>(ask(EM_GETFIRSTVISIBLELINE, 0, 0));
    lines.count = static_cast<LONG>(ask(EM_GETLINECOUNT, 0, 0));
    lines.firstCharacter = static_cast<LONG>(ask(EM_LINEINDEX, static_cast<WPARAM>(lines.first), 0));
    lines.place = placeOf(lines.firstCharacter);
    if (lines.count > 1)
        lines.height = placeOf(static_cast<LONG>(ask(EM_LINEINDEX, 1, 0))).y - placeOf(0).y;
    return lines;
}

void TextView::noteSelection() {
    const CHARRANGE now = selection();
    if (now.cpMin == selection_.cpMin && now.cpMax == selection_.cpMax)
        return;
    // The control may have drawn the selection without a WM_PAINT.
    if (onPainted && (now.cpMin != now.cpMax || selection_.cpMin != selection_.cpMax))
        InvalidateRect(window_, nullptr, FALSE);
    caret_ = now.cpMax != selection_.cpMax ? now.cpMax : now.cpMin;
    selection_ = now;
    if (now.cpMin != now.cpMax) // all of the text includes an end that is no character
        caret_ = std::min(caret_, length());
    if (onCaretMoved)
        onCaretMoved();
}

// ---- messages

LRESULT CALLBACK TextView::procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return reinterpret_cast<TextView*>(GetWindowLongPtrW(window, GWLP_USERDATA))
        ->handle(message, wParam, lParam);
}

LRESULT TextView::handle(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_KEYDOWN && takeKey(wParam))
        return 0;
    if (message == WM_GETDLGCODE)
        return dialogCode(reinterpret_cast<const MSG*>(lParam));
    if ((message == EM_PASTESPECIAL || message == WM_PASTE) && kind_ == Kind::editable) {
        paste();
        noteSelection();
        return 0;
    }
    ++depth_;
    const LRESULT result = ask(message, wParam, lParam);
    // Inside a message the control's state may be incomplete.
    if (--depth_ == 0)
        noteSelection();
    if (message == WM_PAINT && onPainted)
        onPainted(visibleLines());
    return result;
}

bool TextView::takeKey(WPARAM key) {
    if (key == VK_ESCAPE) {
        onEscape();
        return true;
    }
    if (kind_ == Kind::readOnly || key < 'A' || key > 'Z' || GetKeyState(VK_CONTROL) >= 0)
        return false;
    // With AltGr, which comes as Control and Alt, a letter's key types another character: no command.
    if (GetKeyState(VK_MENU) < 0)
        return true;
    if (key != 'V')
        return false;
    PostMessageW(window_, EM_PASTESPECIAL, CF_TEXT, 0);
    return true;
}

/// The control is not asked: of one that finds itself in a dialog the tab key would be the dialog's. Nor does
/// the dialog select all the text when the focus arrives. Text that can't be edited has no use for a tab.
LRESULT TextView::dialogCode(const MSG* message) const {
    constexpr LRESULT code = DLGC_WANTARROWS | DLGC_WANTCHARS;
    const bool isTab = message && message->message == WM_KEYDOWN && message->wParam == VK_TAB;
    return isTab && kind_ == Kind::readOnly ? code : code | DLGC_WANTALLKEYS;
}

LRESULT TextView::ask(UINT message, WPARAM wParam, LPARAM lParam) const {
    return CallWindowProcW(formerProcedure_, window_, message, wParam, lParam);
}

} // namespace solvane
