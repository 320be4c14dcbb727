/// What the name of an additional file says about it. Names do not include the folder.
#pragma once

#include <string>
#include <string_view>

namespace solvane {

/// A program or a library, which no editor can show.
bool isExecutableLike(std::wstring_view name);

/// A text that the system would run instead of show.
bool isScriptLike(std::wstring_view name);

/// Whether the unit itself keeps a file of this name in its working folder or in a model file. unitCalc.m is
/// not among them: it is written anew before the next run.
bool isReservedFileName(std::wstring_view name);

/// Whether the system's ANSI code page has all characters of a name or path.
bool isInCodePage(const std::wstring& text);

/// Why a model with a file of this name could not be loaded again, as half a sentence; null where it could.
const char* fileNameFault(const std::wstring& name);

} // namespace solvane
