#include "WinePaths.h"

#include "com/Text.h"

#include <windows.h>

#include <algorithm>

namespace solvane::engine {

std::wstring unixPath(const std::wstring& windowsPath) {
    using Translate = char*(__cdecl*)(const wchar_t* path);
    const auto translate = reinterpret_cast<Translate>(reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "wine_get_unix_file_name")));
    char* translated = translate ? translate(windowsPath.c_str()) : nullptr;
    if (!translated)
        return {};
    std::wstring path = widen(translated, CP_UTF8);
    HeapFree(GetProcessHeap(), 0, translated);
    return path;
}

std::wstring windowsPath(const std::wstring& unixPath) {
    std::wstring path = L"\\\\?\\unix" + unixPath;
    std::replace(path.begin(), path.end(), L'/', L'\\');
    return path;
}

} // namespace solvane::engine
