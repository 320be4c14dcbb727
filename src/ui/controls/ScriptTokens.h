/// What the words of a script are, for their colours.
#pragma once

#include <string_view>
#include <vector>

namespace solvane {

enum class ScriptToken { keyword, text, comment, number };

/// A part of a script, in characters from its begin.
struct ScriptSpan {
    std::size_t begin;
    std::size_t end;
    ScriptToken token;
};

/// In order; text between tokens has no kind. The script starts at the start of a line, outside a block
/// comment. Lines end in "\r" or "\n".
std::vector<ScriptSpan> spansOf(std::wstring_view script);

} // namespace solvane
