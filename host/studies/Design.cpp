#include "Design.h"

#include "results/CsvText.h"

#include <cmath>
#include <random>

namespace solvane::host {

namespace {

/// More would fill the memory, and take weeks.
constexpr std::size_t mostPoints = 10'000'000;

/// Random numbers that are the same on every machine: the engine's are prescribed, those of the library's
/// distributions are not.
class Dice {
public:
    explicit Dice(std::uint64_t seed) : engine_(seed) {}

    /// From 0 to below 1, in steps of 2^-53.
    double fraction() { return static_cast<double>(engine_() >> 11) * 0x1p-53; }

    void shuffle(std::vector<std::size_t>& places) {
        for (std::size_t i = places.size(); i > 1; --i)
            std::swap(places[i - 1], places[static_cast<std::size_t>(engine_() % i)]);
    }

private:
    std::mt19937_64 engine_;
};

bool readAxes(const std::vector<Variable>& variables, const DesignRequest& request, Design& design,
              std::vector<Levels>& levels, std::string& error) {
    for (const std::string& text : request.axes) {
        const std::size_t equals = text.find('=');
        if (equals == text.npos) {
            error = "\"" + text + "\" is not of the form VARIABLE=VALUES";
            return false;
        }
        Axis axis;
        if (!findVariable(variables, text.substr(0, equals), axis.variable, error) ||
            !readLevels(std::string_view(text).substr(equals + 1), axis, levels.emplace_back(), error))
            return false;
        design.axes.push_back(axis);
    }
    return true;
}

bool hasNoTwins(const std::vector<Axis>& axes, std::string& error) {
    for (std::size_t i = 0; i < axes.size(); ++i)
        for (std::size_t k = 0; k < i; ++k)
            if (axes[i].variable.name == axes[k].variable.name) {
                error = "the variable \"" + axes[i].variable.name + "\" is given twice";
                return false;
            }
    return true;
}

bool spreadRanges(const std::vector<Axis>& axes, std::vector<Levels>& levels, std::string& error) {
    for (std::size_t i = 0; i < axes.size(); ++i)
        if (levels[i].range && !spread(axes[i], *levels[i].range, levels[i].texts, error))
            return false;
    return true;
}

bool makeGrid(const std::vector<Levels>& levels, Design& design, std::string& error) {
    std::size_t count = 1;
    for (const Levels& one : levels) {
        count *= one.texts.size();
        if (count > mostPoints) {
            error = "the grid has more than " + std::to_string(mostPoints) + " points";
            return false;
        }
    }
    for (std::size_t i = 0; i < count; ++i) {
        Point point(levels.size());
        std::size_t rest = i;
        for (std::size_t axis = levels.size(); axis-- > 0; rest /= levels[axis].texts.size())
            point[axis] = levels[axis].texts[rest % levels[axis].texts.size()];
        design.points.push_back(std::move(point));
    }
    return true;
}

bool zip(const std::vector<Levels>& levels, Design& design, std::string& error) {
    design.points.assign(levels[0].texts.size(), {});
    for (std::size_t axis = 0; axis < levels.size(); ++axis) {
        if (levels[axis].texts.size() != design.points.size()) {
            error = "--zip needs as many values for each variable; \"" + design.axes[0].variable.name +
                    "\" has " + std::to_string(design.points.size()) + ", \"" +
                    design.axes[axis].variable.name + "\" has " + std::to_string(levels[axis].texts.size());
            return false;
        }
        for (std::size_t i = 0; i < design.points.size(); ++i)
            design.points[i].push_back(levels[axis].texts[i]);
    }
    return true;
}

bool sample(const std::vector<Levels>& levels, const DesignRequest& request, Design& design,
            std::string& error) {
    if (request.count > mostPoints) {
        error = "a study has at most " + std::to_string(mostPoints) + " points";
        return false;
    }
    design.points.assign(request.count, {});
    Dice dice(request.seed);
    for (std::size_t axis = 0; axis < levels.size(); ++axis) {
        const auto& range = levels[axis].range;
        if (!range || range->count != 0) {
            error = design.axes[axis].variable.name +
                    ": random points need a range FIRST:LAST without a count, such as \"2 bar:20 bar\"";
            return false;
        }
        std::vector<std::size_t> parts(request.count);
        for (std::size_t i = 0; i < parts.size(); ++i)
            parts[i] = i;
        if (request.arrangement == Arrangement::latin)
            dice.shuffle(parts);
        for (std::size_t i = 0; i < request.count; ++i) {
            const double fraction =
                request.arrangement == Arrangement::latin
                    ? (static_cast<double>(parts[i]) + dice.fraction()) / static_cast<double>(request.count)
                    : dice.fraction();
            double number = range->at(fraction);
            if (design.axes[axis].variable.values.kind == ParameterKind::integer)
                number = std::round(number);
            if (!numberText(design.axes[axis], number, design.points[i].emplace_back(), error))
                return false;
        }
    }
    return true;
}

} // namespace

bool makeDesign(const std::vector<Variable>& variables, const DesignRequest& request, Design& design,
                std::string& error) {
    std::vector<Levels> levels;
    if (!readAxes(variables, request, design, levels, error) || !hasNoTwins(design.axes, error))
        return false;
    switch (request.arrangement) {
    case Arrangement::grid:
        return spreadRanges(design.axes, levels, error) && makeGrid(levels, design, error);
    case Arrangement::zip:
        return spreadRanges(design.axes, levels, error) && zip(levels, design, error);
    case Arrangement::random:
    case Arrangement::latin:
        return sample(levels, request, design, error);
    }
    return false;
}

bool readDesign(const std::vector<Variable>& variables, const std::string& csv, Design& design,
                std::string& error) {
    const std::vector<std::vector<std::string>> lines = readCsv(csv);
    if (lines.size() < 2) {
        error = "expected a line of variables and a line for each point";
        return false;
    }
    for (const std::string& title : lines.front())
        if (!readTitle(variables, title, design.axes.emplace_back(), error))
            return false;
    for (std::size_t i = 1; i < lines.size(); ++i)
        if (lines[i].size() != design.axes.size()) {
            error = "line " + std::to_string(i + 1) + " has " + std::to_string(lines[i].size()) +
                    " values for " + std::to_string(design.axes.size()) + " variables";
            return false;
        }
    design.points.assign(lines.begin() + 1, lines.end());
    return hasNoTwins(design.axes, error);
}

} // namespace solvane::host
