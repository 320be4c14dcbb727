/// How a fallible function fails: `return fail(error, ...)`.
#pragma once

#include <string>
#include <utility>

namespace solvane {

[[nodiscard]] inline bool fail(std::string& error, std::string text) {
    error = std::move(text);
    return false;
}

[[nodiscard]] inline bool fail(std::wstring& error, std::wstring text) {
    error = std::move(text);
    return false;
}

} // namespace solvane
