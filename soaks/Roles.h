/// What this program does in the further processes that a segment starts with `--role NAME ARGUMENT...`.
#pragma once

#include <array>
#include <string>
#include <vector>

namespace solvane::soak {

/// Arguments: the first unit's number, the count of runs, the folder of the results. Two units on two
/// threads.
int calculateInProcess(const std::vector<std::wstring>& arguments);
/// Argument: the count of runs. One unit; prints a line and returns 1 if a run fails.
int playHost(const std::vector<std::wstring>& arguments);

struct Role {
    const wchar_t* name;
    int (*run)(const std::vector<std::wstring>& arguments);
};

inline constexpr std::array roles = {
    Role{L"calculate", calculateInProcess},
    Role{L"host", playHost},
};

inline constexpr wchar_t roleOption[] = L"--role";

} // namespace solvane::soak
