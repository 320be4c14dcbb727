/// The statements of a script, for the checks that read it.
#pragma once

#include "cases/CaseModel.h"

#include <cstddef>
#include <string>
#include <vector>

namespace solvane::host {

/// A text in quotes.
struct QuotedText {
    long line;       ///< in the file, counted from 1
    std::size_t at;  ///< of its opening quote in the code
    std::size_t end; ///< behind its closing quote
    std::string text;
};

/// A line, with those that continue it.
struct ScriptStatement {
    std::string code{}; ///< without comments, and with blanks in place of what the texts hold
    std::vector<QuotedText> texts{};
    long line = 0;              ///< its first in the file, counted from 1
    bool hasNumberSign = false; ///< as the begin of a comment
};

struct ScriptFile {
    std::string name;
    std::vector<ScriptStatement> statements;
};

/// The script and the additional files with functions.
std::vector<ScriptFile> scriptFilesOf(const UnitModel& model);

/// Whether the script is more than comments.
bool hasStatement(const UnitModel& model);

/// "model.m:7"
std::string placeOf(const ScriptFile& file, const ScriptStatement& statement);
std::string placeOf(const ScriptFile& file, const QuotedText& text);

} // namespace solvane::host
