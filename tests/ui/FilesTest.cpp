// The page of additional files: what each button does to the model and to the working folder.
#include "Container.h"
#include "UiTest.h"
#include "com/Handle.h"
#include "com/Text.h"
#include "ui/FileNames.h"

#include <gmock/gmock.h>

namespace solvane {
namespace {

using testing::ElementsAre;

TEST(FileNames, showWhatAFileIs) {
    using Names = std::vector<std::wstring>;
    const Names plain{L"x.m", L"dll", L"x.exe.m", L"x.batch", L"reg", L"calc2.m"};
    const Names executable{L"x.DLL", L"a.b.Exe", L"com.com", L"x.msi"};
    const Names script{L"x.Bat", L".wsf", L"x.reg"};
    const Names reserved{L"CALC.M",  L"rununit.m", L"initRun.m", L"Report.txt", L"_unitoperationmodel_.svm",
                         L"unit.XML"};
    const Names faulty{L"..\\x.m", L"calc.m.", L"con.m", L"\u65e5.m", L"\u0101.m"};
    for (const Names* names : {&plain, &executable, &script, &reserved, &faulty})
        for (const std::wstring& name : *names) {
            EXPECT_EQ(isExecutableLike(name), names == &executable) << narrow(name);
            EXPECT_EQ(isScriptLike(name), names == &script) << narrow(name);
            EXPECT_EQ(isReservedFileName(name), names == &reserved) << narrow(name);
            // Some of the reserved ones are faulty too: a model may not bring them either.
            EXPECT_TRUE(names == &reserved || (fileNameFault(name) != nullptr) == (names == &faulty))
                << narrow(name);
        }
}

class FilesPage : public UiTest {
public:
    FilesPage() {
        ModelBag model;
        model.script("1;").file("a.m", "text of a").file("b.dat", "text of b").file("tool.DLL", "MZ");
        EXPECT_EQ(load(model), S_OK);
    }

    HRESULT editFiles(const WindowDriver::Actions& actions) { return edit(L"Additional files", actions); }
    /// The model's names, as a new window shows them.
    std::vector<std::wstring> listed() {
        std::vector<std::wstring> result;
        editFiles([&](WindowDriver& user) {
            for (const auto& row : user.rows(IDC_FILES_LIST))
                result.push_back(row.front());
        });
        return result;
    }
    std::string contents(const std::wstring& name) { return readFile(workingFolder() + name); }

    /// A file of the user's own is chosen.
    void browse(WindowDriver& user, const std::wstring& name) {
        writeFile(temporary.path() + name, "own");
        user.press(L"&Browse");
        user.enterFile(L"Open model file:", temporary.path() + name);
    }
    void add(WindowDriver& user, const std::wstring& name) {
        enter(user, L"&New script", L"Add script file:", name);
    }
    void rename(WindowDriver& user, const std::wstring& name) {
        enter(user, L"&Rename", L"Rename file:", name);
    }
};

TEST_F(FilesPage, enablesButtonsBySelection) {
    const auto enabled = [](const WindowDriver& user) {
        std::wstring result;
        for (const wchar_t* label :
             {L"&Browse", L"&New script", L"&Open", L"&Rename", L"&Remove", L"Save &As..."})
            result += user.isEnabled(label) ? L'x' : L'-';
        return result;
    };
    EXPECT_EQ(editFiles([&](WindowDriver& user) {
                  EXPECT_EQ(enabled(user), L"xx----");
                  user.selectRow(IDC_FILES_LIST, 0);
                  EXPECT_EQ(enabled(user), L"xxxxxx");
                  user.selectRow(IDC_FILES_LIST, 2);
                  EXPECT_EQ(enabled(user), L"xx-xxx");
                  user.press(L"&Remove");
                  user.answer(L"Remove file:", IDCANCEL);
                  EXPECT_EQ(user.selectedRow(IDC_FILES_LIST), 2);
              }),
              S_FALSE);
}

TEST_F(FilesPage, rejectsInvalidNames) {
    struct Refusal {
        void (FilesPage::*enter)(WindowDriver& user, const std::wstring& name);
        const wchar_t* name;
        const wchar_t* title;
        const char* text;
    };
    const Refusal refusals[] = {
        {&FilesPage::browse, L"CALC.M", L"Add file:",
         "This file name is reserved, you cannot add a file with this name"},
        {&FilesPage::browse, L"A.m", L"Add file:",
         "A file with this name is already present. Please remove this file first"},
        {&FilesPage::add, L"A", L"New file:",
         "A file with name \"A.m\" is already present. Please remove this file first"},
        {&FilesPage::add, L"RUNUNIT", L"New file:",
         "File name \"RUNUNIT.m\" is reserved. Please choose a different name."},
        {&FilesPage::add, L"..\\out", L"New file:",
         "A model cannot hold a file named \"..\\out\": the name leads out of the working folder."},
        {&FilesPage::add, L"none\\x", L"New file:", "Failed to create file \"none\\x.m\"."},
        {&FilesPage::rename, L"calc.M", L"Rename:",
         "The specified file name is reserved. Please choose a different name."},
        {&FilesPage::rename, L"A.M", L"Rename:",
         "A file with that name already exists. Please remove that file first"},
        {&FilesPage::rename, L"nul", L"Rename:",
         "A model cannot hold a file named \"nul\": the name is reserved for a device."},
    };
    const HRESULT changed = editFiles([&](WindowDriver& user) {
        for (const Refusal& refusal : refusals) {
            user.selectRow(IDC_FILES_LIST, 1);
            (this->*refusal.enter)(user, refusal.name);
            EXPECT_EQ(narrow(user.answer(refusal.title)), refusal.text);
        }
        const FileHandle lock(CreateFileW((workingFolder() + L"locked.m").c_str(), GENERIC_WRITE, 0, nullptr,
                                          CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
        browse(user, L"locked.m");
        EXPECT_EQ(user.answer(L"Add file:"), L"Unable to copy file: Sharing violation.");
    });
    EXPECT_EQ(changed, S_FALSE);
    EXPECT_EQ(contents(L"a.m") + contents(L"b.dat"), "text of atext of b");
}

TEST_F(FilesPage, addsAndRenamesFiles) {
    for (const wchar_t* name : {L"new.m", L"own.dat", L"tools.m"})
        writeFile(workingFolder() + name, "in the way");
    const auto changes = [&](void (FilesPage::*change)(WindowDriver&, const std::wstring&),
                             const wchar_t* name, int selected) {
        const HRESULT changed = editFiles([&](WindowDriver& user) {
            user.selectRow(IDC_FILES_LIST, 1);
            (this->*change)(user, name);
            EXPECT_EQ(user.selectedRow(IDC_FILES_LIST), selected);
        });
        EXPECT_EQ(changed, S_OK) << name;
    };
    changes(&FilesPage::browse, L"own.dat", 3);
    changes(&FilesPage::add, L"tools", 4);
    changes(&FilesPage::add, L"a.b", 5);
    changes(&FilesPage::rename, L"new.m", 1);
    EXPECT_THAT(listed(), ElementsAre(L"a.m", L"new.m", L"tool.DLL", L"own.dat", L"tools.m", L"a.b"));
    EXPECT_EQ(contents(L"own.dat") + contents(L"tools.m") + contents(L"new.m"), "owntext of b");
    EXPECT_EQ(contents(L"b.dat"), "?");

    // Onto itself: what is in the way goes first.
    editFiles([&](WindowDriver& user) {
        user.selectRow(IDC_FILES_LIST, 0);
        rename(user, L"A.m");
        EXPECT_EQ(user.answer(L"Rename:"), L"Failed to rename file");
        EXPECT_EQ(user.rows(IDC_FILES_LIST)[0][0], L"a.m");
    });
    EXPECT_EQ(contents(L"a.m"), "?");
}

TEST_F(FilesPage, removesAndExportsFiles) {
    const std::wstring target = temporary.path() + L"exported.dat";
    EXPECT_EQ(editFiles([&](WindowDriver& user) {
                  user.selectRow(IDC_FILES_LIST, 1);
                  user.press(L"Save &As...");
                  user.enterFile(L"Export external file:", target);
                  EXPECT_EQ(readFile(target), "text of b");
                  user.press(L"Save &As...");
                  user.enterFile(L"Export external file:", temporary.path() + L"none\\exported.dat");
                  EXPECT_EQ(user.answer(L"Export file:"), L"Failed to copy file.");
              }),
              S_FALSE);
    EXPECT_EQ(editFiles([&](WindowDriver& user) {
                  user.selectRow(IDC_FILES_LIST, 1);
                  user.press(L"&Remove");
                  EXPECT_EQ(user.answer(L"Remove file:"),
                            L"Remove file \"b.dat\"? File will be deleted and there is no undo.");
                  EXPECT_EQ(user.selectedRow(IDC_FILES_LIST), -1);
                  EXPECT_EQ(user.focus(), user.control(IDC_FILES_LIST));
              }),
              S_OK);
    EXPECT_THAT(listed(), ElementsAre(L"a.m", L"tool.DLL"));
    EXPECT_EQ(contents(L"b.dat"), "text of b");
}

TEST_F(FilesPage, findsChangesOfAnExternalEditor) {
    EXPECT_EQ(editFiles([](WindowDriver&) {}), S_FALSE);
    EXPECT_EQ(editFiles([&](WindowDriver&) { writeFile(workingFolder() + L"b.dat", "Text of b"); }), S_OK);
    EXPECT_EQ(editFiles([](WindowDriver&) {}), S_FALSE);
}

TEST_F(FilesPage, keepsAFileNamedLikeABackupCopy) {
    ModelBag model;
    model.script("1;").file("x", "x").file("X.$$$", "neighbour").file("calc.m.$$$", "the script's");
    ASSERT_EQ(load(model), S_OK);
    EXPECT_EQ(editFiles([](WindowDriver&) {}), S_OK) << "there is nothing to compare with";
    EXPECT_EQ(contents(L"X.$$$"), "neighbour");
    EXPECT_EQ(contents(L"calc.m.$$$"), "the script's");
}

TEST_F(FilesPage, leavesNamesOutsideTheFolderAlone) {
    const std::wstring outside = workingFolder() + L"..\\outside.txt";
    const std::wstring model = temporary.path() + L"hostile.svm";
    writeFile(outside, "of the user");
    writeFile(model, zipOf({{"unit.xml", "<UnitOperation><file name=\"..\\outside.txt\"/></UnitOperation>"},
                            {"calc.m", "1;"}},
                           temporary.path()));
    editFiles([&](WindowDriver& user) {
        loadModel(user, model);
        user.answer(L"Failed to load:");
    });
    editFiles([](WindowDriver&) {}); // of what the failed load left
    EXPECT_EQ(readFile(outside + L".$$$"), "?");
    DeleteFileW(outside.c_str());
}

TEST_F(FilesPage, showsSystemScriptsWithoutRunningThem) {
    const std::wstring trace = temporary.path() + L"run";
    ModelBag model;
    model.script("1;").file("x.bat", "echo >\"" + narrow(trace) + '"');
    ASSERT_EQ(load(model), S_OK);
    editFiles([&](WindowDriver& user) {
        user.selectRow(IDC_FILES_LIST, 0);
        user.press(L"&Open");
        HWND notepad = nullptr;
        for (int turn = 0; turn < 100 && !notepad; ++turn, Sleep(100))
            notepad = FindWindowW(L"Notepad", L"x.bat - Notepad");
        ASSERT_TRUE(notepad);
        PostMessageW(notepad, WM_CLOSE, 0, 0);
    });
    EXPECT_EQ(readFile(trace), "?");
}

} // namespace
} // namespace solvane
