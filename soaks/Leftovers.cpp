#include "Leftovers.h"

#include "Folders.h"

#include <windows.h>

#include <algorithm>

namespace solvane::soak {

std::size_t workingFoldersIn(const std::wstring& folder) {
    return static_cast<std::size_t>(std::ranges::count_if(
        namesIn(folder), [](const std::wstring& name) { return name.starts_with(L'{'); }));
}

bool comesTrue(const std::function<bool()>& condition) {
    const ULONGLONG begin = GetTickCount64();
    while (!condition()) {
        if (GetTickCount64() - begin > 10000)
            return false;
        Sleep(50);
    }
    return true;
}

} // namespace solvane::soak
