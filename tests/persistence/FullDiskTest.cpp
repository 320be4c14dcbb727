// This program runs where no file can grow beyond 64 KiB.

#include "BareUnit.h"
#include "Folders.h"
#include "com/Module.h"
#include "com/Text.h"
#include "persistence/ModelFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace solvane {
namespace {

class FullDisk : public testing::Test {
protected:
    FullDisk() { unit->makeWorkingFolder(folder.path(), "unit", "1;"); }
    bool save() { return saveModelFile(*unit.get(), narrow(folder.path() + L"model.svm"), error); }

    ComModule module;
    TemporaryFolder folder;
    ComRef<BareUnit> unit = BareUnit::create();
    std::string error;
};

// The last bytes are critical: closing the file does not fail without them.
TEST_F(FullDisk, replacesAModelFileWholeOrNotAtAll) {
    std::mt19937 random;
    std::string noise(65536, ' ');
    std::generate(noise.begin(), noise.end(), [&] { return static_cast<char>(random()); });
    unit->additionalFiles = {"data.bin"};
    int failures = 0;
    for (std::size_t size = 64000; size <= noise.size(); size += 64) {
        SCOPED_TRACE(size);
        writeFile(folder.path() + L"unit\\data.bin", noise.substr(0, size));
        writeFile(folder.path() + L"model.svm", "former");
        if (save()) {
            EXPECT_TRUE(readFile(folder.path() + L"model.svm").ends_with("Solvane Unit Operation File"));
            continue;
        }
        ++failures;
        EXPECT_TRUE(error.ends_with("write error")) << error;
        EXPECT_EQ(readFile(folder.path() + L"model.svm"), "former");
        EXPECT_EQ(namesIn(folder.path()), (std::vector<std::wstring>{L"model.svm", L"unit"}));
    }
    EXPECT_GT(failures, 0);
    EXPECT_LT(failures, 25);
}

TEST_F(FullDisk, keepsFilesBesideTheModelUpToTheLongestPath) {
    const std::wstring name(MAX_PATH - 5 - folder.path().size(), L'm');
    for (const wchar_t* beside : {L".svm.part", L".sv~", L".sv_"}) {
        const std::wstring file = folder.path() + L"model" + beside;
        writeFile(file, "the user's");
        EXPECT_TRUE(save()) << error;
        EXPECT_EQ(readFile(file), "the user's");
    }
    EXPECT_TRUE(saveModelFile(*unit.get(), narrow(folder.path() + name + L".svm"), error)) << error;
    EXPECT_EQ(namesIn(folder.path()).size(), 6U);
}

TEST_F(FullDisk, leavesNoUnfinishedDescription) {
    unit->outputText.assign(70000, L'x');
    EXPECT_FALSE(save());
    EXPECT_EQ(error, "Failed to write temporary data file: write error");
    EXPECT_EQ(namesIn(folder.path() + L"unit\\"), (std::vector<std::wstring>{L"calc.m", L"runUnit.m"}));
}

} // namespace
} // namespace solvane
