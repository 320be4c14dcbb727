#pragma once

#include "CaseModel.h"

#include <string>
#include <vector>

namespace solvane::host {

/// Reads feeds that are each written in one line, such as "name=Feed, temperature=350 K, pressure=2 bar,
/// flow=10 mol/s, composition=methane:0.5;ethane:0.5", with the keys and values of case files. Adds them to
/// the case, to the ports of their names of its first unit, and their compounds to the case's. False with a
/// text that names the feed.
[[nodiscard]] bool readFeedLines(const std::vector<std::string>& lines, Case& result, std::string& error);

} // namespace solvane::host
