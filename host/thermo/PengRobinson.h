/// The Peng-Robinson equation of state (D.-Y. Peng, D. B. Robinson, Ind. Eng. Chem. Fundam. 15 (1976) 59):
///   P = RT/(V - b) - a/(V^2 + 2 b V - b^2)
/// with van der Waals mixing and no binary interaction parameters, so that a mixes as the square of
/// sum x sqrt(a).
#pragma once

#include "Compound.h"

#include <span>
#include <vector>

namespace solvane::host {

/// Which real root of the cubic to take. If there is only one, every choice takes it.
enum class Root {
    vapor,  ///< the largest
    liquid, ///< the smallest above b
    stable, ///< of these two the one of lower Gibbs energy
};

/// The fugacity coefficients of a homogeneous phase, and its volume.
struct Fugacity {
    double volume = 0;                  ///< m3/mol
    double covolume = 0;                ///< b, m3/mol
    std::vector<double> logCoefficient; ///< ln phi, one for each compound

    /// The volume of the equation's critical point separates vapour-like from liquid-like phases: if the
    /// cubic has three roots, it lies between the outer two.
    bool isVaporLike() const { return volume > criticalVolumeRatio * covolume; }

    static constexpr double criticalVolumeRatio = 3.9513730355914394; ///< critical volume over b
};

/// Derivatives of ln phi at constant T and P with respect to mole numbers (for one mole in all, rows of
/// compounds, symmetric), to ln T and to ln P.
struct FugacityDerivatives {
    std::vector<double> moles;
    std::vector<double> logTemperature;
    std::vector<double> logPressure;
};

/// The equation for a set of compounds at one temperature. Compositions are mole fractions that sum to 1;
/// zeros are allowed.
class PengRobinson {
public:
    PengRobinson(std::span<const Compound* const> compounds, double temperature);

    double temperature() const { return temperature_; }
    std::size_t count() const { return covolume_.size(); }

    /// `derivatives` may be null.
    Fugacity fugacity(Root root, double pressure, std::span<const double> composition,
                      FugacityDerivatives* derivatives = nullptr) const;

private:
    struct Mixture {
        double rootA;      ///< sqrt(a)
        double rootASlope; ///< its derivative to temperature
        double b;
    };
    Mixture mix(std::span<const double> composition) const;
    double volume(const Mixture& mixture, Root root, double pressure) const;
    struct State;
    struct SecondDerivatives;
    FugacityDerivatives differentiate(const State& state, double pressure) const;

    double temperature_;
    std::vector<double> rootA_;
    std::vector<double> rootASlope_;
    std::vector<double> covolume_;
};

/// ln(K P), P in Pa, of a compound by Wilson's correlation (1968) of K = y/x at low pressure, the start of
/// searches for equilibria.
double wilsonLogVolatility(const Compound& compound, double temperature);

} // namespace solvane::host
