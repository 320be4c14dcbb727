/// The gateway's commands as a caller sees them, apart from the interpreter's header, which the stand-in for
/// the interpreter cannot include.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace solvane::soak {

/// What an argument has to be, as far as a caller needs to know it.
enum class ArgumentKind { number, composition, text };

struct CommandForm {
    std::uint32_t code;
    std::string name;
    std::vector<ArgumentKind> arguments; ///< in the function's order
    int outputs;
};

const std::vector<CommandForm>& commandForms();

} // namespace solvane::soak
