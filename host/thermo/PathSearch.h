/// The search for a state that has a property of the whole mixture, along a path of equilibria.
#pragma once

#include "MolarProperties.h"
#include "PhaseSplit.h"

#include <functional>
#include <limits>
#include <optional>
#include <string>

namespace solvane::host {

/// A property of the whole mixture (that of its phases by their fractions) and the value sought.
struct GivenProperty {
    double MolarProperties::* property;
    double value;
};

/// The state at a place; nothing where the path has none.
using Path = std::function<std::optional<Equilibrium>(double place)>;

/// Follows a path upwards from place to place until the difference of the property from its value changes
/// sign, even if only between two places: where the last three show that it turns back, the search looks at
/// its extremum too.
class PathSearch {
public:
    /// Mixture and path outlive the search.
    PathSearch(const Mixture& mixture, const Path& path, const GivenProperty& given)
        : mixture_(mixture), path_(path), given_(given) {}

    /// False if no state has the value; `error` then says why, without the property's name.
    [[nodiscard]] bool find(const std::vector<double>& places, Equilibrium& result, std::string& error);

private:
    struct Sample {
        Equilibrium state;
        double place;
        double difference; ///< property less the value
    };

    std::optional<Sample> sampleAt(double place) const;
    bool reaches(Sample next, Equilibrium& result);
    void note(const Sample& sample);
    static bool changesSign(const Sample& one, const Sample& other);
    double tolerance() const;
    bool liesBetween(Sample low, Sample high, Equilibrium& result);
    bool narrow(Sample& low, Sample& high) const;
    bool take(const Sample& low, const Sample& high, Equilibrium& result) const;
    bool liesAtExtremum(const Sample& next, Equilibrium& result);
    bool goToTheEnd(double beyond, Equilibrium& result);
    bool isWorthGoing(double distance) const;

    static double interpolatedPart(const Sample& newest, const Sample& opposite, const Sample& third);

    const Mixture& mixture_;
    const Path& path_;
    GivenProperty given_;
    std::optional<Sample> former_; ///< before the last
    std::optional<Sample> last_;
    double least_ = std::numeric_limits<double>::infinity();
    double greatest_ = -std::numeric_limits<double>::infinity();
    bool jumps_ = false;
};

} // namespace solvane::host
