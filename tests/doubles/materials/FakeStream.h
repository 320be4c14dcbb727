#pragma once

#include "com/Variant.h"

#include <map>
#include <string>
#include <vector>

namespace solvane {

/// A phase that a double of a material can form.
struct FakePhase {
    std::wstring label;
    std::wstring aggregation;
    double fraction = 0; ///< mole basis
    std::vector<double> composition;
    std::map<std::wstring, double> properties; ///< scalars on a mole basis, readable once calculated
    bool isPresent = true;
};

/// The state of a double of a material: just numbers, with no thermodynamics behind them.
struct FakeStream {
    std::vector<std::wstring> compounds;
    std::vector<FakePhase> phases;
    std::map<std::wstring, std::vector<double>> overall; ///< by name; the flow of compounds is worked out
    std::map<std::wstring, Variant> constants;           ///< of the compounds, by name
    std::map<std::wstring, std::vector<double>> results; ///< by name; of any phases, readable once calculated
    bool listsOverall = true;                            ///< a 1.0 material names "Overall" among its phases

    FakePhase* findPhase(const std::wstring& label);
};

/// A stream of `compounds` compounds "C1", "C2" ... at 300 K, 101325 Pa and 10 mol/s in a vapor, a quarter,
/// and a liquid phase, with a third phase that is not present. Compound i, from 1, has the mole fraction
/// 2 i / (n (n + 1)) in the vapor and in the whole stream, and the reverse in the liquid. "enthalpy" is
/// -100 in the vapor and -1000 in the liquid.
FakeStream makeFakeStream(std::size_t compounds = 3);

} // namespace solvane
