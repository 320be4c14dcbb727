#pragma once

#include <string>
#include <utility>
#include <vector>

namespace solvane {

/// A file of a model's container: its name and its bytes.
using Entry = std::pair<std::string, std::string>;

/// A zip made from these files, in their order, and the files of one. `folder` is for a file on the way.
std::string zipOf(const std::vector<Entry>& entries, const std::wstring& folder);
std::vector<Entry> entriesOf(const std::string& container, const std::wstring& folder);

/// A document around these elements.
std::string unitDocument(const std::string& elements);

} // namespace solvane
