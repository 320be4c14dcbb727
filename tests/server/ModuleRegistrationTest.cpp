// The keys that registration writes for the machine or the user, and that its removal deletes.

#include "RegistrySandbox.h"
#include "ServerTest.h"
#include "com/Registry.h"
#include "com/Text.h"

#include <algorithm>
#include <filesystem>

namespace solvane {

namespace {

using Lines = std::vector<std::wstring>;

/// The file version of the module, as the system reads it.
std::wstring fileVersion(const std::wstring& path) {
    DWORD ignored = 0;
    std::vector<BYTE> data(GetFileVersionInfoSizeW(path.c_str(), &ignored));
    VS_FIXEDFILEINFO* info = nullptr;
    UINT size = 0;
    if (!GetFileVersionInfoW(path.c_str(), 0, static_cast<DWORD>(data.size()), data.data()) ||
        !VerQueryValueW(data.data(), L"\\", reinterpret_cast<void**>(&info), &size))
        return L"?";
    return std::to_wstring(info->dwFileVersionMS >> 16) + L'.' +
           std::to_wstring(info->dwFileVersionMS & 0xFFFF) + L'.' +
           std::to_wstring(info->dwFileVersionLS >> 16) + L'.' +
           std::to_wstring(info->dwFileVersionLS & 0xFFFF);
}

class Registration : public testing::Test {
protected:
    UnitModule module;
    RegistrySandbox registry;

    /// The whole registry after a registration on an empty machine. The system decides on the type library's
    /// flags.
    static Lines complete(const std::wstring& path = UnitModule::builtPath()) {
        const std::wstring unit = L"{5C7A1E20-93B4-4D0E-8A61-2F0D7B9C41E3}";
        const std::wstring library = L"{5C7A1E24-93B4-4D0E-8A61-2F0D7B9C41E3}";
        const std::wstring application = L"{5C7A1E25-93B4-4D0E-8A61-2F0D7B9C41E3}";
        const std::wstring typeLibrary = L"typelib\\" + library + L"\\1.0";
        const std::wstring name = L"SolvaneUnitOperation.SolvaneUnitOp";
        const struct {
            std::wstring key;
            std::vector<std::wstring> entries;
        } keys[] = {
            {L".SVM", {L" = SolvaneUnitOperationModel"}},
            {L"AppID\\" + application, {L" = SolvaneUnitOperation"}},
            {L"AppID\\SolvaneUnitOperation.DLL", {L" [AppID] = " + application}},
            {L"SolvaneUnitOperationModel\\DefaultIcon", {L" = " + path + L",0"}},
            {L"SolvaneUnitOperationModel\\shell\\open", {L""}},
            {name + L".1", {L" = SolvaneUnitOp Class"}},
            {name + L".1\\CLSID", {L" = " + unit}},
            {name, {L" = SolvaneUnitOp Class"}},
            {name + L"\\CLSID", {L" = " + unit}},
            {name + L"\\CurVer", {L" = " + name + L".1"}},
            {L"CLSID\\" + unit, {L" = SolvaneUnitOp Class", L" [AppID] = " + application}},
            {L"CLSID\\" + unit + L"\\ProgID", {L" = " + name + L".1"}},
            {L"CLSID\\" + unit + L"\\VersionIndependentProgID", {L" = " + name}},
            {L"CLSID\\" + unit + L"\\Programmable", {L""}},
            {L"CLSID\\" + unit + L"\\InprocServer32", {L" = " + path, L" [ThreadingModel] = Apartment"}},
            {L"CLSID\\" + unit + L"\\TypeLib", {L" = " + library}},
            {L"CLSID\\" + unit + L"\\Implemented Categories",
             {L"\\{0d562dc8-ea8e-4210-ab39-b66513c0cd09}", L"\\{4150c28a-ee06-403f-a871-87afec38a249}",
              L"\\{4667023a-5a8e-4cca-ab6d-9d78c5112fed}", L"\\{678c09a1-7d66-11d2-a67d-00105a42887f}",
              L"\\{678c09a5-7d66-11d2-a67d-00105a42887f}"}},
            {L"CLSID\\" + unit + L"\\CapeDescription",
             {L" [Name] = Solvane Unit Operation",
              L" [Description] = Unit operation calculated by Matlab script", L" [CapeVersion] = 1.0",
              L" [ComponentVersion] = " + fileVersion(path), L" [VendorURL] = ",
              L" [About] = Solvane Unit Operation: a unit operation whose model is a Matlab script. MIT "
              L"licence."}},
            {typeLibrary, {L" = SolvaneUnitOperation 1.0 Type Library"}},
            {typeLibrary + L"\\0\\" + (sizeof(void*) == 8 ? L"win64" : L"win32"), {L" = " + path}},
            {typeLibrary + L"\\HELPDIR", {L" = " + path.substr(0, path.rfind(L'\\'))}},
        };
        Lines lines;
        for (const auto& row : keys)
            for (const std::wstring& entry : row.entries)
                lines.push_back(toLower(row.key) + entry);
        std::ranges::sort(lines);
        return lines;
    }

    /// Lists missing and unexpected entries.
    static void expectContents(Lines found, const Lines& wanted) {
        std::erase_if(found, [](const std::wstring& line) { return line.find(L"\\flags = ") != line.npos; });
        Lines missing, surplus;
        std::ranges::set_difference(wanted, found, std::back_inserter(missing));
        std::ranges::set_difference(found, wanted, std::back_inserter(surplus));
        EXPECT_EQ(missing, Lines());
        EXPECT_EQ(surplus, Lines());
    }

    static void wantPerUser(const wchar_t* value = L"1") {
        writeRegistryString(HKEY_CURRENT_USER, L"Software\\SolvaneUO", L"CurrentUser", value);
    }

    static void associateZip(const std::wstring& command) {
        writeRegistryString(HKEY_CLASSES_ROOT, L".zip", L"", L"Archive");
        writeRegistryString(HKEY_CLASSES_ROOT, L"Archive\\shell\\open\\command", L"", command);
    }
    static std::optional<std::wstring> commandOf(HKEY root) {
        return readRegistryString(root, L"Software\\Classes\\SolvaneUnitOperationModel\\shell\\open\\command",
                                  L"");
    }
};

// A second registration changes nothing, and a registration replaces an old class key.
TEST_F(Registration, writesTheMachinesKeysAndNoOthers) {
    for (int turn = 0; turn < 2; ++turn) {
        EXPECT_EQ(module.registerServer(), S_OK);
        expectContents(registry.machineClasses(), complete());
        expectContents(registry.userClasses(), Lines());
        writeRegistryString(HKEY_CLASSES_ROOT, L"CLSID\\{5C7A1E20-93B4-4D0E-8A61-2F0D7B9C41E3}\\Insertable",
                            L"", L"of an old version");
    }
}

TEST_F(Registration, writesNothingForTheMachinePerUser) {
    wantPerUser();
    EXPECT_EQ(module.registerServer(), S_OK);
    expectContents(registry.userClasses(), complete());
    expectContents(registry.machineClasses(), Lines());
}

TEST_F(Registration, isPerUserOnlyIfTheSwitchIsExactlyOne) {
    for (const wchar_t* value : {L"0", L"", L"11", L" 1", L"true"}) {
        SCOPED_TRACE(narrow(value));
        wantPerUser(value);
        EXPECT_EQ(module.registerServer(), S_OK);
        expectContents(registry.userClasses(), Lines());
    }
    expectContents(registry.machineClasses(), complete());
}

TEST_F(Registration, sparesOthersKeysOnRemoval) {
    const auto write = [](const wchar_t* key) { writeRegistryString(HKEY_CLASSES_ROOT, key, L"", L"kept"); };
    for (const wchar_t* key : {L"AppID\\Other", L"CLSID\\Other", L"TypeLib\\Other", L".zip"})
        write(key);
    const Lines before = registry.machineClasses();
    ASSERT_EQ(module.registerServer(), S_OK);
    // Missing entries need no removal.
    for (int turn = 0; turn < 2; ++turn) {
        EXPECT_EQ(module.unregisterServer(), S_OK);
        expectContents(registry.machineClasses(), before);
    }
}

// For example C:\Users\O'Brien.
TEST_F(Registration, supportsAFolderWithApostrophes) {
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / L"two '' of O'Brien";
    const std::wstring path = (folder / L"SolvaneUnitOperation.dll").wstring();
    std::filesystem::create_directories(folder);
    std::filesystem::copy_file(UnitModule::builtPath(), path,
                               std::filesystem::copy_options::overwrite_existing);
    {
        const UnitModule there(path);
        EXPECT_EQ(there.registerServer(), S_OK);
        expectContents(registry.machineClasses(), complete(path));
        EXPECT_EQ(there.unregisterServer(), S_OK);
        expectContents(registry.machineClasses(), {L"appid", L"clsid", L"typelib"});
    }
    std::filesystem::remove_all(folder);
}

// An uninstaller runs for the machine, whatever the user's switch says.
TEST_F(Registration, ignoresTheSwitchOnRemoval) {
    ASSERT_EQ(module.registerServer(), S_OK);
    wantPerUser();
    ASSERT_EQ(module.registerServer(), S_OK);
    registry.coverClassesRoot();
    EXPECT_EQ(module.unregisterServer(), S_OK);
    expectContents(registry.machineClasses(), {L"appid", L"clsid", L"typelib"});
    expectContents(registry.userClasses(), complete());
}

TEST_F(Registration, opensModelsWithTheZipProgram) {
    writeRegistryString(HKEY_CLASSES_ROOT, L".zip", L"", L"Archive"); // an unknown program
    EXPECT_EQ(module.registerServer(), S_OK);
    EXPECT_EQ(commandOf(HKEY_LOCAL_MACHINE), std::nullopt);
    const struct {
        const wchar_t* command;
        bool isTaken;
    } cases[] = {
        {L"\"C:\\Program Files\\Packer\\PACKER.EXE\" \"%1\"", true},
        {L"c:\\packer.exe %1", true},
        {L"C:\\Windows\\Explorer.EXE /idlist,%I,%L", false},
        {L"rundll32 zipfldr.dll,RouteTheCall %L", false},
        {L"", false},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(narrow(row.command));
        RegDeleteTreeW(HKEY_CLASSES_ROOT, L"SolvaneUnitOperationModel");
        associateZip(row.command);
        EXPECT_EQ(module.registerServer(), S_OK);
        EXPECT_EQ(commandOf(HKEY_LOCAL_MACHINE),
                  row.isTaken ? std::optional<std::wstring>(row.command) : std::nullopt);
        EXPECT_EQ(commandOf(HKEY_CURRENT_USER), std::nullopt);
    }
}

TEST_F(Registration, restoresTheThreadsLocale) {
    const LCID german = MAKELCID(MAKELANGID(LANG_GERMAN, SUBLANG_GERMAN), SORT_DEFAULT);
    const LCID former = GetThreadLocale();
    SetThreadLocale(german);
    module.registerServer();
    EXPECT_EQ(GetThreadLocale(), german);
    module.unregisterServer();
    EXPECT_EQ(GetThreadLocale(), german);
    SetThreadLocale(former);
}

// The system looks up the association in its own classes, so the test writes it there for a short time.
TEST_F(Registration, opensTheUsersModelsWithTheZipProgramPerUser) {
    const std::wstring command = L"c:\\packer.exe %1";
    const std::wstring type = L"SolvaneUnitOperationTests.Archive";
    RegistryKey zip;
    DWORD disposition = 0;
    // Volatile: should this program end early, the key ends with the system.
    ASSERT_EQ(RegCreateKeyExW(registry.systemClasses(), L".zip", 0, nullptr, REG_OPTION_VOLATILE,
                              KEY_ALL_ACCESS, nullptr, zip.put(), &disposition),
              ERROR_SUCCESS);
    if (disposition != REG_CREATED_NEW_KEY)
        GTEST_SKIP() << "this machine has an association of its own";
    writeRegistryString(zip.get(), L"", L"", type);
    writeRegistryString(registry.systemClasses(), type + L"\\shell\\open\\command", L"", command);
    wantPerUser();
    EXPECT_EQ(module.registerServer(), S_OK);
    EXPECT_EQ(commandOf(HKEY_CURRENT_USER), command);
    EXPECT_EQ(commandOf(HKEY_LOCAL_MACHINE), std::nullopt);
    RegDeleteKeyW(registry.systemClasses(), L".zip");
    RegDeleteTreeW(registry.systemClasses(), type.c_str());
}

// The system rejects a lasting key below a volatile one.
TEST_F(Registration, reportsARejectedKeyAndStillLinksTheZipProgram) {
    const auto makeVolatile = [](HKEY parent, const wchar_t* path) {
        RegistryKey key;
        EXPECT_EQ(RegCreateKeyExW(parent, path, 0, nullptr, REG_OPTION_VOLATILE, KEY_ALL_ACCESS, nullptr,
                                  key.put(), nullptr),
                  ERROR_SUCCESS);
        return key;
    };
    const RegistryKey classes = makeVolatile(HKEY_CURRENT_USER, L"Refusing");
    for (const wchar_t* path : {L".zip", L"Archive\\shell\\open\\command"})
        makeVolatile(classes.get(), path);
    RegOverridePredefKey(HKEY_CLASSES_ROOT, classes.get());
    associateZip(L"c:\\packer.exe %1");
    EXPECT_TRUE(FAILED(module.registerServer()));
    EXPECT_EQ(commandOf(HKEY_LOCAL_MACHINE), L"c:\\packer.exe %1");
}

} // namespace

} // namespace solvane
