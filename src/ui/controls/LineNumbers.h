#pragma once

#include "FixedFont.h"
#include "Layout.h"
#include "TextView.h"

#include <string>

namespace solvane {

/// Line numbers at the left of a text view. The control's text is the visible numbers, one a line.
class LineNumbers {
public:
    explicit LineNumbers(int id) : id_(id) {}
    LineNumbers(const LineNumbers&) = delete;
    LineNumbers& operator=(const LineNumbers&) = delete;
    ~LineNumbers() { destroy(); }

    void create(HWND parent);
    void destroy();
    void show(bool isShown) const { ShowWindow(window_, isShown ? SW_SHOW : SW_HIDE); }

    /// Divides the box, in the parent, between the numbers and the view.
    void place(const Box& box, HWND view);
    /// Divides it anew if that many lines need more or less room. For a text that comes.
    void makeRoomFor(LONG lineCount, HWND view);
    /// Call after the view has painted: its text or scroll position may have changed.
    void follow(HWND view, const VisibleLines& lines);

private:
    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                      DWORD_PTR numbers);
    void paint() const;
    int widthFor(LONG lineCount) const;
    void place(const Box& box, HWND view, LONG lineCount);

    int id_;
    HWND window_ = nullptr;
    FixedFont font_;
    Box box_;       ///< with the view
    int width_ = 0; ///< of the numbers
    std::wstring numbers_;
    LONG top_ = 0;        ///< of the first line, in the view
    LONG bottom_ = 0;     ///< of the view's text, without its scroll bar
    LONG lineHeight_ = 0; ///< 0 where there is but one line
};

} // namespace solvane
