#include "RegistrySandbox.h"

#include "com/Text.h"

#include <algorithm>
#include <stdexcept>

namespace solvane {

namespace {

constexpr wchar_t rootKey[] = L"Software\\SolvaneUnitOperationTests";

RegistryKey createKey(HKEY parent, const wchar_t* path) {
    RegistryKey key;
    if (RegCreateKeyExW(parent, path, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, key.put(), nullptr) !=
        ERROR_SUCCESS)
        throw std::runtime_error("a registry key can't be made");
    return key;
}

void collect(HKEY key, const std::wstring& path, std::vector<std::wstring>& lines) {
    bool hasEntries = false;
    std::wstring name(256, L'\0');
    for (DWORD i = 0;; ++i) {
        DWORD nameLength = static_cast<DWORD>(name.size());
        DWORD type = 0;
        wchar_t value[1024] = {};
        DWORD bytes = sizeof value - sizeof(wchar_t);
        if (RegEnumValueW(key, i, name.data(), &nameLength, nullptr, &type, reinterpret_cast<BYTE*>(value),
                          &bytes) != ERROR_SUCCESS)
            break;
        hasEntries = true;
        const std::wstring label = nameLength ? L" [" + name.substr(0, nameLength) + L"]" : L"";
        lines.push_back(path + label + L" = " +
                        (type == REG_SZ ? std::wstring(value) : L"type " + std::to_wstring(type)));
    }
    for (DWORD i = 0;; ++i) {
        DWORD nameLength = static_cast<DWORD>(name.size());
        if (RegEnumKeyExW(key, i, name.data(), &nameLength, nullptr, nullptr, nullptr, nullptr) !=
            ERROR_SUCCESS)
            break;
        hasEntries = true;
        const std::wstring subName = toLower(name.substr(0, nameLength));
        RegistryKey sub;
        RegOpenKeyExW(key, subName.c_str(), 0, KEY_READ, sub.put());
        collect(sub.get(), path.empty() ? subName : path + L"\\" + subName, lines);
    }
    if (!hasEntries && !path.empty())
        lines.push_back(path);
}

} // namespace

std::vector<std::wstring> contentsOf(HKEY key) {
    std::vector<std::wstring> lines;
    collect(key, L"", lines);
    std::ranges::sort(lines);
    return lines;
}

RegistrySandbox::RegistrySandbox() {
    RegDeleteTreeW(HKEY_CURRENT_USER, rootKey); // an earlier program may have ended early
    systemClasses_ = createKey(HKEY_LOCAL_MACHINE, L"Software\\Classes");
    root_ = createKey(HKEY_CURRENT_USER, rootKey);
    machine_ = createKey(root_.get(), L"Machine");
    user_ = createKey(root_.get(), L"User");
    classes_ = createKey(machine_.get(), L"Software\\Classes");
    coverClassesRoot();
    RegOverridePredefKey(HKEY_LOCAL_MACHINE, machine_.get());
    RegOverridePredefKey(HKEY_CURRENT_USER, user_.get());
}

RegistrySandbox::~RegistrySandbox() {
    for (const HKEY root : {HKEY_CLASSES_ROOT, HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER})
        RegOverridePredefKey(root, nullptr);
    RegDeleteTreeW(HKEY_CURRENT_USER, rootKey);
}

std::vector<std::wstring> RegistrySandbox::machineClasses() const {
    return contentsOf(createKey(machine_.get(), L"Software\\Classes").get());
}

std::vector<std::wstring> RegistrySandbox::userClasses() const {
    return contentsOf(createKey(user_.get(), L"Software\\Classes").get());
}

} // namespace solvane
