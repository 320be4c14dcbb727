// What is read in a script without running it.

#include "script/FailureCause.h"
#include "script/ScriptMistakes.h"
#include "script/UnreadVariables.h"

#include <gtest/gtest.h>

namespace solvane::host {

namespace {

std::string linesOf(const std::vector<ScriptFinding>& findings) {
    std::string lines;
    for (const ScriptFinding& finding : findings)
        lines += finding.text + "; " + finding.remedy + "\n";
    return lines;
}

UnitModel modelOf(const std::string& script) {
    return {.parameters = {{.name = "power"}, {.name = "split"}, {.name = "T out", .isInput = false}},
            .script = {.name = "s.m", .bytes = script}};
}

std::string mistakesIn(const std::string& script) {
    return linesOf(scriptMistakes(modelOf(script)));
}

TEST(ScriptReading, findsWhatIsSurelyAMistake) {
    struct Row {
        const char* script;
        const char* found;
    };
    constexpr Row rows[] = {
        {"split = 0,7;", "s.m:1: the comma in 'split = 0,7' ends the statement; write 0.7\n"},
        {"if x > 1,5e3 * y\nend", "s.m:1: the comma in 'if x > 1,5e3' ends the statement; write 1.5e3\n"},
        {"for i = 1,10\nend", "s.m:1: the comma in 'for i = 1,10' ends the statement; write 1:10\n"},
        {"total = 0;\nfor i = 1:3\n  totel = total + i;\nend\ny = total;",
         "s.m:3: nothing reads 'totel', and 'total' keeps its first value; write 'total' for 'totel'\n"},
        {"y = f(1);\nfunction r = f(n)\nX = zeros(2, 1); x = X + n; r = sum(X);",
         "s.m:3: nothing reads 'x', and 'X' keeps its first value; write 'X' for 'x'\n"},
        {"setParameter('Power', 3);\ny = getParameter('split');",
         "s.m:1: the script sets the input 'Power', and never gets it; give the parameter the mode output\n"},
        {"If x > 0 Then\n  y = 1;\nElse\n  y = 2;\nEnd If",
         "s.m:1: Matlab does not know 'If'; write if, without Then\n"
         "s.m:3: Matlab does not know 'Else'; write else\n"
         "s.m:5: Matlab does not know 'End'; write end\n"},
        {"if a, x = 1; elif b, x = True; end", "s.m:1: Matlab does not know 'elif'; write elseif\n"
                                               "s.m:1: Matlab does not know 'True'; write true\n"},
        {"real x", "s.m:1: Matlab does not know 'real'; a variable needs no declaration: x = 0 makes it\n"},
        {"while (x .gt. 5)\nend", "s.m:1: Matlab does not know '.gt.'; write ==, ~=, >, >=, < or <=\n"},
        {"if (x > 0) {\nend",
         "s.m:1: Matlab does not know '{'; a block needs no bracket: it ends with end\n"},
        {"y = np.exp(x);", "s.m:1: Matlab does not know 'np'; write the function alone, as in exp(x)\n"},
        {"! sums all feeds", "s.m:1: Matlab does not know '!'; write % to begin a comment\n"},
        {"[t, y] = ode45(@(W, y) bed(W, y, n), [0 1], 1);\nfunction dy = bed(y, W, n)\ndy = W * y * n;",
         "s.m:1: the call passes 'W' and 'y' to bed, which takes 'y' and 'W' in their places; exchange them "
         "in s.m:2; solvers such as ode45 pass the variable of the integration first\n"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(mistakesIn(row.script), row.found);
}

TEST(ScriptReading, keepsSilentOnWhatMayBeMeant) {
    for (const char* script : {
             "x = [0,7; 1,5]; y = max(0,7), z = 3, a = 1.5,\nt = {0,7\n1,5};",
             "if x == 1, 5; end",
             "t = T - 273.15; p = P / 1e5; T0 = 298; t0 = T0 + 1;",
             "base = 3; case2 = base + 1; y = base;",
             "setParameter('power', getParameter('power') + 1); setParameter('T out', 3);",
             "setParameter('power', 3); y = getParameter(['po' 'wer']);",
             "End = 3; y = End; for None = 1:2, y = None; end, f = @(np) np.x;",
             "np = load('a.mat'); y = np.exp; real(x); if x, y = real (x); end % If x > 0 Then\ns = 'If';",
             "d = k(a, b) - k(b, a);\nfunction r = k(a, b)\nr = a - b;",
             "d = k(b, a);\nfunction r = k(a, b)\nif a < b, r = k(b, a); else, r = k2(b, a); end\nfunction r "
             "= k2(~, a)\nr = a;",
             "d = k();\nfunction r = k()\nr = 1;",
             "x.true.y = s.or.z; c = {\n'a' True1\n}; for f = {'a', ...\n 'b'}, end",
         })
        EXPECT_EQ(mistakesIn(script), "") << script;
}

TEST(ScriptReading, notesVariablesThatNothingReads) {
    const auto unread = [](const std::string& script) { return linesOf(unreadVariables(modelOf(script))); };
    constexpr char remedy[] = "; look for another name that is meant, or remove it\n";
    EXPECT_EQ(unread("P = 3;\np.x = P; q(P) = 2;\nr = 1\n[a, b] = f(1); t = 2; disp t\nfunction [y, z] = "
                     "f(x)\ny = x; z = 0; P = 1;"),
              std::string("s.m:2: nothing reads 'p'") + remedy + "s.m:2: nothing reads 'q'" + remedy +
                  "s.m:6: nothing reads 'P'" + remedy);
    EXPECT_EQ(unread("x = 3; y = 2; eval('disp(x)');\nfunction r = f\nglobal g\nr = 1; g = 2;"), "");
    UnitModel withScript = modelOf("x = 3;\nrest");
    withScript.files = {{.name = "rest.m", .bytes = "% goes on\nsetParameter('power', x);"}};
    EXPECT_EQ(linesOf(unreadVariables(withScript)), "");
}

TEST(ScriptReading, explainsFailures) {
    struct Row {
        const char* script;
        ScriptFailure failure;
        const char* cause;
    };
    const std::string undefined = "'n' undefined";
    const Row rows[] = {
        {"n = 1;\nclear n T\ny = n;",
         {undefined, "s.m", 3},
         "'clear n T' in s.m:2 has removed it; a run begins without variables but those of the unit: leave "
         "it out"},
        {"clear T\ny = n;\nn = 1;", {undefined, "s.m", 2}, ""},
        {"y = 1;\nclear", {"'nComp' undefined", "s.m", 1}, ""},
        {"T = fzero(@gap, 300);\nfunction y = gap(T, n)\ny = T - n;",
         {undefined, "s.m", 3},
         "fzero calls gap with 1 of its 2 arguments; write @(T) gap(T, n) in s.m:1"},
        {"y = gap(3);\nfunction y = gap(T, n)\ny = T - n;",
         {undefined, "s.m", 3},
         "it is an argument of gap, which a call leaves out"},
        {"[n, T] = size(3);\nfunction y = gap(T)\ny = T - n;",
         {undefined, "s.m", 3},
         "it is a variable of the script, which functions do not see: pass it as an argument"},
        {"y = gap(3);\nfunction y = gap(T)\ny = T - n;", {undefined, "s.m", 3}, ""},
        {"load('cat.mat')\nx = kin.k0;",
         {"invalid use of a function", "s.m", 2},
         "load without a result makes a variable of each name in the file; write kin = load('cat.mat') in "
         "s.m:1"},
        {"load cat.mat\nkin.k0 = 1;\nx = kin.k1;", {"invalid use of undefined value", "s.m", 3}, ""},
        {"x = 1;\nt = sprintf('%s', compNames(k + 1));",
         {"Calculate failed: sprintf: wrong type argument 'cell'; sprintf is called in line 2"},
         "compNames(k + 1) is a cell: write compNames{k + 1} in s.m:2"},
        {"k = phaseNames(1);\nn = {1} + 2;",
         {"binary operator '+' not implemented for 'cell' by", "s.m", 2},
         ""},
        {"setProduct(1, 0,75 * F, z);",
         {"setProduct: expected 3 arguments, got 5. Usage: setProduct(product, flow)", "s.m", 1},
         "0,75 is two arguments: write 0.75 in s.m:1"},
        {"setProduct(1, 0, 75, 1,5, z);", {"setProduct: expected 3 arguments, got 6", "s.m", 1}, ""},
        {"F = int32(3);\nz = z / F;",
         {"setProduct: X must be 4 doubles, got 4 by 1 values that are not doubles", "s.m", 3},
         "what is calculated with the result of int32 in s.m:1 is no double; write round for whole numbers"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(failureCause(modelOf(row.script), row.failure), row.cause) << row.script;
}

} // namespace

} // namespace solvane::host
