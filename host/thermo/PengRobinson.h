/// The Peng-Robinson equation of state (D.-Y. Peng, D. B. Robinson, Ind. Eng. Chem. Fundam. 15 (1976) 59):
///   P = RT/(V - b) - a/(V^2 + 2 b V - b^2)
/// with van der Waals mixing and no binary interaction parameters, so that a mixes as the square of
/// sum x sqrt(a).
#pragma once

#include "CubicParameters.h"

#include <array>
#include <span>
#include <vector>

namespace solvane::host {

/// Which real root of the cubic to take. If there is only one, every choice takes it.
enum class Root {
    vapor,  ///< the largest
    liquid, ///< the smallest above b
    stable, ///< of these two the one of lower Gibbs energy
};

/// A number of each compound that is linear in the b and the sqrt(a) of that compound. The compounds' numbers
/// are all of this kind, because a mixture's parameters are sums over compounds.
struct CompoundNumbers {
    double constant = 0;
    double byCovolume = 0;
    double byRootA = 0;
};

/// The fugacity coefficients of a homogeneous phase, and its volume.
struct Fugacity {
    double volume = 0;              ///< m3/mol
    double covolume = 0;            ///< b, m3/mol
    double rootA = 0;               ///< sqrt(a)
    double rootASlope = 0;          ///< its derivative to temperature
    double attraction = 0;          ///< the integral of 1/(V^2 + 2 b V - b^2) from V on
    CompoundNumbers logCoefficient; ///< ln phi

    /// The volume of the equation's critical point separates vapour-like from liquid-like phases: if the
    /// cubic has three roots, it lies between the outer two.
    bool isVaporLike() const { return volume > criticalVolumeRatio * covolume; }

    static constexpr double criticalVolumeRatio = 3.9513730355914394; ///< critical volume over b
};

/// The least volume over b of a vapour beside a liquid: a common bound of vapour-like density.
inline constexpr double leastVaporVolumeRatio = 1.75;

/// Derivatives of ln phi at constant T and P with respect to mole numbers (for one mole in all), to ln T and
/// to ln P.
struct FugacityDerivatives {
    std::array<CompoundNumbers, 3> moles; ///< symmetric in (1, b, sqrt(a)) of the two compounds
    CompoundNumbers logTemperature;
    double logTemperatureByRootASlope = 0; ///< adds the derivative of the compound's sqrt(a)
    CompoundNumbers logPressure;
};

/// The weighted sum of two derivatives to moles.
std::array<CompoundNumbers, 3> sum(const std::array<CompoundNumbers, 3>& one, double oneWeight,
                                   const std::array<CompoundNumbers, 3>& other, double otherWeight);

/// The equation for a set of compounds at one temperature. Compositions are mole fractions that sum to 1;
/// zeros are allowed.
class PengRobinson {
public:
    /// The compounds must outlive the equation.
    PengRobinson(std::span<const Compound* const> compounds, double temperature);

    void setTemperature(double temperature);
    double temperature() const { return temperature_; }

    Fugacity fugacity(Root root, double pressure, std::span<const double> composition) const;
    FugacityDerivatives derivatives(const Fugacity& phase, double pressure) const;

    /// The number of compound i.
    double of(const CompoundNumbers& numbers, std::size_t i) const {
        return numbers.constant + numbers.byCovolume * compounds_[i].covolume +
               numbers.byRootA * compounds_[i].rootA;
    }
    /// The derivatives of all compounds' ln phi to the moles of compound i.
    CompoundNumbers byMoles(const FugacityDerivatives& derivatives, std::size_t i) const;
    double byLogTemperature(const FugacityDerivatives& derivatives, std::size_t i) const {
        return of(derivatives.logTemperature, i) +
               derivatives.logTemperatureByRootASlope * compounds_[i].rootASlope;
    }

private:
    struct Parameters {
        AttractionRoot attraction;
        double covolume;
        double rootA;
        double rootASlope; ///< derivative to temperature
    };
    double volume(const Fugacity& mixture, Root root, double pressure) const;

    double temperature_ = 0;
    std::vector<Parameters> compounds_;
};

/// Wilson's correlation (1968) of K = y/x at low pressure, the start of searches for equilibria.
class WilsonVolatility {
public:
    explicit WilsonVolatility(const Compound& compound);
    /// ln(K P), P in Pa.
    double logarithm(double temperature) const { return atInfinity_ - fall_ / temperature; }

private:
    double atInfinity_;
    double fall_;
};

} // namespace solvane::host
