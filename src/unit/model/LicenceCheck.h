#pragma once

#include <string>

namespace solvane {

/// Whether the unit may run on this machine; `refusal` receives the reason if not. This product is free for
/// everybody, so it always may.
[[nodiscard]] inline bool isLicensed([[maybe_unused]] std::string& refusal) {
    return true;
}

/// The licence as the window shows it.
inline constexpr wchar_t licenceCode[] = L"None needed";
inline constexpr wchar_t licenceType[] = L"MIT, free for everybody";
/// The licence's text, in a file beside the module.
inline constexpr wchar_t licenceFile[] = L"LICENSE.txt";

} // namespace solvane
