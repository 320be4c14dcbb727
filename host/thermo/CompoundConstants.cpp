#include "CompoundConstants.h"

#include "IdealGas.h"
#include "PureProperties.h"

#include <array>
#include <cmath>

namespace solvane::host {

namespace {

using Row = CompoundConstantRow;

template <auto member>
constexpr auto is = [](const Compound& compound) { return compound.*member; };

constexpr double coulombMeterPerDebye = 3.33564e-30;

double criticalCompressibility(const Compound& c) {
    return c.criticalPressure * c.criticalVolume / (gasConstant * c.criticalTemperature);
}

/// Only for compounds that boil at atmospheric pressure and do not sublime.
double heatOfBoiling(const Compound& c) {
    const double freezing = c.normalFreezingPoint;
    return std::isnan(freezing) ? freezing : heatOfVaporization(c, boilingPoint(c, 101325.0).value).value;
}

/// (mN/m)^(1/4) cm3/mol in SI units.
double parachor(const Compound& c) {
    return c.parachor * 1e-6 * std::pow(1e-3, 0.25);
}

// clang-format off
constexpr std::array constantTable{
    Row{"casRegistryNumber",                         Row::Text(is<&Compound::casNumber>)},
    Row{"chemicalFormula",                           Row::Text(is<&Compound::formula>)},
    Row{"iupacName",                                 Row::Text(is<&Compound::iupacName>)},
    Row{"SMILESformula",                             Row::Text(is<&Compound::smiles>)},
    Row{"acentricFactor",                            Row::Number(is<&Compound::acentricFactor>)},
    Row{"charge",                                    Row::Number([](const Compound&) { return 0.0; })},
    Row{"criticalCompressibilityFactor",             Row::Number(criticalCompressibility)},
    Row{"criticalDensity",                           Row::Number([](const Compound& c) { return 1 / c.criticalVolume; })},
    Row{"criticalPressure",                          Row::Number(is<&Compound::criticalPressure>)},
    Row{"criticalTemperature",                       Row::Number(is<&Compound::criticalTemperature>)},
    Row{"criticalVolume",                            Row::Number(is<&Compound::criticalVolume>)},
    Row{"dipoleMoment",                              Row::Number([](const Compound& c) { return coulombMeterPerDebye * c.dipoleMoment; })},
    Row{"heatOfVaporizationAtNormalBoilingPoint",    Row::Number(heatOfBoiling)},
    Row{"idealGasEnthalpyOfFormationAt25C",          Row::Number(is<&Compound::formationEnthalpy>)},
    Row{"idealGasGibbsFreeEnergyOfFormationAt25C",   Row::Number(is<&Compound::formationGibbsEnergy>)},
    Row{"liquidDensityAt25C",                        Row::Number(is<&Compound::liquidDensity>)},
    Row{"liquidVolumeAt25C",                         Row::Number([](const Compound& c) { return 1 / c.liquidDensity; })},
    Row{"molecularWeight",                           Row::Number(is<&Compound::molecularWeight>)},
    Row{"normalBoilingPoint",                        Row::Number(is<&Compound::normalBoilingPoint>)},
    Row{"normalFreezingPoint",                       Row::Number(is<&Compound::normalFreezingPoint>)},
    Row{"parachor",                                  Row::Number(parachor)},
    Row{"standardEntropyGas",                        Row::Number(is<&Compound::absoluteEntropy>)},
    Row{"standardFormationEnthalpyGas",              Row::Number(is<&Compound::formationEnthalpy>)},
    Row{"standardFormationGibbsEnergyGas",           Row::Number(is<&Compound::formationGibbsEnergy>)},
};
// clang-format on

} // namespace

std::span<const CompoundConstantRow> compoundConstants() {
    return constantTable;
}

} // namespace solvane::host
