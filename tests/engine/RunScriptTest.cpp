#include "AutomationClient.h"

#include "com/Text.h"

#include <gmock/gmock.h>

namespace solvane::engine {

namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

constexpr char calculationHeader[] =
    "function unitCalc\r\nglobal nComp nPhase compNames phaseNames phaseAggregationStates AGGSTATE_UNKNOWN "
    "AGGSTATE_VAPOR AGGSTATE_LIQUID AGGSTATE_SOLID\r\n";

/// A unit's folder with the run script, as the unit fills it, and a gateway that only notes its calls.
class RunScript : public testing::Test {
protected:
    RunScript() {
        std::filesystem::copy_file("Z:" SOLVANE_RUN_SCRIPT, folder.path() + L"\\runUnit.m");
        folder.write(L"CapeOpenUnitMex.m",
                     "function CapeOpenUnitMex(varargin)\n"
                     "f = fopen('calls.txt', 'a'); fprintf(f, '%d ', varargin{1}); fclose(f);\n");
    }

    std::wstring run(std::string_view script, int echo = 0) {
        folder.write(L"unitCalc.m", calculationHeader + std::string(script));
        folder.write(L"initRun.m",
                     "setEchoOnValue=" + std::to_string(echo) +
                         ";\r\nunit_ID='{00000000-0000-0000-0000-000000000000}';\r\nnComp=2;\r\n"
                         "compNames={'A' 'B'};\r\nnPhase=2;\r\nphaseNames={'Vapor' 'Liquid'};\r\n"
                         "phaseAggregationStates=[1,2];\r\n");
        EXPECT_EQ(octave.execute(L"cd '" + folder.path() + L"\\'"), L"");
        return octave.execute(L"runUnit");
    }

    ScriptFolder folder;
    AutomationClient octave;
};

TEST_F(RunScript, echoesTheScriptAndNotWhatItCalls) {
    folder.write(L"helper.m", "function helper\ninside = 1;\n");
    const std::wstring echoed = run("answer = nComp + AGGSTATE_SOLID;\r\nhelper\r\nerror('stop')\r\n", 1);
    EXPECT_THAT(echoed, Not(HasSubstr(L"inside")));
    EXPECT_THAT(echoed, HasSubstr(L"answer = nComp + AGGSTATE_SOLID;"));
    EXPECT_THAT(echoed, HasSubstr(L"Evaluation error: stop\n"));
    EXPECT_THAT(echoed, EndsWith(L"MATLAB done\n"));
    EXPECT_EQ(folder.read(L"calls.txt"), "1 2 ");
}

TEST_F(RunScript, reportsErrorsBehindItsMarker) {
    EXPECT_EQ(run("error(\"first\\nsecond\")"),
              L"MATLAB output:\nEvaluation error: first\nsecond\nMATLAB done\n");
    const std::wstring unparsable = run("x = [1, 2\r\ny = (3\r\n");
    EXPECT_THAT(unparsable, StartsWith(L"MATLAB output:\nEvaluation error: parse error"));
    EXPECT_THAT(unparsable, HasSubstr(L"unitCalc.m"));
    EXPECT_THAT(unparsable, EndsWith(L"MATLAB done\n"));
}

TEST_F(RunScript, runsTheNewContentOfAFileThatChangedWithinASecond) {
    for (int k = 1; k <= 8; ++k) {
        folder.write(L"extra" + std::to_wstring(k) + L".m", "disp('new file')\n");
        folder.write(L"same.m", "function same\ndisp(" + std::to_string(10 * k) + ")\n");
        const std::string number = std::to_string(k);
        EXPECT_EQ(narrow(run("disp(" + number + ")\r\nsame\r\nextra" + number + "\r\n")),
                  "MATLAB output:\n" + number + "\n" + number + "0\nnew file\nMATLAB done\n");
    }
}

} // namespace

} // namespace solvane::engine
