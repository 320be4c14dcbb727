#include "CompoundConstants.h"
#include "IdealGas.h"
#include "Saturation.h"
#include "Thermodynamics.h"

#include <cctype>
#include <cmath>
#include <map>
#include <variant>

namespace solvane::host {

namespace {

/// Atoms of each element in a formula.
std::map<char, int> atomsOf(std::string_view formula) {
    std::map<char, int> atoms;
    for (std::size_t i = 0; i < formula.size();) {
        const char element = formula[i++];
        int number = 0;
        while (i < formula.size() && std::isdigit(static_cast<unsigned char>(formula[i])))
            number = 10 * number + (formula[i++] - '0');
        atoms[element] += number ? number : 1;
    }
    return atoms;
}

} // namespace

TEST(Compounds, identifiersAndMassesFitTheFormulas) {
    const std::map<char, double> atomicWeights{{'C', 12.011}, {'H', 1.008}, {'N', 14.007}, {'O', 15.999}};
    for (const Compound& compound : allCompounds()) {
        double mass = 0;
        for (const auto& [element, number] : atomsOf(compound.formula))
            mass += number * atomicWeights.at(element);
        EXPECT_NEAR(compound.molecularWeight, mass, 5e-4) << compound.name;

        // The last digit of a CAS number is the sum of the others, each times its place from the right.
        int sum = 0;
        int place = 0;
        for (std::size_t i = compound.casNumber.size() - 2; i-- > 0;)
            if (compound.casNumber[i] != '-')
                sum += ++place * (compound.casNumber[i] - '0');
        EXPECT_EQ(sum % 10, compound.casNumber.back() - '0') << compound.name;
    }
}

// Measured values of the NIST Chemistry WebBook: ideal-gas Cp and enthalpy of formation at 298.15 K.
TEST(Compounds, matchMeasuredIdealGasHeatAndFormation) {
    struct Measured {
        const char* name;
        double heatCapacity;
        double formationEnthalpy;
    };
    constexpr Measured measured[] = {
        {"methane", 35.7, -74.6e3},
        {"ethane", 52.5, -84.0e3},
        {"propane", 73.6, -104.7e3},
        {"n-butane", 98.5, -125.6e3},
        {"n-pentane", 120.0, -146.8e3},
        {"nitrogen", 29.12, 0},
        {"water", 33.59, -241.83e3},
        {"carbon dioxide", 37.13, -393.5e3},
        {"benzene", 82.4, 82.9e3},
        {"toluene", 103.7, 50.1e3},
        {"carbon monoxide", 29.14, -110.53e3},
        {"hydrogen", 28.84, 0},
        {"oxygen", 29.38, 0},
    };
    ASSERT_EQ(std::size(measured), allCompounds().size());
    for (const Measured& row : measured) {
        const Compound& compound = *findCompound(row.name);
        EXPECT_NEAR(idealGasHeatCapacity(compound, 298.15), row.heatCapacity, 0.02 * row.heatCapacity)
            << row.name;
        EXPECT_NEAR(compound.formationEnthalpy, row.formationEnthalpy, 300) << row.name;
    }
}

// Three columns of the table that must agree: G = H - T (S - S of the elements, CODATA, brought from 1 bar to
// 1 atm where they are gases).
TEST(Compounds, formationPropertiesAreConsistent) {
    const std::map<char, double> elements{
        {'C', 5.74}, {'H', 130.57 / 2}, {'N', 191.50 / 2}, {'O', 205.04 / 2}};
    for (const Compound& compound : allCompounds()) {
        double entropy = compound.absoluteEntropy;
        for (const auto& [element, number] : atomsOf(compound.formula))
            entropy -= number * elements.at(element);
        EXPECT_NEAR(compound.formationGibbsEnergy, compound.formationEnthalpy - 298.15 * entropy, 60)
            << compound.name;
    }
}

// IAPWS-95 and the NIST Chemistry WebBook; parachor: O. R. Quayle, Chem. Rev. 53 (1953) 439.
TEST(Compounds, haveTheConstantsOfWater) {
    using Value = std::variant<std::string_view, double>;
    const std::map<std::string_view, Value> measured{
        {"casRegistryNumber", "7732-18-5"},
        {"chemicalFormula", "H2O"},
        {"iupacName", "water"},
        {"SMILESformula", "O"},
        {"acentricFactor", 0.3443},
        {"charge", 0.0},
        {"criticalCompressibilityFactor", 0.2294},
        {"criticalDensity", 17874.0},
        {"criticalPressure", 22.064e6},
        {"criticalTemperature", 647.096},
        {"criticalVolume", 55.95e-6},
        {"dipoleMoment", 6.187e-30},
        {"heatOfVaporizationAtNormalBoilingPoint", 40.65e3},
        {"idealGasEnthalpyOfFormationAt25C", -241.83e3},
        {"idealGasGibbsFreeEnergyOfFormationAt25C", -228.6e3},
        {"liquidDensityAt25C", 55345.0},
        {"liquidVolumeAt25C", 18.069e-6},
        {"molecularWeight", 18.0153},
        {"normalBoilingPoint", 373.12},
        {"normalFreezingPoint", 273.15},
        {"parachor", 9.35e-6},
        {"standardEntropyGas", 188.84},
        {"standardFormationEnthalpyGas", -241.83e3},
        {"standardFormationGibbsEnergyGas", -228.6e3},
    };
    const Compound& water = *findCompound("water");
    ASSERT_EQ(compoundConstants().size(), measured.size());
    for (const CompoundConstantRow& row : compoundConstants()) {
        ASSERT_TRUE(measured.contains(row.name)) << row.name;
        const Value& expected = measured.at(row.name);
        if (const auto* text = std::get_if<CompoundConstantRow::Text>(&row.value)) {
            EXPECT_EQ(Value((*text)(water)), expected) << row.name;
        } else {
            const double number = std::get<double>(expected);
            EXPECT_NEAR(std::get<CompoundConstantRow::Number>(row.value)(water), number,
                        0.04 * std::abs(number)) // the equation's heat of boiling is 3 % off
                << row.name;
        }
    }
}

TEST(Compounds, boilNearTheirBoilingPoints) {
    for (const Compound& compound : allCompounds()) {
        if (compound.name == "carbon dioxide")
            continue; // it sublimes
        EXPECT_NEAR(boilingTemperature(compound, 101325).value(), compound.normalBoilingPoint, 2.0)
            << compound.name;
    }
}

TEST(Compounds, idealGasHeatRisesSmoothlyBeyondTheFits) {
    for (const Compound& compound : allCompounds()) {
        for (double temperature : {50.0, 80.0, 149.9999, 150.0001, 700.0, 1499.999, 1500.001, 2900.0}) {
            const double step = 1e-4 * temperature;
            const double capacity = idealGasHeatCapacity(compound, temperature);
            const double low = temperature - step;
            const double high = temperature + step;
            EXPECT_GT(capacity, 0) << compound.name << " " << temperature;
            EXPECT_NEAR((idealGasEnthalpy(compound, high) - idealGasEnthalpy(compound, low)) / (2 * step),
                        capacity, 1e-4 * capacity)
                << compound.name << " " << temperature;
            EXPECT_NEAR((idealGasEntropy(compound, high) - idealGasEntropy(compound, low)) / (2 * step),
                        capacity / temperature, 1e-4 * capacity / temperature)
                << compound.name << " " << temperature;
        }
    }
}

} // namespace solvane::host
