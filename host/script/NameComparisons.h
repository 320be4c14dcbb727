/// The texts that a script compares with names that the unit gives it.
#pragma once

#include "ScriptStatements.h"

#include <set>
#include <string>
#include <vector>

namespace solvane::host {

/// Where a script has the names of one kind from.
struct NameSource {
    std::set<std::string> variables; ///< that have them from the start, or by custom
    std::set<std::string> functions; ///< whose first result they are
};

/// The texts that one comparison tries, be it in several calls or the cases of a switch.
struct NameComparison {
    std::vector<const QuotedText*> texts{};
    bool ignoresCase = false;
    bool isTested = false; ///< the script looks whether any name equals them
};

/// The comparisons of a file with those names. They point to texts in the file.
std::vector<NameComparison> nameComparisons(const ScriptFile& file, const NameSource& source);

} // namespace solvane::host
