#include "Registry.h"

#include "Handle.h"

namespace solvane {

std::optional<std::wstring> readRegistryString(HKEY root, const std::wstring& key,
                                               const std::wstring& valueName, REGSAM view) {
    RegistryKey opened;
    if (RegOpenKeyExW(root, key.c_str(), 0, KEY_QUERY_VALUE | view, opened.put()) != ERROR_SUCCESS)
        return std::nullopt;
    DWORD type = 0;
    DWORD bytes = 0;
    if (RegQueryValueExW(opened.get(), valueName.c_str(), nullptr, &type, nullptr, &bytes) != ERROR_SUCCESS ||
        (type != REG_SZ && type != REG_EXPAND_SZ))
        return std::nullopt;
    std::wstring text(bytes / sizeof(wchar_t) + 1, L'\0');
    bytes = static_cast<DWORD>(text.size() * sizeof(wchar_t));
    if (RegQueryValueExW(opened.get(), valueName.c_str(), nullptr, &type,
                         reinterpret_cast<BYTE*>(text.data()), &bytes) != ERROR_SUCCESS)
        return std::nullopt;
    // A stored value may have any number of terminators.
    text.resize(std::wcslen(text.c_str()));
    return text;
}

LSTATUS writeRegistryString(HKEY root, const std::wstring& key, const std::wstring& valueName,
                            const std::wstring& value, REGSAM view) {
    RegistryKey opened;
    const LSTATUS created = RegCreateKeyExW(root, key.c_str(), 0, nullptr, 0, KEY_SET_VALUE | view, nullptr,
                                            opened.put(), nullptr);
    if (created != ERROR_SUCCESS)
        return created;
    return RegSetValueExW(opened.get(), valueName.c_str(), 0, REG_SZ,
                          reinterpret_cast<const BYTE*>(value.c_str()),
                          static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
}

std::wstring expandVariables(const std::wstring& text) {
    std::wstring expanded(ExpandEnvironmentStringsW(text.c_str(), nullptr, 0), L'\0');
    ExpandEnvironmentStringsW(text.c_str(), expanded.data(), static_cast<DWORD>(expanded.size()));
    expanded.resize(std::wcslen(expanded.c_str()));
    return expanded;
}

} // namespace solvane
