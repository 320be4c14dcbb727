/// The state of one run of a unit's script. It lives on the driver's frame and ends with the run.
#pragma once

#include "CapeOpen.h"
#include "OneElementArrays.h"
#include "com/ComRef.h"
#include "com/Text.h"
#include "com/VariantArray.h"

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace solvane {

class Unit;

struct CalculationRun {
    explicit CalculationRun(Unit& owner) : unit(owner) {}

    Unit& unit;

    // The calculation material: the unit's private copy of the first connected port's material. At most one
    // generation is set, and none if no port is connected.
    ComRef<ICapeThermoMaterialObject> material10;
    ComRef<ICapeThermoMaterial> material11;
    // Interfaces of the 1.1 calculation material; the two routines are queried on first use.
    ComRef<ICapeThermoCompounds> compounds;
    ComRef<ICapeThermoPhases> phases;
    ComRef<ICapeThermoPropertyRoutine> propertyRoutine;
    ComRef<ICapeThermoEquilibriumRoutine> equilibriumRoutine;

    /// Makes a 1.0 material the calculation material for the rest of the run.
    void replaceMaterial(ComRef<ICapeThermoMaterialObject> material) {
        material10 = std::move(material);
        material11.reset();
        propertyRoutine.reset();
        equilibriumRoutine.reset();
    }

    // The lists that initRun.m passes to the script.
    VariantArray compoundIds; ///< strings; VT_EMPTY if there are none
    std::size_t nComp = 0;
    std::vector<std::string> phaseNames;        ///< ANSI, in the material's order; none for a 1.0 material
    std::vector<std::wstring> phaseLabels;      ///< the same phases, as the host knows them
    std::vector<std::int32_t> aggregationCodes; ///< one per phase: 0 unknown, 1 vapor, 2 liquid, 3 solid

    /// Parameters by name: the place of the first with that name, when the run first asked for one.
    std::unordered_map<std::wstring, std::size_t, NoCaseHash, NoCaseEqual> parameterPlaces;

    /// What adds to the text of the last command's failure; empty if nothing does. ANSI.
    std::string hint;

    // For calls with a single value or a single name: created once, reused by each call.
    OneReal oneReal;
    OneText oneText;
};

} // namespace solvane
