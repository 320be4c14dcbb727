#include "PhaseSplit.h"

namespace solvane::host {

PhaseSplitter::PhaseSplitter(const Mixture& mixture)
    : mixture_(mixture),
      equation_(mixture.compounds, referenceTemperature),
      trial_(mixture, equation_, minimizer_),
      search_(mixture, equation_, minimizer_),
      logFugacity_(mixture.count()) {}

std::vector<PhaseState> PhaseSplitter::split(double temperature, double pressure) {
    equation_.setTemperature(temperature);
    const Fugacity feed = equation_.fugacity(Root::stable, pressure, mixture_.composition);
    const bool vaporLike = feed.isVaporLike();
    const auto onePhase = [&] {
        std::vector<PhaseState> result;
        result.push_back({vaporLike ? Phase::vapor : Phase::liquid, 1, mixture_.composition});
        return result;
    };
    if (mixture_.count() == 1)
        return onePhase();

    for (std::size_t i = 0; i < mixture_.count(); ++i)
        logFugacity_[i] = mixture_.logComposition[i] + equation_.of(feed.logCoefficient, i);
    const Root ownRoot = vaporLike ? Root::vapor : Root::liquid;
    // The trial on the other side than the mixture's own comes first: it finds a vapour beside a liquid.
    for (const Root root : {vaporLike ? Root::liquid : Root::vapor, ownRoot}) {
        if (!trial_.isBelowPlane(root, pressure, logFugacity_))
            continue;
        // The rest starts as the mixture on its own root and stays there, or it may turn to a second liquid.
        const Root restRoot = root == ownRoot ? Root::stable : ownRoot;
        if (auto phases = search_.run({root, restRoot, pressure, logFugacity_}, trial_.ratios()))
            return *std::move(phases);
    }
    return onePhase();
}

} // namespace solvane::host
