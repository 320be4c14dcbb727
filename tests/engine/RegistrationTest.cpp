#include "AutomationClient.h"

#include "com/Registry.h"
#include "com/Text.h"

#include <gmock/gmock.h>

namespace solvane::engine {

namespace {

using testing::HasSubstr;
using testing::Not;

constexpr wchar_t classes[] = L"Software\\Classes\\";
constexpr wchar_t ourClass[] = L"{99A86BC0-7BAD-4400-A453-9014CFBBF8C5}";
constexpr wchar_t matlabsClass[] = L"{11111111-2222-3333-4444-555555555555}";

std::wstring valueOf(HKEY root, const std::wstring& key) {
    return readRegistryString(root, classes + key, L"").value_or(L"(missing)");
}

void expectName(HKEY root, const std::wstring& name, const std::wstring& versioned) {
    EXPECT_EQ(valueOf(root, name + L"\\CLSID"), ourClass);
    EXPECT_EQ(valueOf(root, name + L"\\CurVer"), versioned);
    EXPECT_EQ(valueOf(root, versioned + L"\\CLSID"), ourClass);
}

void expectNothing(HKEY root, const std::wstring& key) {
    EXPECT_EQ(valueOf(root, key), L"(missing)") << narrow(key);
}

/// Starts from a machine without any registration, and ends with the one that the other tests need.
class Registration : public testing::Test {
protected:
    Registration() { removeAll(); }
    ~Registration() override {
        removeAll();
        runServer(L"/RegServer");
    }

    static void removeAll() {
        runServer(L"/UnregServer");
        for (HKEY root : {HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER})
            RegDeleteTreeW(root, (std::wstring(classes) + L"Matlab.Application").c_str());
    }
};

TEST_F(Registration, registersInTheRequestedScope) {
    struct Case {
        const wchar_t* options;
        HKEY root;
        HKEY other;
    };
    for (const Case& scope : {Case{L"/RegServer", HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER},
                              Case{L"/regserver /peruser", HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE}}) {
        EXPECT_THAT(runServer(scope.options), HasSubstr(" and Matlab.Application"));
        expectName(scope.root, L"SolvaneOctave.Application", L"SolvaneOctave.Application.1");
        expectName(scope.root, L"Matlab.Application", L"Matlab.Application.Octave");
        const std::wstring key = std::wstring(L"CLSID\\") + ourClass;
        EXPECT_EQ(valueOf(scope.root, key + L"\\LocalServer32"),
                  L'"' + builtFile(L"OctaveAutomationServer.exe") + L'"');
        EXPECT_EQ(valueOf(scope.root, key + L"\\ProgID"), L"SolvaneOctave.Application.1");
        EXPECT_EQ(valueOf(scope.root, key + L"\\VersionIndependentProgID"), L"SolvaneOctave.Application");
        expectNothing(scope.other, key);
        expectNothing(scope.other, L"Matlab.Application");

        runServer(L"/UnregServer /PerUser");
        if (scope.root == HKEY_LOCAL_MACHINE)
            expectName(scope.root, L"Matlab.Application", L"Matlab.Application.Octave");
        runServer(scope.root == HKEY_LOCAL_MACHINE ? L"/UnregServer" : L"/UnregServer /PerUser");
        for (const wchar_t* name : {L"SolvaneOctave.Application", L"SolvaneOctave.Application.1",
                                    L"Matlab.Application", L"Matlab.Application.Octave"})
            expectNothing(scope.root, name);
        expectNothing(scope.root, key);
    }
}

TEST_F(Registration, leavesAnotherMatlabAlone) {
    const std::wstring name = std::wstring(classes) + L"Matlab.Application";
    for (HKEY root : {HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER})
        for (const bool isLater : {false, true}) {
            if (isLater)
                runServer(root == HKEY_LOCAL_MACHINE ? L"/RegServer" : L"/RegServer /PerUser");
            writeRegistryString(root, name + L"\\CLSID", L"", matlabsClass);
            writeRegistryString(root, name + L"\\CurVer", L"", L"Matlab.Application.9.13");
            for (const wchar_t* options : {L"/RegServer", L"/RegServer /PerUser"})
                EXPECT_THAT(runServer(options), Not(HasSubstr(" and Matlab.Application")));
            EXPECT_EQ(valueOf(root, L"SolvaneOctave.Application\\CLSID"), ourClass);
            runServer(L"/UnregServer");
            EXPECT_EQ(valueOf(root, L"Matlab.Application\\CLSID"), matlabsClass);
            EXPECT_EQ(valueOf(root, L"Matlab.Application\\CurVer"), L"Matlab.Application.9.13");
            expectNothing(root, L"Matlab.Application.Octave");
            expectNothing(root, L"SolvaneOctave.Application");
            removeAll();
        }
}

} // namespace

} // namespace solvane::engine
