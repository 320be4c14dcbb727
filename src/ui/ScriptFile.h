#pragma once

#include "TextView.h"

#include <string>

namespace solvane {

class Unit;

/// The script's file in the working folder, and the view that shows it. The file is read into the view and
/// written from it; what fails is said in a box and, where the file cannot be opened, in the view too.
class ScriptFile {
public:
    ScriptFile(Unit& unit, TextView& view) : unit_(unit), view_(view) {}

    /// ANSI.
    std::string path() const;

    /// False where the view does not hold the whole script, which must not be edited then.
    bool load(HWND owner);
    /// False where nothing, or not all, was written. A text that the user left alone goes back as it came.
    bool write(HWND owner);

    /// The view shows why the file could not be opened, and nothing else.
    bool isRefused() const;

private:
    /// Undo brings back what the view held.
    void refuse(HWND owner);

    Unit& unit_;
    TextView& view_;
    bool isLoaded_ = false;   ///< the last load came to its end
    std::string loadedBytes_; ///< of the file, at the last load
    std::wstring loadedText_; ///< what the view made of them
    std::wstring refusal_;    ///< the last one since then
};

} // namespace solvane
