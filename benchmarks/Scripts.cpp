#include "Scripts.h"

#include "Engine.h"
#include "Folders.h"
#include "HostedUnit.h"
#include "Verdict.h"
#include "com/Text.h"

#include <cstdio>

namespace solvane {

namespace {

struct Script {
    const char* name;
    std::size_t size; ///< bytes
    int turns;
};
constexpr Script scripts[] = {
    {"an empty script", 0, 80},
    {"a script of 1 kB", 1U << 10, 40},
    {"a script of 100 kB", 100U << 10, 20},
    {"a script of 10 MB", 10U << 20, 4},
};

std::string scriptOf(std::size_t size) {
    const std::string line = "x = 1; % a line of a long script, with a comment that says why it is here\n";
    std::string text;
    while (text.size() + line.size() <= size)
        text += line;
    return text;
}

bool compareScript(const Script& script) {
    const Engine engine;
    const TemporaryFolder temporary;
    const UnitModule module;
    const HostedUnit unit(module);
    ModelBag bag;
    bag.script(scriptOf(script.size));
    if (!engine || FAILED(unit.load(bag)) || FAILED(unit.calculate())) {
        std::printf("  no run on the real engine: %s\n",
                    narrow(unit.validate() + unit.errorDescription()).c_str());
        return false;
    }
    const std::wstring folder = workingFolderIn(temporary.path());
    addPaths(engine, folder);
    bool isDone = true;
    const auto calculate = [&] { return microseconds([&] { isDone &= SUCCEEDED(unit.calculate()); }); };
    const auto executeBare = [&] { return microseconds([&] { isDone &= runBare(engine, folder); }); };
    std::vector<double> calculations, commands;
    for (int turn = 0; turn <= script.turns && isDone; ++turn) {
        // The second finds the machine's caches warm, so they also take turns in who comes first.
        const bool calculatesFirst = turn % 2 == 0;
        double calculation = calculatesFirst ? calculate() : 0;
        const double bare = executeBare();
        if (!calculatesFirst)
            calculation = calculate();
        if (turn > 0) {
            calculations.push_back(calculation);
            commands.push_back(bare);
        }
    }
    if (!isDone) {
        std::printf("  a run failed: %s\n", narrow(unit.output()).c_str());
        return false;
    }
    return printAtMost(std::string("Calculate with ") + script.name + " / bare commands",
                       {calculations, commands}, 1.10);
}

} // namespace

bool compareScripts() {
    bool isMet = true;
    for (const Script& script : scripts)
        isMet &= compareScript(script);
    return isMet;
}

} // namespace solvane
