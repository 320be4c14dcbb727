#pragma once

#include <windows.h>

#include <span>
#include <string>
#include <vector>

namespace solvane {

/// A list of rows with columns, of which one row or none is selected. Works on a control that it does not
/// own.
class ListView {
public:
    ListView() = default;
    /// Of a list view control in report view; selects whole rows.
    ListView(HWND list, std::span<const wchar_t* const> columns);

    /// Replaces all rows and fits the columns. Nothing is selected afterwards.
    void fill(const std::vector<std::vector<std::wstring>>& rows) const;
    /// Call after the list's width has changed: the last column takes the remaining width, unless the user
    /// has set it. The other columns stay.
    void fillWidth() const;

    /// -1 unless exactly one row is selected.
    int selected() const;
    /// Selects the row, shows it and gives it the list's focus.
    void select(int row) const;
    /// Starts in-place editing of the row's first column and focuses the list.
    void editLabel(int row) const;
    int count() const;
    HWND window() const { return list_; }

private:
    /// Fits each column to its content and its header; the last one takes the room that is left.
    void fitColumns() const;
    void fitLastColumn() const;

    HWND list_ = nullptr;
    int columnCount_ = 0;
    int lastHeader_ = 0;        ///< width of the last column's header
    mutable int lastWidth_ = 0; ///< of the last column, as it was fitted; any other is the user's
};

} // namespace solvane
