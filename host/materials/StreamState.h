#pragma once

#include "MaterialFailure.h"
#include "MaterialHabits.h"
#include "StreamProperty.h"

#include <array>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace solvane::host {

/// The owner of a stream's value: the stream, one of its phases, or two of them in this order.
enum class Place { overall, vapor, liquid, vaporLiquid, liquidVapor };

/// The phases that the property package can form.
inline constexpr std::array phasePlaces{Place::vapor, Place::liquid};

bool isPhase(Place place);

/// The place of two phases; empty if they are the same.
std::optional<Place> placeOfBoth(Place first, Place second);

/// "Overall", "Vapor", "Liquid", "VaporLiquid", "LiquidVapor".
std::wstring_view placeLabel(Place place);

/// The place with that label, in any case of letters.
std::optional<Place> findPlace(std::wstring_view label);

/// "enthalpy of phase Vapor", "temperature", for messages.
std::wstring describe(Place place, const StreamProperty& property);

/// Always false, with the failure that the value was neither set nor calculated.
bool notAvailable(Failure& failure, Place place, const StreamProperty& property);

/// What is known about the presence of a phase.
enum class PhaseStatus { unknown, atEquilibrium, estimated };

/// One of the two conditions of a flash: the value of a property as it is set on the stream.
struct FlashSpecification {
    const StreamProperty* property;
    Place place; ///< a phase for phaseFraction, otherwise overall
};

/// The state of one material stream, shared by both generations of materials: what was set, what the last
/// flash found, and what was calculated since. Values are in SI units on a mole basis: K, Pa, mol/s, mole
/// fractions, J/mol. They stay until they are replaced, cleared, or invalidated by another value.
class StreamState {
public:
    /// No values, and all phases present with an unknown status; under strict rules no phase.
    explicit StreamState(std::shared_ptr<const PropertyPackage> package,
                         std::shared_ptr<const MaterialHabits> habits = std::make_shared<MaterialHabits>());
    /// A new stream of the same flowsheet.
    std::shared_ptr<StreamState> another() const { return std::make_shared<StreamState>(package_, habits_); }

    const MaterialHabits& habits() const { return *habits_; }
    /// The phases in the order in which the materials list them.
    std::array<Place, 2> phases() const;

    const std::shared_ptr<const PropertyPackage>& package() const { return package_; }
    std::size_t compoundCount() const { return package_->compounds().size(); }

    /// Resets to the state of a new stream.
    void clear();
    /// Drops all calculated values; values that were set or that a flash found stay.
    void clearCalculated();

    /// Fails for a value that was neither set nor calculated. A phase without its own temperature, pressure
    /// or flows takes them from the stream.
    bool get(Place place, const StreamProperty& property, std::vector<double>& values,
             Failure& failure) const;
    /// Fails for a wrong count of values, for two phases, and for flows of a phase; under strict rules also
    /// for fractions that do not sum to 1. Setting the compounds' flows sets total flow and composition.
    bool set(Place place, const StreamProperty& property, std::span<const double> values, Failure& failure);

    /// Calculates a property, which `get` then reads: for a phase at its composition, for two phases, overall
    /// for the present phases together (amounts for one mole only), or overall for each pure compound.
    bool calculate(Place place, const StreamProperty& property, Failure& failure);

    bool isPresent(Place phase) const { return at(phase).present; }
    PhaseStatus status(Place phase) const { return at(phase).status; }
    /// Drops the values of phases that are not listed.
    void setPresentPhases(std::span<const std::pair<Place, PhaseStatus>> phases);

    /// Whether the package supports a flash with the two conditions.
    static bool canFlash(const FlashSpecification& first, const FlashSpecification& second);
    /// Flashes the overall composition at two conditions that are set on the stream, whose values stay
    /// exactly the same. A failure leaves the stream unchanged.
    bool flash(const FlashSpecification& first, const FlashSpecification& second, Failure& failure);

private:
    using Values = std::map<const StreamProperty*, std::vector<double>>;

    struct Record {
        bool present = true;
        PhaseStatus status = PhaseStatus::unknown;
        Values values;     ///< set, or found by a flash
        Values calculated; ///< valid for this temperature, pressure and composition only
    };

    Record& at(Place place) { return records_[static_cast<std::size_t>(place)]; }
    const Record& at(Place place) const { return records_[static_cast<std::size_t>(place)]; }
    const std::vector<double>* find(Place place, const StreamProperty& property) const;
    void clearSums();
    bool setFlows(std::span<const double> flows, Failure& failure);
    struct PhaseConditions {
        double temperature;
        double pressure;
        std::vector<double> composition;
    };
    bool readConditions(Place phase, PhaseConditions& conditions, Failure& failure) const;
    bool calculateAt(Place phase, const StreamProperty& property, std::monostate, std::vector<double>& values,
                     Failure& failure) const;
    bool calculateAt(Place phase, const StreamProperty& property, const PhaseRequest& request,
                     std::vector<double>& values, Failure& failure) const;
    bool calculateAt(Place both, const StreamProperty& property, const TwoPhaseRequest& request,
                     std::vector<double>& values, Failure& failure) const;
    bool calculateAt(Place overall, const StreamProperty& property, const PureRequest& request,
                     std::vector<double>& values, Failure& failure) const;
    bool calculateOverall(const StreamProperty& property, const PhaseRequest& request,
                          std::vector<double>& values, Failure& failure) const;
    bool readCondition(const FlashSpecification& specification, FlashCondition& condition,
                       Failure& failure) const;
    void store(const Equilibrium& equilibrium, std::span<const FlashSpecification> specifications);

    std::shared_ptr<const PropertyPackage> package_;
    std::shared_ptr<const MaterialHabits> habits_;
    std::array<Record, 5> records_; ///< by Place
};

} // namespace solvane::host
