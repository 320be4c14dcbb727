#include "FailureHint.h"

#include <algorithm>
#include <array>

namespace solvane::host {

namespace {

/// By the end of the message.
struct Row {
    std::string_view message;
    std::string_view hint;
};

constexpr std::array rows{
    Row{"Vapor phase not found for vapor phase flash constraint",
        "in setProduct, 'vaporFraction' must be the first condition, and the first phase a vapour; otherwise "
        "find the state by flashEquilibrium, and set its pressure and enthalpy"},
};

} // namespace

std::string_view failureHint(std::string_view message) {
    const auto row =
        std::ranges::find_if(rows, [&](const Row& one) { return message.ends_with(one.message); });
    return row == rows.end() ? std::string_view() : row->hint;
}

} // namespace solvane::host
