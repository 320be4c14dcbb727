/// The two constraints of a flash, set on a material as hosts of either generation want them.
#pragma once

#include "CapeOpen.h"
#include "OneElementArrays.h"
#include "com/VariantArray.h"
#include "unit/model/CPort.h"

#include <span>
#include <string>

namespace solvane {

using FlashConstraint = ProductSpecification::Constraint;
using FlashConstraints = std::span<const FlashConstraint, 2>;

/// Whether both names may constrain a flash. The text begins with `caller`.
bool areFlashConstraints(FlashConstraints constraints, const std::string& caller, std::string& error);

/// Sets both constraints on a 1.0 material, whose composition is set, and flashes it.
bool flash10(ICapeThermoMaterialObject& material, FlashConstraints constraints, OneReal& oneReal,
             std::string& error);

/// The specification by which a 1.1 equilibrium routine knows one constraint: property, basis, phase.
using FlashSpecification = VariantArray;

/// Sets a constraint on the fraction of the vapor phase, which has this label.
bool setVaporFraction11(ICapeThermoMaterial& material, const std::wstring& label, double value,
                        OneReal& oneReal, FlashSpecification& specification, std::string& error);

/// Sets any other constraint. `failureTail` stands behind the property's name where the host refuses it.
bool setOverallConstraint11(ICapeThermoMaterial& material, const FlashConstraint& constraint,
                            const char* failureTail, OneReal& oneReal, FlashSpecification& specification,
                            std::string& error);

bool isVaporFraction(const FlashConstraint& constraint);

/// Offers these phases to the next flash of a 1.1 material, all with unknown status.
HRESULT offerPhases11(ICapeThermoMaterial& material, const VariantArray& labels, std::size_t count);

} // namespace solvane
