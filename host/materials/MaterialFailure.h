#pragma once

#include <windows.h>

#include <string>

namespace solvane::host {

/// Why a call on a material failed: the CAPE-OPEN code that the caller gets, and the text that it can ask
/// for.
struct Failure {
    HRESULT code = S_OK;
    std::wstring text;
};

/// For `return fail(...)`: always false.
[[nodiscard]] inline bool fail(Failure& failure, HRESULT code, std::wstring text) {
    failure = {code, std::move(text)};
    return false;
}

} // namespace solvane::host
