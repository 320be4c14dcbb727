/// Scripts in the ANSI code page, for an Octave that reads UTF-8 only.
#pragma once

#include "OwnFolder.h"

#include <map>
#include <memory>

namespace solvane::engine {

/// Keeps a copy in UTF-8 of each script (*.m) of the current folder that is not UTF-8: editors write either.
/// The copies lie in a folder "private" within, where the folder's scripts and functions find them first; the
/// files themselves stay as they are. A folder that has a "private" of its own is left alone, and so is one
/// that can't be written to.
class TranslatedScripts {
public:
    /// Brings the copies up to date. An empty folder, or another one, removes the former copies. True where
    /// any changed: Octave must look again.
    bool refresh(const std::wstring& folder);

private:
    bool isGone(const std::wstring& name) const;
    bool copy(const std::wstring& name, const std::string& script);

    std::wstring folder_;
    std::unique_ptr<OwnFolder> copies_;           // null until there is one
    std::map<std::wstring, std::string> scripts_; // what was copied, by name
};

} // namespace solvane::engine
