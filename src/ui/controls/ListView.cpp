#include "ListView.h"

#include "Layout.h"

#include <commctrl.h>

#include <algorithm>

namespace solvane {

ListView::ListView(HWND list, std::span<const wchar_t* const> columns)
    : list_(list), columnCount_(static_cast<int>(columns.size())) {
    ListView_SetExtendedListViewStyle(list_, LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER);
    for (int i = 0; i < columnCount_; ++i) {
        LVCOLUMNW column{};
        column.mask = LVCF_TEXT;
        column.pszText = const_cast<LPWSTR>(columns[static_cast<std::size_t>(i)]);
        ListView_InsertColumn(list_, i, &column);
    }
    constexpr int headerPadding = 20;
    lastHeader_ = ListView_GetStringWidth(list_, columns.back()) + headerPadding;
}

void ListView::fill(const std::vector<std::vector<std::wstring>>& rows) const {
    SendMessageW(list_, WM_SETREDRAW, FALSE, 0);
    ListView_DeleteAllItems(list_);
    for (std::size_t row = 0; row < rows.size(); ++row) {
        LVITEMW item{};
        item.mask = LVIF_TEXT;
        item.iItem = static_cast<int>(row);
        for (const std::wstring& cell : rows[row]) {
            item.pszText = const_cast<LPWSTR>(cell.c_str());
            if (item.iSubItem == 0)
                ListView_InsertItem(list_, &item);
            else if (!cell.empty())
                ListView_SetItem(list_, &item);
            ++item.iSubItem;
        }
    }
    SendMessageW(list_, WM_SETREDRAW, TRUE, 0);
    fitColumns();
    InvalidateRect(list_, nullptr, TRUE);
}

void ListView::fitColumns() const {
    for (int i = 0; i < columnCount_ - 1; ++i) {
        ListView_SetColumnWidth(list_, i, LVSCW_AUTOSIZE);
        const int content = ListView_GetColumnWidth(list_, i);
        ListView_SetColumnWidth(list_, i, LVSCW_AUTOSIZE_USEHEADER);
        // With room for the header's margins, which not every system counts.
        const int header = ListView_GetColumnWidth(list_, i) + 2 * layoutMargin;
        ListView_SetColumnWidth(list_, i, std::max(content, header));
    }
    fitLastColumn();
}

/// The header's own rule for the last column does not see the scroll bar.
void ListView::fitLastColumn() const {
    const int last = columnCount_ - 1;
    int left = 0;
    for (int i = 0; i < last; ++i)
        left += ListView_GetColumnWidth(list_, i);
    ListView_SetColumnWidth(list_, last, LVSCW_AUTOSIZE);
    RECT area{};
    GetClientRect(list_, &area);
    lastWidth_ =
        std::max({ListView_GetColumnWidth(list_, last), lastHeader_, static_cast<int>(area.right) - left});
    ListView_SetColumnWidth(list_, last, lastWidth_);
}

void ListView::fillWidth() const {
    if (ListView_GetColumnWidth(list_, columnCount_ - 1) == lastWidth_)
        fitLastColumn();
}

int ListView::selected() const {
    return ListView_GetSelectedCount(list_) == 1 ? ListView_GetNextItem(list_, -1, LVNI_SELECTED) : -1;
}

void ListView::select(int row) const {
    constexpr UINT state = LVIS_SELECTED | LVIS_FOCUSED;
    ListView_SetItemState(list_, row, state, state);
    ListView_EnsureVisible(list_, row, FALSE);
}

void ListView::editLabel(int row) const {
    ListView_EditLabel(list_, row);
}

int ListView::count() const {
    return ListView_GetItemCount(list_);
}

} // namespace solvane
