/// The parts of a case file. Each function returns false with a text that names the place.
#pragma once

#include "CaseModel.h"
#include "CasePlace.h"

#include <filesystem>
#include <string>
#include <vector>

namespace solvane::host {

bool read(const CasePlace& place, Generation& result);
bool read(const CasePlace& place, Profile& result);
bool read(const CasePlace& place, const Compound*& result);
bool read(const CasePlace& place, ParameterKind& result);

/// Reads a "model" and the files that it names, relative to `folder`.
bool readModel(const CasePlace& place, const std::filesystem::path& folder, UnitModel& model);

/// Reads a file by its path in the case, relative to `folder` unless absolute.
bool readModelFile(const CasePlace& place, const std::filesystem::path& folder, ModelFile& file);

/// Reads a feed, its composition in the order of `compounds`.
bool readFeed(const CasePlace& place, const std::vector<const Compound*>& compounds, FeedStream& feed);

/// Reads the only unit of a case, from the case's own keys, once the case's feeds are read.
bool readOnlyUnit(const CasePlace& root, const std::filesystem::path& folder, Case& result);

/// Reads the case's list of units.
bool readUnits(const CasePlace& units, const std::filesystem::path& folder, Case& result);

/// Reads the tear streams and how they converge, once the case's feeds are read.
bool readRecycles(const CasePlace& root, Case& result);

/// Checks that the streams go from unit to unit in the list's order, except the tear streams.
bool checkStreams(const CasePlace& root, const Case& flowsheet);

/// Adds the name to `names`; false with a text if it is among them. Like the unit, ignores the case of
/// letters.
bool isNewName(const CasePlace& place, const std::string& name, std::vector<std::string>& names);

} // namespace solvane::host
