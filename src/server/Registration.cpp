#include "Registration.h"

#include "CSolvaneUnitOperationModule.h"
#include "com/ComRef.h"
#include "com/Registrar.h"
#include "com/Registry.h"
#include "com/Text.h"
#include "unit/ClassIds.h"

#include <oleauto.h>

#include <array>
#include <optional>

// Missing from the compiler's headers.
extern "C" HRESULT WINAPI RegisterTypeLibForUser(ITypeLib* library, OLECHAR* path, OLECHAR* helpFolder);

namespace solvane {

namespace {

// Registry scripts among the module's resources.
constexpr UINT moduleScript = 101;
constexpr UINT unitScript = 102;

constexpr wchar_t modelFileType[] = L"SolvaneUnitOperationModel";

/// Makes registry texts the same for every user's language.
class NeutralLocale {
public:
    NeutralLocale() : saved_(GetThreadLocale()) { SetThreadLocale(LOCALE_SYSTEM_DEFAULT); }
    ~NeutralLocale() { SetThreadLocale(saved_); }
    NeutralLocale(const NeutralLocale&) = delete;
    NeutralLocale& operator=(const NeutralLocale&) = delete;

private:
    LCID saved_;
};

HRESULT runScript(UINT script, bool registering) {
    const std::wstring path = theModule().path();
    const std::array variables{
        RegistrarVariable{L"MODULE", path},
        RegistrarVariable{L"APPID", applicationId},
        RegistrarVariable{L"DLLVERSION", theModule().version()},
    };
    return runRegistryScript(path, script, variables, registering ? Registration::add : Registration::remove);
}

HRESULT updateClasses(bool registering) {
    for (const ObjectMapEntry& entry : theModule().objectMap()) {
        if (!entry.updateRegistry)
            continue;
        const HRESULT updated = entry.updateRegistry(registering);
        if (FAILED(updated))
            return updated;
    }
    return S_OK;
}

HRESULT registerTypeLibrary(bool perUser) {
    ITypeLib* loaded = nullptr;
    std::wstring path = theModule().path();
    HRESULT result = LoadTypeLib(path.c_str(), &loaded);
    const auto library = ComRef<ITypeLib>::adopt(loaded);
    if (FAILED(result))
        return result;
    return perUser ? RegisterTypeLibForUser(library.get(), path.data(), nullptr)
                   : RegisterTypeLib(library.get(), path.data(), nullptr);
}

HRESULT unregisterTypeLibrary() {
    const HRESULT removed =
        UnRegisterTypeLib(typeLibraryId, 1, 0, LOCALE_NEUTRAL, sizeof(void*) == 8 ? SYS_WIN64 : SYS_WIN32);
    // A missing entry counts as removed: the first code is Windows', the second Wine's.
    return removed == TYPE_E_REGISTRYACCESS || removed == E_INVALIDARG ? S_OK : removed;
}

/// A model file is a zip container, so it opens with the user's zip program. The shell's own zip view cannot
/// open a file of another type.
void linkModelTypeToZipProgram(bool perUser) {
    const std::optional<std::wstring> zipType = readRegistryString(HKEY_CLASSES_ROOT, L".zip", L"");
    if (!zipType)
        return;
    const std::optional<std::wstring> command =
        readRegistryString(HKEY_CLASSES_ROOT, *zipType + L"\\shell\\open\\command", L"");
    if (!command)
        return;
    const std::wstring lower = toLower(*command);
    if (lower.find(L".exe") == std::wstring::npos || lower.find(L"explorer.exe") != std::wstring::npos)
        return;
    writeRegistryString(perUser ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE,
                        std::wstring(L"Software\\Classes\\") + modelFileType + L"\\shell\\open\\command", L"",
                        *command);
}

bool isPerUserWanted() {
    return readRegistryString(HKEY_CURRENT_USER, L"Software\\SolvaneUO", L"CurrentUser") == L"1";
}

HRESULT registerEntries(bool perUser) {
    const NeutralLocale locale;
    std::optional<PerUserClassesRoot> classesRoot;
    if (perUser) {
        classesRoot.emplace();
        if (FAILED(classesRoot->status()))
            return classesRoot->status();
    }
    HRESULT result = runScript(moduleScript, true);
    if (SUCCEEDED(result))
        result = updateClasses(true);
    if (SUCCEEDED(result))
        result = registerTypeLibrary(perUser);
    return result;
}

} // namespace

HRESULT registerServer() {
    const bool perUser = isPerUserWanted();
    const HRESULT result = registerEntries(perUser);
    linkModelTypeToZipProgram(perUser);
    return result;
}

// Ignores the per-user switch: this removes the machine's registration.
HRESULT unregisterServer() {
    const NeutralLocale locale;
    HRESULT result = updateClasses(false);
    if (SUCCEEDED(result))
        result = unregisterTypeLibrary();
    if (SUCCEEDED(result))
        result = runScript(moduleScript, false);
    return result;
}

HRESULT updateUnitRegistry(bool registering) {
    return runScript(unitScript, registering);
}

} // namespace solvane
