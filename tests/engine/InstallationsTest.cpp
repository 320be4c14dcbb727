// Which of the installed Octaves run: folders and registry entries as the installers leave them.
#include "AutomationClient.h"
#include "Folders.h"
#include "com/Registry.h"
#include "com/Text.h"
#include "engine/OctaveInstallations.h"

#include <gmock/gmock.h>

namespace solvane::engine {

namespace {

using testing::ElementsAreArray;
using testing::EndsWith;

/// Folders of programs on a disk of the test's own, and C:\Octave, which has no variable.
class Installations : public testing::Test {
protected:
    Installations() {
        for (const auto& [variable, folder] : folders)
            SetEnvironmentVariableW(variable, (disk + folder).c_str());
    }
    ~Installations() override {
        for (std::size_t i = 0; i < std::size(folders); ++i)
            SetEnvironmentVariableW(folders[i].first, former_[i].c_str());
        for (const auto& [root, key, view] : keys_)
            RegDeleteKeyExW(root, key.c_str(), view, 0);
        deleteTree(L"C:\\Octave");
    }

    /// As a copy of `program`.
    std::wstring install(const std::wstring& path, const std::wstring& program) {
        std::filesystem::create_directories(std::filesystem::path(path).parent_path());
        EXPECT_TRUE(CopyFileW(program.c_str(), path.c_str(), FALSE)) << narrow(path);
        return path;
    }

    void list(HKEY root, REGSAM view, const std::wstring& name,
              const std::vector<std::pair<const wchar_t*, std::wstring>>& values) {
        keys_.push_back({root, L"Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\" + name, view});
        for (const auto& [value, text] : values)
            EXPECT_EQ(writeRegistryString(root, keys_.back().key, value, text, view), ERROR_SUCCESS);
    }

private:
    struct Key {
        HKEY root;
        std::wstring key;
        REGSAM view;
    };
    static constexpr std::pair<const wchar_t*, const wchar_t*> folders[] = {
        {L"ProgramFiles", L"\\Programs"},
        {L"ProgramW6432", L"\\Programs"},
        {L"ProgramFiles(x86)", L"\\Programs32"},
        {L"LocalAppData", L"\\User"},
    };
    static std::vector<std::wstring> valuesOfVariables() {
        std::vector<std::wstring> values;
        for (const auto& [variable, folder] : folders)
            values.push_back(expandVariables(std::wstring(L"%") + variable + L"%"));
        return values;
    }

    const ScriptFolder folder_;
    const std::vector<std::wstring> former_ = valuesOfVariables();
    std::vector<Key> keys_;

protected:
    const std::wstring disk = folder_.path();
    const std::wstring versions = disk + L"\\Programs\\GNU Octave";
};

constexpr wchar_t program64[] = L"\\mingw64\\bin\\octave-cli.exe";
constexpr wchar_t program32[] = L"\\mingw32\\bin\\octave-cli.exe";
constexpr wchar_t anyProgram[] = L"C:\\windows\\system32\\hostname.exe"; // ends at once

TEST_F(Installations, findsEachLayoutNewestFirst) {
    const std::wstring found[] = {
        install(versions + L"\\Octave-10.1.0" + program64, anyProgram),
        install(disk + L"\\Elsewhere\\nine" + program64, anyProgram),
        install(versions + L"\\Octave-9.2.0" + program64, anyProgram),
        install(disk + L"\\User\\Programs\\GNU Octave\\Octave-8.4.0" + program64, anyProgram),
        install(disk + L"\\Elsewhere\\seven" + program64, anyProgram),
        install(disk + L"\\Programs32\\GNU Octave\\Octave-6.4.0" + program32, anyProgram),
        install(L"C:\\Octave\\Octave-5.2.0.0" + std::wstring(program64), anyProgram),
        install(L"C:\\Octave\\Octave-4.0.3\\bin\\octave-cli.exe", anyProgram),
    };
    list(HKEY_LOCAL_MACHINE, KEY_WOW64_64KEY, L"Octave-9.4.0",
         {{L"DisplayName", L"GNU Octave"},
          {L"DisplayVersion", L"9.4.0"},
          {L"InstallLocation", disk + L"\\Elsewhere\\nine"}});
    list(HKEY_CURRENT_USER, 0, L"Octave-7.3.0",
         {{L"DisplayName", L"Octave 7.3.0"},
          {L"UninstallString", L'"' + disk + L"\\Elsewhere\\seven\\uninstall.exe\""}});
    list(HKEY_LOCAL_MACHINE, KEY_WOW64_32KEY, L"found already",
         {{L"DisplayName", L"GNU Octave 9.2.0"}, {L"InstallLocation", versions + L"\\OCTAVE-9.2.0\\"}});
    // What uninstalling leaves.
    std::filesystem::create_directories(versions + L"\\Octave-11.0.0\\mingw64\\bin");
    list(HKEY_CURRENT_USER, 0, L"Octave-11.0.0", {{L"DisplayName", L"GNU Octave 11.0.0"}});
    EXPECT_THAT(installedOctaves(), ElementsAreArray(found));
}

TEST_F(Installations, runsTheNewestThatWorks) {
    const ScriptFolder text;
    text.write(L"noProgram", "");
    install(versions + L"\\Octave-10.1.0" + program64, text.path() + L"\\noProgram");
    install(versions + L"\\Octave-9.2.0" + program64, anyProgram);
    const std::wstring works =
        install(versions + L"\\Octave-8.4.0" + program64, builtFile(L"..\\tests\\windows_octave.exe"));
    install(versions + L"\\Octave-7.3.0" + program64, anyProgram);
    EXPECT_EQ(AutomationClient().execute(L"disp(1)"), L"ran disp(1)");
    EXPECT_THAT(runServer(L"/FindOctave"), EndsWith(narrow(works) + "\r\n"));
}

} // namespace

} // namespace solvane::engine
