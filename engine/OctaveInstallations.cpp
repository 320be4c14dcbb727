#include "OctaveInstallations.h"

#include "com/Handle.h"
#include "com/Registry.h"
#include "com/Text.h"

#include <algorithm>
#include <array>
#include <filesystem>

namespace solvane::engine {

namespace {

/// Folders in which the installers make a folder for each version, with environment variables. A 32-bit
/// process finds the 64-bit programs by a variable of their own.
constexpr std::array versionsFolders = {
    L"%ProgramFiles%\\GNU Octave",
    L"%ProgramW6432%\\GNU Octave",
    L"%ProgramFiles(x86)%\\GNU Octave",
    L"%LocalAppData%\\Programs\\GNU Octave",
    L"C:\\Octave",
};
constexpr std::wstring_view versionPrefix = L"Octave-";

/// Below a version's folder, newer layout first.
constexpr std::array programsOfVersion = {L"mingw64\\bin\\octave-cli.exe", L"mingw32\\bin\\octave-cli.exe",
                                          L"bin\\octave-cli.exe"};

/// The list of installed programs, which a user may have too, and which has a view for each word size.
constexpr wchar_t installedPrograms[] = L"Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall";
struct RegistryView {
    HKEY root;
    REGSAM view;
};
const std::array registryViews = {RegistryView{HKEY_CURRENT_USER, 0},
                                  RegistryView{HKEY_LOCAL_MACHINE, KEY_WOW64_64KEY},
                                  RegistryView{HKEY_LOCAL_MACHINE, KEY_WOW64_32KEY}};

struct Version {
    std::wstring number; // 10.1.0, which is newer than 9.4.0
    std::filesystem::path folder;
};

bool isNewer(const Version& left, const Version& right) {
    return CompareStringEx(LOCALE_NAME_INVARIANT, SORT_DIGITSASNUMBERS, left.number.c_str(), -1,
                           right.number.c_str(), -1, nullptr, nullptr, 0) == CSTR_GREATER_THAN;
}

void addVersionsOfFolder(const wchar_t* pattern, std::vector<Version>& versions) {
    const std::wstring folder = expandVariables(pattern) + L'\\';
    WIN32_FIND_DATAW entry;
    const FindHandle search(FindFirstFileW((folder + versionPrefix.data() + L'*').c_str(), &entry));
    for (BOOL more = static_cast<bool>(search); more; more = FindNextFileW(search.get(), &entry))
        versions.push_back({entry.cFileName + versionPrefix.size(), folder + entry.cFileName});
}

/// Without the quotes that a path with blanks has.
std::filesystem::path folderOfProgram(std::wstring program) {
    std::erase(program, L'"');
    return std::filesystem::path(program).parent_path();
}

void addVersionsOfRegistry(const RegistryView& registry, std::vector<Version>& versions) {
    RegistryKey list;
    RegOpenKeyExW(registry.root, installedPrograms, 0, KEY_READ | registry.view, list.put());
    std::array<wchar_t, 256> name; // no key's name is longer
    for (DWORD i = 0, size = name.size(); RegEnumKeyExW(list.get(), i, name.data(), &size, nullptr, nullptr,
                                                        nullptr, nullptr) == ERROR_SUCCESS;
         ++i, size = name.size()) {
        const auto value = [&](const wchar_t* valueName) {
            return readRegistryString(list.get(), name.data(), valueName).value_or(L"");
        };
        const std::wstring title = value(L"DisplayName");
        if (toLower(title).find(L"octave") == std::wstring::npos)
            continue;
        std::wstring number = value(L"DisplayVersion");
        if (number.empty())
            number = title.substr(std::min(title.find_first_of(L"0123456789"), title.size()));
        std::filesystem::path folder = value(L"InstallLocation");
        if (folder.empty())
            folder = folderOfProgram(value(L"UninstallString"));
        versions.push_back({number, folder});
    }
}

} // namespace

std::vector<std::wstring> installedOctaves() {
    std::vector<Version> versions;
    for (const wchar_t* folder : versionsFolders)
        addVersionsOfFolder(folder, versions);
    for (const RegistryView& registry : registryViews)
        addVersionsOfRegistry(registry, versions);
    std::stable_sort(versions.begin(), versions.end(), isNewer);

    std::vector<std::wstring> programs;
    for (const Version& version : versions)
        for (const wchar_t* program : programsOfVersion) {
            const std::filesystem::path path = version.folder / program;
            const auto isSame = [&](const std::wstring& other) {
                return compareNoCase(other, path.native()) == 0;
            };
            std::error_code ignored;
            if (!std::filesystem::is_regular_file(path, ignored))
                continue;
            if (std::none_of(programs.begin(), programs.end(), isSame))
                programs.push_back(path.native());
            break;
        }
    return programs;
}

} // namespace solvane::engine
