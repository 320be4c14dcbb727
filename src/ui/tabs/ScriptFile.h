#pragma once

#include "ui/controls/TextView.h"

#include <string>

namespace solvane {

class Unit;

/// The script's file in the working folder, and the view that shows it. The file is read into the view and
/// written from it. A message box reports failures; if the file cannot be opened, the view shows why too.
class ScriptFile {
public:
    ScriptFile(Unit& unit, TextView& view) : unit_(unit), view_(view) {}

    /// ANSI.
    std::string path() const;

    /// False if the view does not hold the whole script, which must not be edited then.
    bool load(HWND owner);
    /// False if the file was not written completely. A text that the user did not change is written
    /// unchanged.
    bool write(HWND owner);

    /// The view shows why the file could not be opened, and nothing else.
    bool isRefused() const;

private:
    /// An error message in the view is not a script, whatever was typed in it or around it.
    bool holdsRefusal(const std::wstring& text) const;

    /// Shows the error in the view; undo restores what the view held.
    void refuse(HWND owner);

    Unit& unit_;
    TextView& view_;
    bool isLoaded_ = false;   ///< the last load read the whole file
    std::string loadedBytes_; ///< the file at the last load
    std::wstring loadedText_; ///< the same bytes as the view shows them
    std::wstring refusal_;    ///< the last error shown since then
};

} // namespace solvane
