#pragma once

#include "Failure.h"
#include "StreamProperty.h"

#include <array>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace solvane::host {

/// What a value of a stream belongs to.
enum class Place { overall, vapor, liquid };

/// The phases that the property package can form, in the order in which materials list them.
inline constexpr std::array phasePlaces{Place::vapor, Place::liquid};

/// "Overall", "Vapor", "Liquid".
std::wstring_view placeLabel(Place place);

/// The place with that label, in any case of letters.
std::optional<Place> findPlace(std::wstring_view label);

/// Whether the stream has the phase, as far as is known.
enum class PhaseStatus { unknown, atEquilibrium, estimated };

/// One of the two conditions of a flash: the value of a property as it is set on the stream.
struct FlashSpecification {
    const StreamProperty* property;
    Place place; ///< a phase for phaseFraction, else overall
};

/// The state of one material stream, which both generations of materials show: what was set, what the last
/// flash found, and what was calculated since. Values are in SI units on a mole basis: K, Pa, mol/s, mole
/// fractions, J/mol. Values stay until they are replaced, cleared, or made untrue by another value.
class StreamState {
public:
    /// All phases present with an unknown status, and no values.
    explicit StreamState(std::shared_ptr<const PropertyPackage> package);

    const std::shared_ptr<const PropertyPackage>& package() const { return package_; }
    std::size_t compoundCount() const { return package_->compounds().size(); }

    /// Back to the state of a new stream.
    void clear();
    /// Drops all calculated values; what was set and what a flash found stays.
    void clearCalculated();

    /// Fails for a value that was neither set nor calculated. Flows of a phase follow from the stream's.
    bool get(Place place, const StreamProperty& property, std::vector<double>& values,
             Failure& failure) const;
    /// Fails for a wrong count of values. Setting the compounds' flows sets total flow and composition.
    bool set(Place place, const StreamProperty& property, std::span<const double> values, Failure& failure);

    /// Calculates a property for a phase at its composition, or overall for the present phases together, to
    /// be read with `get`.
    bool calculate(Place place, const StreamProperty& property, Failure& failure);

    bool isPresent(Place phase) const { return at(phase).present; }
    PhaseStatus status(Place phase) const { return at(phase).status; }
    /// Phases that are not listed lose their values.
    void setPresentPhases(std::span<const std::pair<Place, PhaseStatus>> phases);

    /// Whether the package can flash with the two conditions at all.
    static bool canFlash(const FlashSpecification& first, const FlashSpecification& second);
    /// Flashes the overall composition at two conditions that are set on the stream. A failure leaves the
    /// stream as it was.
    bool flash(const FlashSpecification& first, const FlashSpecification& second, Failure& failure);

private:
    using Values = std::map<const StreamProperty*, std::vector<double>>;

    struct Record {
        bool present = true;
        PhaseStatus status = PhaseStatus::unknown;
        Values values;     ///< set, or found by a flash
        Values calculated; ///< true of the temperature, pressure and composition only
    };

    Record& at(Place place) { return records_[static_cast<std::size_t>(place)]; }
    const Record& at(Place place) const { return records_[static_cast<std::size_t>(place)]; }
    const std::vector<double>* find(Place place, const StreamProperty& property) const;
    bool setFlows(std::span<const double> flows, Failure& failure);
    bool calculatePhase(Place phase, const StreamProperty& property, std::vector<double>& values,
                        Failure& failure) const;
    bool calculateOverall(const StreamProperty& property, std::vector<double>& values,
                          Failure& failure) const;
    bool readCondition(const FlashSpecification& specification, FlashCondition& condition,
                       Failure& failure) const;
    void store(const Equilibrium& equilibrium, std::span<const FlashSpecification> specifications);

    std::shared_ptr<const PropertyPackage> package_;
    std::array<Record, 3> records_; ///< by Place
};

} // namespace solvane::host
