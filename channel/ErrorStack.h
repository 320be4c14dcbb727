/// The lines that OctaveAutomationServer prints after a run whose script failed, innermost first:
///     at tidy.m line 3, column 5
///     at script line 12, column 1
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace solvane {

/// A place in the unit's script or in another file of the user. Lines and columns are counted from 1.
struct ErrorPlace {
    std::string file; ///< with its folder if it is not in the unit's; empty for the unit's script
    long line = 0;
    long column = 0; ///< 0 if it is not known

    bool isInScript() const { return file.empty(); }
    bool operator==(const ErrorPlace&) const = default;
};

/// The places after the run's end in what it printed. None from a Matlab, which prints no such lines.
std::vector<ErrorPlace> readErrorStack(std::string_view output);

} // namespace solvane
