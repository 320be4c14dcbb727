/// A property of one phase of the sample host's materials, as a script asks for it through the channel, and
/// by the same calls on a material of the asking process.
#pragma once

#include "materials/Material.h"

#include <functional>
#include <string>

namespace solvane {

/// A material with all compounds that the host knows, and no values.
ComRef<IDispatch> createHostMaterial(host::Generation generation);

// The property is that of a vapour of equal shares at 350 K and 1e5 Pa.

/// The request of getSinglePhaseProperty, for a feed of createHostMaterial.
std::string phaseRequest(const std::string& property);

/// Each call of the function sets the state of one new material, calculates and gets; false for a failure.
std::function<bool()> askMaterial10(const std::string& property);
std::function<bool()> askMaterial11(const std::string& property);

} // namespace solvane
