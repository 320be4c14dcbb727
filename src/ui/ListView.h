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
    /// For when the list's width has changed: the last column takes the room that is left. The others stay as
    /// they are, and so does the last one where the user has given it a width.
    void fillWidth() const;

    /// -1 where no row or more than one is selected.
    int selected() const;
    /// Selects the row, shows it and gives it the list's focus.
    void select(int row) const;
    /// Begins the editing of the row's first column in place. The list has the focus.
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
