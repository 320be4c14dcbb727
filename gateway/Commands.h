/// What a script can ask of its unit operation, as a table.
#pragma once

#include "Reply.h"
#include "Request.h"
#include "channel/CommandCode.h"

#include <array>
#include <string_view>

namespace solvane::gateway {

/// How far an answer can grow, which says how much of the block is fetched with it.
enum class ReplySize { small, compounds, phases };

struct ReplyForm {
    Unpack* unpack;
    int outputs;
    ReplySize size;
};

struct Command {
    CommandCode code;
    /// Also the name of the function that the user calls.
    std::string_view name;
    const char* usage;
    /// In the order of the wire; unused ones have argument 0. Each argument of the function is one field.
    std::array<Field, 7> fields;
    ReplyForm reply;

    std::span<const Field> usedFields() const;
};

std::span<const Command> allCommands();

/// Null for an unknown name. The case of letters counts, as in all of Matlab's names.
const Command* findCommand(std::string_view name);

/// How many bytes of the block to fetch with a command's answer. What an answer has beyond (a matrix, a long
/// text) is fetched when it is known to be there.
std::size_t wantedBytes(const Command& command, const Run& run);

} // namespace solvane::gateway
