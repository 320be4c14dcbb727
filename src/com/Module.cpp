#include "Module.h"

namespace solvane {

std::wstring ComModule::path() const {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetModuleFileNameW(instance, path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.resize(path.size() * 2);
    }
}

std::wstring ComModule::pathBeside(const wchar_t* fileName) const {
    const std::wstring module = path();
    return module.substr(0, module.rfind(L'\\') + 1) + fileName;
}

/// Reads the resource itself, so that loading the module opens no file.
std::wstring ComModule::version() const {
    const HRSRC resource = FindResourceW(instance, MAKEINTRESOURCEW(VS_VERSION_INFO), RT_VERSION);
    const HGLOBAL loaded = resource ? LoadResource(instance, resource) : nullptr;
    const auto* bytes = loaded ? static_cast<const BYTE*>(LockResource(loaded)) : nullptr;
    // The fixed record follows a header and the key's text "VS_VERSION_INFO", at a multiple of four.
    constexpr std::size_t fixedRecord = 40;
    if (!bytes || SizeofResource(instance, resource) < fixedRecord + sizeof(VS_FIXEDFILEINFO))
        return L"<unknown>";
    const auto* info = reinterpret_cast<const VS_FIXEDFILEINFO*>(bytes + fixedRecord);
    if (info->dwSignature != VS_FFI_SIGNATURE)
        return L"<unknown>";
    return std::to_wstring(HIWORD(info->dwFileVersionMS)) + L'.' +
           std::to_wstring(LOWORD(info->dwFileVersionMS)) + L'.' +
           std::to_wstring(HIWORD(info->dwFileVersionLS)) + L'.' +
           std::to_wstring(LOWORD(info->dwFileVersionLS));
}

} // namespace solvane
