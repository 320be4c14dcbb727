// The contents of the unit's folder for Matlab, byte for byte.

#include "FakeMaterial10.h"
#include "FakeMaterial11.h"
#include "RuntimeTest.h"
#include "com/Handle.h"

#include <algorithm>

namespace solvane {

namespace {

constexpr char header[] = "function unitCalc\r\n"
                          "global nComp nPhase compNames phaseNames phaseAggregationStates AGGSTATE_UNKNOWN "
                          "AGGSTATE_VAPOR AGGSTATE_LIQUID AGGSTATE_SOLID\r\n";

class WorkingFolder : public RuntimeTest {
protected:
    /// Calculates the unit and returns a file of its folder as the script sees it.
    std::string duringRun(const HostedUnit& unit, const std::wstring& file) {
        std::string bytes;
        matlab.onRun = [&](const std::wstring& folder) {
            bytes = readFile(folder + file);
            return MatlabAnswer();
        };
        unit.calculate();
        return bytes;
    }
};

TEST_F(WorkingFolder, startsWithTheRunScriptAndTheDefaultScript) {
    const HostedUnit unit = createUnit();
    EXPECT_EQ(namesIn(workingFolder()), (std::vector<std::wstring>{L"calc.m", L"runUnit.m"}));
    EXPECT_EQ(readFile(workingFolder() + L"calc.m"), "%Enter your Matlab calculations here\r\n\r\n\r\n");
    const std::string script = readFile(workingFolder() + L"runUnit.m");
    EXPECT_TRUE(script.starts_with("%Solvane Unit Operation Script\r\nclear functions\r\n"));
    EXPECT_TRUE(script.ends_with("CapeOpenUnitMex(2);%term run\r\ndisp('MATLAB done')\r\n"));
    EXPECT_EQ(std::ranges::count(script, '\r'), std::ranges::count(script, '\n'));
}

// The copy goes in blocks of 1024 bytes.
TEST_F(WorkingFolder, writesUnitCalcAsHeaderAndWholeScript) {
    for (const std::size_t size : {0, 1, 1023, 1024, 1025, 2048, 5000}) {
        std::string script;
        while (script.size() < size)
            script += "x = " + std::to_string(script.size()) + ";\r\n";
        script.resize(size, '%');
        if (script.ends_with('\r'))
            script.back() = '%';
        ModelBag bag;
        bag.script(script);
        EXPECT_EQ(duringRun(createUnit(bag), L"unitCalc.m"), header + script) << size << " bytes";
    }
}

TEST_F(WorkingFolder, rebuildsUnitCalcOnlyForANewScript) {
    ModelBag bag;
    const HostedUnit unit = createUnit(bag.script("first and longer"));
    for (const char* bytes : {"first", "behind the unit's back"}) {
        EXPECT_EQ(duringRun(unit, L"unitCalc.m"), header + std::string("first and longer"));
        writeFile(workingFolder() + L"calc.m", bytes);
    }
    ASSERT_EQ(unit.load(bag.script("second")), S_OK);
    EXPECT_EQ(duringRun(unit, L"unitCalc.m"), header + std::string("second"));
}

/// Puts a file of the folder on a full disk for its lifetime: links it to the device that the Linux system
/// below Wine has for that.
class FileOnFullDisk {
public:
    FileOnFullDisk(const std::wstring& folder, const std::wstring& name) : folder_(folder), name_(name) {
        runOnLinux(L"ln -sf /dev/full " + name_, folder_, name_, true);
    }
    ~FileOnFullDisk() {
        runOnLinux(L"rm " + name_, folder_, name_, false);
    } // Windows' functions do not delete the link
    FileOnFullDisk(const FileOnFullDisk&) = delete;
    FileOnFullDisk& operator=(const FileOnFullDisk&) = delete;

private:
    std::wstring folder_;
    std::wstring name_;
};

TEST_F(WorkingFolder, failsBeforeMatlabSeesIncompleteScripts) {
    const struct {
        std::function<std::shared_ptr<void>(const std::wstring& folder)> arrange;
        std::wstring text;
    } cases[] = {
        {[](const std::wstring& folder) {
             DeleteFileW((folder + L"calc.m").c_str());
             return nullptr;
         },
         L"Failed to open run script for reading: No such file or directory"},
        {[](const std::wstring& folder) {
             CreateDirectoryW((folder + L"unitCalc.m").c_str(), nullptr);
             return nullptr;
         },
         L"Failed to open run script for writing: Permission denied"},
        {[](const std::wstring& folder) { return std::make_shared<FileOnFullDisk>(folder, L"unitCalc.m"); },
         L"Failed to open run script for writing: No space left on device"},
        {[](const std::wstring& folder) { return std::make_shared<FileOnFullDisk>(folder, L"initRun.m"); },
         L"Failed to open initialization file for writing: No space left on device"},
    };
    for (const auto& row : cases) {
        const HostedUnit unit = createUnit();
        const std::shared_ptr<void> arranged = row.arrange(workingFolder());
        matlab.forgetCalls();
        for (int attempt = 0; attempt < 2; ++attempt) {
            EXPECT_EQ(unit.calculate(), capeFailure);
            EXPECT_EQ(unit.errorDescription(), row.text);
            EXPECT_EQ(unit.output(), L"Matlab output not available\r\n" + row.text);
        }
        EXPECT_EQ(matlab.calls(), std::vector<std::wstring>());
    }
}

TEST_F(WorkingFolder, isRestoredByALoadAfterADiskCleaner) {
    ModelBag bag;
    const HostedUnit unit = createUnit(bag.script("x"));
    const std::wstring name = workingFolder().substr(temporary.path().size(), 38);
    runOnLinux(L"rm -r " + name, temporary.path(), name, false); // Linux deletes open files
    EXPECT_EQ(unit.load(bag), S_OK) << narrow(unit.error());
    EXPECT_EQ(duringRun(unit, L"unitCalc.m"), header + std::string("x"));
    EXPECT_TRUE(readFile(workingFolder() + L"runUnit.m").starts_with("%Solvane"));
    EXPECT_EQ(unit.terminate(), S_OK);
    unit.load(bag); // creates none for a terminated unit
    EXPECT_EQ(namesIn(temporary.path()), std::vector<std::wstring>{L"SolvaneUnitMEXMatlab.Application.9.14"});
}

TEST_F(WorkingFolder, writesCompoundsAndPhasesToInitRun) {
    const auto expect = [&](const HostedUnit& unit, const std::string& echo, const std::string& lists) {
        const std::string script = duringRun(unit, L"initRun.m");
        const std::string id = unitIdOf(workingFolder());
        EXPECT_EQ(temporary.path() + widen(id) + L"\\", workingFolder());
        EXPECT_EQ(script, "setEchoOnValue=" + echo + ";\r\nunit_ID='" + id + "';\r\n" + lists);
    };
    ModelBag bag;
    bag.script("").feeds({L"Feed"}).products({});

    const HostedUnit alone = createUnit();
    expect(alone, "0",
           "nComp=0;\r\ncompNames={};\r\nnPhase=0;\r\nphaseNames={};\r\n"
           "phaseAggregationStates=[];\r\n");

    // The label determines the state, not the material's own list.
    FakeStream stream = makeFakeStream(2);
    stream.phases[0].label = L"VAPOR";
    stream.phases[2] = {L"Gas", L"Vapor", 0, {}, {}, false};
    stream.compounds[1] = L"it's \u00e9";
    const HostedUnit unit = createUnit(bag);
    ASSERT_EQ(unit.connect(L"Feed", FakeMaterial11::create(stream)->dispatch()), S_OK);
    expect(unit, "0",
           "nComp=2;\r\ncompNames={'C1' 'it's \xE9'};\r\nnPhase=3;\r\n"
           "phaseNames={'VAPOR' 'Liquid' 'Gas'};\r\nphaseAggregationStates=[1,2,0];\r\n");

    bag.values[L"info level"] = Variant(LONG{1});
    ASSERT_EQ(unit.load(bag), S_OK); // the next file is shorter
    ASSERT_EQ(unit.connect(L"Feed", FakeMaterial10::create(makeFakeStream(1))->dispatch()), S_OK);
    expect(unit, "1",
           "nComp=1;\r\ncompNames={'C1'};\r\nnPhase=0;\r\nphaseNames={};\r\n"
           "phaseAggregationStates=[];\r\n");
}

} // namespace

} // namespace solvane
