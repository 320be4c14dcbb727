/// A property of one phase of the sample host's materials, as a script asks for it through the channel, and
/// by the same calls on a material of the asking process.
#pragma once

#include "materials/Material.h"

#include <functional>
#include <string>

namespace solvane {

/// A material with all compounds that the host knows, in equal shares where it comes to that.
ComRef<IDispatch> createHostMaterial(host::Generation generation);

/// The request of getSinglePhaseProperty.
std::string phaseRequest(const std::string& property);

/// Asks a new material; false for a failure.
std::function<bool()> askMaterial10(const std::string& property);
std::function<bool()> askMaterial11(const std::string& property);

} // namespace solvane
