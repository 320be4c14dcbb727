#include "Jumps.h"

#include "Noise.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace solvane::host {

namespace {

/// Smaller ones do not count, in parts of an output's scale.
constexpr double leastJump = 5e-5;
/// By these halvings of a bracket the change over it shrinks to a sixteenth in a smooth model, to a quarter
/// where a root begins, and not at all on a jump.
constexpr int firstHalvings = 7, lastHalvings = 4;
constexpr double leastRest = 0.5;
/// The change of an output that a small change of the input leaves alone, in parts of its scale.
constexpr double flat = 1e-10;

struct Point {
    double part = 0; ///< by which the input is changed
    Trial trial;
};

/// What a smooth model makes of an output: a parabola through the unchanged input and its neighbours.
struct Smooth {
    std::size_t output;
    double scale;
    double slope;
    double bend;

    double at(double part) const { return part * (slope + part * bend); }
    bool isFlat() const { return std::abs(slope) + std::abs(bend) * farChange < flat * scale / farChange; }

    /// The change between two points that it does not explain, in parts of the scale.
    double unexplained(const Point& from, const Point& to) const {
        const double change = to.trial.outputs.at(output).value - from.trial.outputs.at(output).value;
        const double size = (change - (at(to.part) - at(from.part))) / scale;
        return std::isfinite(size) ? size : 0;
    }
};

Smooth throughNeighbours(std::size_t output, const Trial& unchanged, const Trial& up, const Trial& down,
                         const Trial& wide) {
    const auto valueIn = [&](const Trial& trial) { return trial.outputs.at(output).value; };
    const double base = valueIn(unchanged);
    return {output, std::max(unchanged.outputs[output].scale, wide.outputs.at(output).scale),
            (valueIn(up) - valueIn(down)) / (2 * farChange),
            (valueIn(up) + valueIn(down) - 2 * base) / (2 * farChange * farChange)};
}

/// Whether a stream boils or condenses at once, as a pure compound does.
bool changesPhase(const Trial& from, const Trial& to) {
    for (std::size_t i = 0; i < from.results.streams.size(); ++i)
        if (std::abs(from.results.streams[i].vaporFraction - to.results.streams.at(i).vaporFraction) > 0.5)
            return true;
    return false;
}

/// Halves the bracket again and again, to where most of the output's change is.
std::optional<Jump> searchBracket(const Smooth& smooth, Point from, Point to,
                                  const std::function<Trial(double)>& runAt) {
    double size = 0, sizeBefore = 0;
    for (int i = 0; i < firstHalvings + lastHalvings; ++i) {
        Point middle{(from.part + to.part) / 2, {}};
        middle.trial = runAt(middle.part);
        if (!middle.trial.succeeded)
            return std::nullopt;
        const double first = smooth.unexplained(from, middle), second = smooth.unexplained(middle, to);
        const bool isInFirst = std::abs(first) > std::abs(second);
        (isInFirst ? to : from) = std::move(middle);
        size = std::abs(isInFirst ? first : second);
        // The halves of a smooth bracket differ by little soon.
        if ((smooth.isFlat() ? size : std::abs(first - second)) < leastJump)
            return std::nullopt;
        if (i + 1 == firstHalvings)
            sizeBefore = size;
    }
    if (size < leastRest * sizeBefore || changesPhase(from.trial, to.trial))
        return std::nullopt;
    return Jump{from.trial.outputs.at(smooth.output).name, size, to.part};
}

/// How much speaks for a jump of the output between the unchanged input and a wide change of it, in parts of
/// the scale: what half of that change does beyond the curve that goes through both wide changes, too.
double suspicion(const Smooth& smooth, const Point& base, const Point& half, const Point& wide,
                 const Point& opposite) {
    const double here = smooth.unexplained(base, wide), there = smooth.unexplained(base, opposite);
    if (smooth.isFlat())
        return std::abs(here);
    const double cubic = (here - there) / 2, quartic = (here + there) / 2;
    return std::abs(smooth.unexplained(base, half) - (cubic / 8 + quartic / 16));
}

} // namespace

std::optional<Jump> findJump(const Trial& unchanged, const Trial& up, const Trial& down,
                             const std::function<Trial(double)>& runAt) {
    const Point base{0, unchanged};
    const Point above{wideChange, runAt(wideChange)}, below{-wideChange, runAt(-wideChange)};
    if (!above.trial.succeeded || !below.trial.succeeded)
        return std::nullopt;
    for (const auto& [wide, opposite] : {std::pair(&above, &below), std::pair(&below, &above)}) {
        const Point half{wide->part / 2, runAt(wide->part / 2)};
        if (!half.trial.succeeded)
            continue;
        // First of all an output that small changes leave alone.
        std::optional<Smooth> suspect;
        std::pair<bool, double> rank{false, 0};
        for (std::size_t i = 0; i < unchanged.outputs.size(); ++i) {
            const Smooth smooth = throughNeighbours(i, unchanged, up, down, wide->trial);
            const double size = suspicion(smooth, base, half, *wide, *opposite);
            if (size >= leastJump && std::pair(smooth.isFlat(), size) > rank) {
                rank = {smooth.isFlat(), size};
                suspect = smooth;
            }
        }
        if (!suspect)
            continue;
        if (auto jump = searchBracket(*suspect, base, *wide, runAt))
            return jump;
    }
    return std::nullopt;
}

} // namespace solvane::host
