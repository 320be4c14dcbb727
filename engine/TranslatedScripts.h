/// Copies of scripts in the ANSI code page, for an Octave that reads only UTF-8.
#pragma once

#include "OwnFolder.h"

#include <cstdint>
#include <map>
#include <memory>

namespace solvane::engine {

/// Keeps a UTF-8 copy of each script (*.m) in the current folder that is not UTF-8, since editors write
/// either. The copies are in a subfolder "private", where the folder's scripts and functions find them first;
/// the files themselves stay unchanged. A folder that has its own "private", or cannot be written to, gets no
/// copies.
class TranslatedScripts {
public:
    /// Brings the copies up to date. An empty or different folder removes the former copies. True if any copy
    /// changed: Octave must then look for files again.
    bool refresh(const std::wstring& folder);

private:
    bool isGone(const std::wstring& name) const;
    bool copy(const std::wstring& name, const std::string& script);

    std::wstring folder_;
    std::unique_ptr<OwnFolder> copies_;           // null without copies
    std::map<std::wstring, std::string> scripts_; // what was copied, by name
    // Scripts that need no copy until they are written again, with the time of the last writing.
    std::map<std::wstring, std::uint64_t> utf8_;
};

} // namespace solvane::engine
