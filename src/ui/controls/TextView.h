/// The text views of scripts and reports: rich edit controls of plain text.
#pragma once

#include "FixedFont.h"

#include <windows.h>

#include <richedit.h>

#include <functional>
#include <string>

namespace solvane {

/// A place in a text, line and column from 1. A column is a character, a tab is one.
struct TextPlace {
    long line = 1;
    long column = 1;
};

/// Where a view shows its text, in pixels of its client area.
struct VisibleLines {
    LONG first;          ///< line, from 0
    LONG count;          ///< of all lines, also those that are not visible
    LONG firstCharacter; ///< of the first line
    POINTL place;        ///< of that character
    LONG height;         ///< of a line; not known, 0, where there is but one
};

/// A control of unlimited length in a fixed-pitch font that scrolls both ways and does not wrap. It handles
/// Escape and, in an editable text, Ctrl+V, which pastes without formats, and AltGr keys; the control handles
/// all others.
class TextView {
public:
    enum class Kind { editable, readOnly };

    static constexpr int tabWidth = 4; ///< in characters, where a text of usual length may be edited

    TextView(Kind kind, int id) : kind_(kind), id_(id) {}
    TextView(const TextView&) = delete;
    TextView& operator=(const TextView&) = delete;
    ~TextView() { destroy(); }

    std::function<void()> onEscape;                     ///< has to be set
    std::function<void()> onCaretMoved;                 ///< may be empty
    std::function<void(LONG lines)> onNewText;          ///< before setText lays it out; may be empty
    std::function<void(const VisibleLines&)> onPainted; ///< may be empty

    void create(HWND parent);
    void destroy();
    /// Changes when setText replaces a long text.
    HWND window() const { return window_; }
    const FixedFont& font() const { return font_; }
    void show(bool isShown) const { ShowWindow(window_, isShown ? SW_SHOW : SW_HIDE); }

    /// False if the control could not take or return the whole text. Clears the undo history.
    bool setText(std::wstring_view text);
    /// Unlike setText, this can be undone.
    void replaceText(const std::wstring& text);
    /// Lines end in "\r\n".
    bool getText(std::wstring& text) const;
    /// Leaves the caret after the text.
    void append(const std::wstring& text, COLORREF colour);

    TextPlace caret() const;
    /// Beyond the text's end, its last line; beyond the line's end, its last column.
    void setCaret(const TextPlace& place);

private:
    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam);
    /// Whether the view handled the key.
    bool takeKey(WPARAM key);
    LRESULT dialogCode(const MSG* message) const;
    void paste() const;
    void noteSelection();
    VisibleLines visibleLines() const;
    POINTL placeOf(LONG character) const;
    /// Lets the control handle the message.
    LRESULT ask(UINT message, WPARAM wParam, LPARAM lParam) const;
    void select(LONG begin, LONG end) const;
    CHARRANGE selection() const;
    /// In characters, of which a line's end is one.
    LONG length() const;

    /// Replaces the control by a new one.
    void replaceControl();
    void discard(HWND control) const;
    void setTabStops() const;

    Kind kind_;
    int id_; ///< among its parent's controls
    HWND parent_ = nullptr;
    HWND window_ = nullptr;
    WNDPROC formerProcedure_ = nullptr;
    FixedFont font_;
    int depth_ = 0; ///< of messages within messages
    CHARRANGE selection_{};
    LONG caret_ = 0; ///< the end of the selection that moved last
};

} // namespace solvane
