// One unit on the real engine through very many runs, each with a hundred commands of the real gateway.

#include "Drum.h"
#include "Folders.h"
#include "ProcessGrowth.h"
#include "Processes.h"
#include "Progress.h"
#include "Segments.h"

#include <cstdio>
#include <map>
#include <set>

namespace solvane::soak {

namespace {

// A hundred commands with those of the drum. A wrong answer is an error, which fails the run.
constexpr char hundredCommands[] = R"(
assert(getParameter('pressure'), 2e6);
for k = 1:21
  assert([getFeedCount() getProductCount()], [1 2]);
  setParameter('duty', k/3);
  assert(getParameter('duty'), k/3);
end
weight = getCompoundConstant('molecularWeight');
assert(numel(weight), nComp);
try, getParameter('nonsense'); error('no such'); catch failure, assert(failure.message, 'Invalid parameter name: nonsense'); end
)";
constexpr int commandsOfARun = 100;
constexpr int temperatures = 20;

} // namespace

void soakRuns(const Effort& effort, const Figures& figures) {
    const int runs = effort.of(400, 10000);
    const int warm = std::max(temperatures, runs / 10);
    const std::wstring mark = L"runs-" + std::to_wstring(GetCurrentProcessId());
    markDescendants(mark);
    const TemporaryFolder temporary;
    const UnitModule module;
    Drum drum(module, 0, hundredCommands);
    const auto servers = engineServersOf(GetCurrentProcessId());
    const auto octaves = octavesWith(mark);
    if (!drum.startError().empty() || servers.size() != 1 || octaves.size() != 1) {
        std::printf("  no unit, or %zu servers and %zu Octaves: %s\n", servers.size(), octaves.size(),
                    drum.startError().c_str());
        return;
    }

    int wrong = 0;
    std::map<double, std::string> answers;
    Progress progress("runs of " + std::to_string(commandsOfARun) + " commands", runs);
    const auto calculate = [&](int run) {
        const double temperature = 230 + 3 * (run % temperatures);
        std::string error;
        const bool isDone = drum.calculate(temperature, error);
        const std::string products = drum.products();
        if (!isDone || products != answers.try_emplace(temperature, products).first->second) {
            ++wrong;
            std::printf("  run %d: %s\n", run, isDone ? "other products" : error.c_str());
        }
        progress.at(run + 1);
    };
    for (int run = 0; run < warm; ++run)
        calculate(run);
    const Growth ownGrowth("host", GetCurrentProcessId());
    const Growth serverGrowth("engine", servers.front());
    const double octaveMemory = memoryOf(octaves.front());
    const std::size_t files = namesIn(temporary.path()).size();
    for (int run = warm; run < runs; ++run)
        calculate(run);

    std::set<std::string> differing;
    for (const auto& [temperature, answer] : answers)
        differing.insert(answer);
    figures.put("runs on the real engine", runs);
    figures.put("commands of the real gateway", double(runs) * commandsOfARun);
    figures.put("failed runs and wrong answers", wrong);
    figures.put("different products at 20 temperatures", double(differing.size()));
    ownGrowth.put(figures);
    serverGrowth.put(figures);
    if (octaveMemory > 0) // could be read
        figures.put("Octave: memory gained a run",
                    (memoryOf(octaves.front()) - octaveMemory) / 1024 / std::max(1, runs - warm));
    figures.put("temporary files gained", double(namesIn(temporary.path()).size()) - double(files));
}

} // namespace solvane::soak
