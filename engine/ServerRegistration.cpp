#include "ServerRegistration.h"

#include "com/Failure.h"
#include "com/Registry.h"
#include "com/Text.h"

#include <array>

namespace solvane::engine {

namespace {

constexpr wchar_t description[] = L"GNU Octave Automation Server";
constexpr wchar_t classes[] = L"Software\\Classes\\";
constexpr wchar_t classId[] = L"{99A86BC0-7BAD-4400-A453-9014CFBBF8C5}";

/// A name by which clients create the server, and the versioned name in its CurVer. A program that reads
/// Matlab's version from CurVer finds no number after "Matlab.Application.", unlike with a real Matlab.
struct ProgramName {
    const wchar_t* name;
    const wchar_t* versioned;
};

constexpr ProgramName ownName = {L"SolvaneOctave.Application", L"SolvaneOctave.Application.1"};
constexpr ProgramName matlabName = {L"Matlab.Application", L"Matlab.Application.Octave"};

struct Root {
    HKEY key;
    const wchar_t* name;
};

const std::array roots = {
    Root{HKEY_LOCAL_MACHINE, L"HKEY_LOCAL_MACHINE\\"}, // RegistrationScope::machine
    Root{HKEY_CURRENT_USER, L"HKEY_CURRENT_USER\\"},   // RegistrationScope::user
};

std::wstring failure(const Root& root, const std::wstring& key, const wchar_t* what, LSTATUS code) {
    const std::wstring text = root.name + key + L" could not be " + what;
    if (code == ERROR_ACCESS_DENIED && root.key == HKEY_LOCAL_MACHINE)
        return text + L": run this as administrator, or with /PerUser for this user only";
    return text + L" (error " + std::to_wstring(code) + L")";
}

std::wstring classKey() {
    return std::wstring(L"CLSID\\") + classId;
}

std::optional<std::wstring> read(const Root& root, const std::wstring& key) {
    return readRegistryString(root.key, classes + key, L"");
}

bool write(const Root& root, const std::wstring& key, const std::wstring& value, std::wstring& error) {
    const LSTATUS written = writeRegistryString(root.key, classes + key, L"", value);
    return written == ERROR_SUCCESS || fail(error, failure(root, classes + key, L"written", written));
}

bool leadsHere(const Root& root, const std::wstring& name) {
    const auto id = read(root, name + L"\\CLSID");
    return id && compareNoCase(*id, classId) == 0;
}

bool isHeldByAnother(const ProgramName& program) {
    for (const Root& root : roots) {
        const std::wstring name = program.name;
        const auto version = read(root, name + L"\\CurVer");
        if ((read(root, name + L"\\CLSID") && !leadsHere(root, name)) ||
            (version && compareNoCase(*version, program.versioned) != 0))
            return true;
    }
    return false;
}

bool writeName(const Root& root, const ProgramName& program, std::wstring& error) {
    const std::wstring name = program.name;
    const std::wstring versioned = program.versioned;
    return write(root, versioned, description, error) &&
           write(root, versioned + L"\\CLSID", classId, error) && write(root, name, description, error) &&
           write(root, name + L"\\CLSID", classId, error) &&
           write(root, name + L"\\CurVer", versioned, error);
}

/// Leaves a key unchanged that has subkeys of other programs, or does not exist.
bool removeName(const Root& root, const std::wstring& name, std::wstring& error) {
    if (!leadsHere(root, name))
        return true;
    for (const wchar_t* part : {L"\\CurVer", L"\\CLSID", L""}) {
        const std::wstring key = classes + name + part;
        const LSTATUS removed = RegDeleteKeyW(root.key, key.c_str());
        const bool isOccupied = *part == L'\0' && removed == ERROR_ACCESS_DENIED;
        if (removed != ERROR_SUCCESS && removed != ERROR_FILE_NOT_FOUND && !isOccupied)
            return fail(error, failure(root, key, L"removed", removed));
    }
    return true;
}

} // namespace

bool registerServer(RegistrationScope scope, const std::wstring& program, bool& standsForMatlab,
                    std::wstring& error) {
    const Root& root = roots[static_cast<std::size_t>(scope)];
    standsForMatlab = !isHeldByAnother(matlabName);
    return write(root, classKey(), description, error) &&
           write(root, classKey() + L"\\LocalServer32", L"\"" + program + L"\"", error) &&
           write(root, classKey() + L"\\ProgID", ownName.versioned, error) &&
           write(root, classKey() + L"\\VersionIndependentProgID", ownName.name, error) &&
           writeName(root, ownName, error) && (!standsForMatlab || writeName(root, matlabName, error));
}

bool unregisterServer(RegistrationScope scope, std::wstring& error) {
    const Root& root = roots[static_cast<std::size_t>(scope)];
    for (const ProgramName& program : {ownName, matlabName})
        if (!removeName(root, program.name, error) || !removeName(root, program.versioned, error))
            return false;
    const std::wstring key = classes + classKey();
    const LSTATUS removed = RegDeleteTreeW(root.key, key.c_str());
    return removed == ERROR_SUCCESS || removed == ERROR_FILE_NOT_FOUND ||
           fail(error, failure(root, key, L"removed", removed));
}

} // namespace solvane::engine
