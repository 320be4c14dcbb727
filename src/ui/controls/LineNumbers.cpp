#include "LineNumbers.h"

#include <commctrl.h>

#include <algorithm>

namespace solvane {

void LineNumbers::create(HWND parent) {
    window_ = CreateWindowExW(0, WC_STATICW, L"", WS_CHILD, 0, 0, 0, 0, parent,
                              reinterpret_cast<HMENU>(static_cast<INT_PTR>(id_)), nullptr, nullptr);
    SetWindowSubclass(window_, procedure, 0, reinterpret_cast<DWORD_PTR>(this));
    font_.giveTo(window_);
}

void LineNumbers::destroy() {
    if (!window_)
        return;
    RemoveWindowSubclass(window_, procedure, 0);
    DestroyWindow(window_);
    window_ = nullptr;
}

int LineNumbers::widthFor(LONG lineCount) const {
    constexpr std::size_t fewest = 3;
    const std::size_t digits = std::max(std::to_wstring(lineCount).size(), fewest);
    return static_cast<int>(digits) * font_.characterWidth(window_) + 2 * layoutMargin;
}

void LineNumbers::place(const Box& box, HWND view) {
    place(box, view, static_cast<LONG>(SendMessageW(view, EM_GETLINECOUNT, 0, 0)));
}

void LineNumbers::makeRoomFor(LONG lineCount, HWND view) {
    if (box_.width > 0 && widthFor(lineCount) != width_)
        place(box_, view, lineCount);
}

void LineNumbers::place(const Box& box, HWND view, LONG lineCount) {
    box_ = box;
    width_ = widthFor(lineCount);
    Layout layout;
    layout.move(window_, {box.left, box.top, width_, box.height});
    layout.move(view, {box.left + width_, box.top, box.width - width_, box.height});
}

void LineNumbers::follow(HWND view, const VisibleLines& lines) {
    makeRoomFor(lines.count, view);
    RECT area{};
    GetClientRect(view, &area);
    std::wstring numbers;
    LONG y = lines.place.y;
    for (LONG line = lines.first; line < lines.count && y < area.bottom; ++line, y += lines.height)
        numbers += std::to_wstring(line + 1) + L'\n';
    RECT text{0, lines.place.y, 0, area.bottom};
    MapWindowPoints(view, window_, reinterpret_cast<POINT*>(&text), 2);
    if (numbers == numbers_ && text.top == top_ && text.bottom == bottom_ && lines.height == lineHeight_)
        return;
    numbers_ = numbers;
    top_ = text.top;
    bottom_ = text.bottom;
    lineHeight_ = lines.height;
    SetWindowTextW(window_, numbers_.c_str());
    InvalidateRect(window_, nullptr, FALSE);
}

LRESULT CALLBACK LineNumbers::procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                        DWORD_PTR numbers) {
    switch (message) {
    case WM_PAINT:
        reinterpret_cast<const LineNumbers*>(numbers)->paint();
        return 0;
    case WM_ERASEBKGND:
        return TRUE;
    case WM_SETTEXT: // the control itself would paint it at once
        return DefWindowProcW(window, message, wParam, lParam);
    default:
        return DefSubclassProc(window, message, wParam, lParam);
    }
}

void LineNumbers::paint() const {
    PAINTSTRUCT painting;
    const HDC device = BeginPaint(window_, &painting);
    RECT area{};
    GetClientRect(window_, &area);
    FillRect(device, &area, GetSysColorBrush(COLOR_BTNFACE));
    const HGDIOBJ former = SelectObject(device, font_.handle());
    SetBkMode(device, TRANSPARENT);
    SetTextColor(device, GetSysColor(COLOR_GRAYTEXT));
    RECT line{area.left, top_, area.right - layoutMargin, bottom_};
    for (std::size_t begin = 0; begin < numbers_.size(); line.top += lineHeight_) {
        const std::size_t end = numbers_.find(L'\n', begin);
        DrawTextW(device, numbers_.data() + begin, static_cast<int>(end - begin), &line, DT_RIGHT | DT_TOP);
        begin = end + 1;
    }
    SelectObject(device, former);
    EndPaint(window_, &painting);
}

} // namespace solvane
