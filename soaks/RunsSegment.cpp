#include "HostedUnit.h"
#include "Progress.h"
#include "Segments.h"
#include "com/Text.h"

#include <cstdio>

namespace solvane::soak {

void soakRuns(const Effort& effort, const Figures& figures) {
    const UnitModule module;
    const HostedUnit unit(module);
    ModelBag bag;
    bag.parameter(L"a", L"real", Variant(0.0)).script("setParameter('a', getParameter('a') + 1);\n");
    if (FAILED(unit.load(bag)))
        std::printf("  no unit on the real engine: %s\n", narrow(unit.validate()).c_str());
    const int count = effort.of(500, 10000);
    int wrong = 0;
    Progress progress("runs", count);
    for (int i = 1; i <= count; ++i) {
        if (FAILED(unit.calculate()) || unit.parameter(L"a").real() != i)
            ++wrong;
        progress.at(i);
    }
    figures.put("runs on the real engine", count);
    figures.put("failed runs and wrong answers", wrong);
}

} // namespace solvane::soak
