#pragma once

#include "UnitCalls.h"
#include "cases/CaseModel.h"
#include "materials/Material.h"
#include "results/RunResults.h"

namespace solvane::host {

/// A stream of the flowsheet: its state, and the material that shows it to the unit.
struct Stream {
    std::string name;
    std::shared_ptr<StreamState> state;
    ComRef<IDispatch> material;
};

/// Creates the streams of the case and of its units with one property package and the same habits, and
/// flashes the case's feeds and first guesses. False with a text that names the stream.
bool makeStreams(const Case& flowsheet, std::shared_ptr<const MaterialHabits> habits,
                 std::vector<Stream>& streams, std::string& error);

/// The unit's ports with the materials of their streams, feeds first.
std::vector<Connection> connectionsOf(const UnitCase& unit, const std::vector<Stream>& streams);

/// Reads the stream's state after its last flash; false with a text that names the stream if a value is
/// missing.
bool readStream(const Stream& stream, StreamResult& result, std::string& error);

} // namespace solvane::host
