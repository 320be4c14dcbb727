#include "MatlabRegistration.h"

#include "ScriptedMatlab.h"
#include "com/Handle.h"
#include "com/Registry.h"

#include <stdexcept>

namespace solvane {

namespace {

constexpr wchar_t matlabKey[] = L"Software\\Classes\\Matlab.Application";
constexpr wchar_t backupKey[] = L"Software\\Classes\\Matlab.Application.BeforeTests";
// Below the backup: the former key where there was one.
constexpr wchar_t formerKey[] = L"Former";
constexpr wchar_t completeValue[] = L"Complete";

std::wstring standInKey() {
    return std::wstring(L"Software\\Classes\\CLSID\\") + scriptedMatlabClassText;
}

std::wstring standInPath() {
    const HMODULE module = GetModuleHandleW(L"ScriptedMatlab.dll");
    std::wstring path(1024, L'\0');
    path.resize(GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size())));
    return path;
}

std::wstring fileBesideStandIn(const wchar_t* name) {
    const std::wstring path = standInPath();
    return path.substr(0, path.rfind(L'\\') + 1) + name;
}

void check(LSTATUS status, const char* what) {
    if (status != ERROR_SUCCESS)
        throw std::runtime_error(std::string("Matlab.Application can't be registered: ") + what);
}

void write(const std::wstring& key, const std::wstring& valueName, const std::wstring& value) {
    check(writeRegistryString(HKEY_LOCAL_MACHINE, key, valueName, value), "the registry refuses to write");
}

/// False where there is no such key.
bool copyKey(const std::wstring& from, const std::wstring& to) {
    RegistryKey source;
    if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, from.c_str(), 0, KEY_READ, source.put()) != ERROR_SUCCESS)
        return false;
    RegistryKey target;
    check(RegCreateKeyExW(HKEY_LOCAL_MACHINE, to.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                          target.put(), nullptr),
          "no key can be made");
    check(RegCopyTreeW(source.get(), nullptr, target.get()), "a key can't be copied");
    return true;
}

void removeKey(const std::wstring& key) {
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, key.c_str());
}

bool isBackupComplete() {
    return readRegistryString(HKEY_LOCAL_MACHINE, backupKey, completeValue).has_value();
}

} // namespace

MatlabRegistration::MatlabRegistration() {
    restore();
    removeKey(backupKey); // an incomplete one: Matlab's own key is still in place
    copyKey(matlabKey, std::wstring(backupKey) + L"\\" + formerKey);
    write(backupKey, completeValue, L"yes");

    removeKey(matlabKey);
    setClass();
    setCurrentVersion(L"Matlab.Application.9.14");
    setServer(standInPath());
    write(standInKey() + L"\\InprocServer32", L"ThreadingModel", L"Both");
}

MatlabRegistration::~MatlabRegistration() {
    restore();
}

void MatlabRegistration::setCurrentVersion(const std::wstring& version) {
    write(std::wstring(matlabKey) + L"\\CurVer", L"", version);
}

void MatlabRegistration::removeCurrentVersion() {
    removeKey(std::wstring(matlabKey) + L"\\CurVer");
}

void MatlabRegistration::setClass() {
    write(std::wstring(matlabKey) + L"\\CLSID", L"", scriptedMatlabClassText);
}

void MatlabRegistration::setServer(const std::wstring& path) {
    write(standInKey() + L"\\InprocServer32", L"", path);
}

void MatlabRegistration::setSharedServer() {
    removeKey(standInKey() + L"\\InprocServer32");
    write(standInKey() + L"\\LocalServer32", L"", L"\"" + fileBesideStandIn(L"SharedMatlab.exe") + L"\"");
}

void MatlabRegistration::removeClass() {
    removeKey(std::wstring(matlabKey) + L"\\CLSID");
}

void MatlabRegistration::restore() {
    if (!isBackupComplete())
        return;
    removeKey(matlabKey);
    copyKey(std::wstring(backupKey) + L"\\" + formerKey, matlabKey);
    removeKey(standInKey());
    removeKey(backupKey);
}

} // namespace solvane
