#include "OddVariants.h"
#include "Rig.h"

#include <gmock/gmock.h>

namespace solvane {

namespace {

using testing::ElementsAre;

constexpr std::uint32_t equilibrium = 16;
constexpr std::uint32_t property = 17;

/// The flash of a composition of three compounds.
Wire flash(std::uint32_t code, const std::string& name1, double value1, const std::string& name2,
           double value2) {
    return wireOf(code, Reals{0.5, 0.3, 0.2}, value1, value2, name1, name2);
}

Scenario flashing(Generation generation, const Wire& request) {
    // Without present phases, reading the result takes few calls.
    return asking(generation, request, makeFakeStream(), [](FakeStream& stream) {
        stream.overall[L"temperature"] = {300};
        stream.overall[L"pressure"] = {1e5};
        for (FakePhase& phase : stream.phases)
            phase.isPresent = false;
    });
}

const std::string composition = "Failed to set composition: ";
const std::string presentPhases = "Failed to get list of present phases from material: ";
const std::string getPressure = "Failed to get pressure from material: ";
const std::string getTemperature = "Failed to get temperature from material: ";

TEST(FlashEquilibrium, flashes10MaterialsByFlashType) {
    expectRoad({{"copy.SetProp(fraction, overall, empty, null, mole, R8[0.5, 0.3, 0.2])", composition},
                {"copy.SetProp(pressure, overall, empty, null, null, R8[200000])",
                 "Failed to set pressure on material: "},
                {"copy.SetProp(temperature, overall, empty, null, null, R8[350])",
                 "Failed to set temperature on material: "},
                {"copy.CalcEquilibrium(TP, empty)", ""},
                {"copy.PhaseIds", presentPhases},
                {"copy.GetProp(pressure, overall, empty, null, null)", getPressure},
                {"copy.GetProp(temperature, overall, empty, null, null)", getTemperature}},
               flashing(Generation::v10, flash(equilibrium, "pressure", 2e5, "temperature", 350)));
    expectRoad({{"copy.SetProp(fraction, overall, empty, null, mole, R8[0.5, 0.3, 0.2])", composition},
                {"copy.SetProp(phaseFraction, vapor, empty, null, mole, R8[0.4])",
                 "Failed to set vapor fraction on material: "},
                {"copy.SetProp(enthalpyF, overall, empty, mixture, mole, R8[-5000])",
                 "Failed to set enthalpyF on material: "},
                {"copy.CalcEquilibrium(HFVf, empty)", ""},
                {"copy.PhaseIds", presentPhases},
                {"copy.GetProp(pressure, overall, empty, null, null)", getPressure},
                {"copy.GetProp(temperature, overall, empty, null, null)", getTemperature}},
               flashing(Generation::v10, flash(equilibrium, "vaporFraction", 0.4, "enthalpyF", -5000)));
}

TEST(FlashEquilibrium, flashes11MaterialsByTwoSpecifications) {
    // The second specification has no basis, though the value has.
    expectRoad(
        {{"copy.SetOverallProp(fraction, mole, R8[0.5, 0.3, 0.2])", composition},
         {"copy.SetPresentPhases(BSTR[Vapor, Liquid, Liquid2], I4[0, 0, 0])",
          "Failed to set present phases: "},
         {"copy.SetOverallProp(temperature, null, R8[350])", "Failed to set temperature on material: "},
         {"copy.SetOverallProp(energy, mole, R8[-7])", "Failed to set energy on material: "},
         {"copy.CalcEquilibrium(BSTR[temperature, null, overall], BSTR[energy, null, overall], unspecified)",
          "Failed to calculate equilibrium: "},
         {"copy.GetPresentPhases", presentPhases},
         {"copy.GetOverallProp(pressure, null)", getPressure},
         {"copy.GetOverallProp(temperature, null)", getTemperature}},
        flashing(Generation::v11, flash(equilibrium, "temperature", 350, "energy", -7)));
}

TEST(FlashEquilibrium, findsTheVaporPhaseByItsLabel) {
    FakeStream stream = makeFakeStream();
    std::swap(stream.phases[0], stream.phases[1]);
    stream.phases[0].aggregation = L"vapor";
    stream.phases[1].label = L"VAPOR";
    Rig rig;
    FakeMaterial& material = rig.addFeed(Generation::v11, stream);
    rig.prepare(material);
    const Wire request = flash(equilibrium, "pressure", 1e5, "VaporFraction", 0.4);
    rig.send(request);
    EXPECT_THAT(material.record->callsOf("copy.SetSinglePhaseProp"),
                ElementsAre("copy.SetSinglePhaseProp(phaseFraction, VAPOR, mole, R8[0.4])"));
    EXPECT_THAT(material.record->callsOf("copy.CalcEquilibrium"),
                ElementsAre("copy.CalcEquilibrium(BSTR[pressure, null, overall], "
                            "BSTR[phaseFraction, mole, VAPOR], unspecified)"));

    material.record->add({.call = "copy.SetSinglePhaseProp",
                          .result = static_cast<HRESULT>(ECapeInvalidArgumentHR),
                          .text = L"not so",
                          .value = {}});
    EXPECT_EQ(rig.failureOf(request), "Failed to set vapor phase fraction: not so");

    stream.phases[1].label = L"Gas";
    Rig gas;
    gas.prepare(gas.addFeed(Generation::v11, stream));
    EXPECT_EQ(gas.failureOf(request), "Vapor phase not found for vaporFraction specification");
}

TEST(FlashEquilibrium, returnsTheStateOfTheCalculationMaterial) {
    for (const Generation generation : bothGenerations) {
        Rig rig;
        FakeMaterial& material = rig.addFeed(generation);
        material.onFlash = [](FakeStream& stream) {
            for (FakePhase& phase : stream.phases)
                phase.isPresent = phase.label == L"Liquid";
            stream.phases[1].fraction = 1;
            stream.phases[1].composition = {0.5, 0.3, 0.2};
            stream.overall[L"pressure"] = {5e5};
        };
        rig.prepare(material);
        Reply reply = rig.send(flash(equilibrium, "temperature", 260, "vaporFraction", 0));
        EXPECT_EQ(reply.word(), 0u);
        if (generation == Generation::v10) {
            EXPECT_EQ(reply.integer(), -1);
            EXPECT_EQ(reply.text(), "Liquid");
        } else {
            EXPECT_EQ(reply.integer(), 1);
            EXPECT_EQ(reply.integer(), 2);
        }
        EXPECT_THAT(reply.reals(6), ElementsAre(1, 0.5, 0.3, 0.2, 260, 5e5));
    }
}

TEST(FlashEquilibrium, checksConstraintNamesFirst) {
    Rig rig; // not even a material is needed
    for (const char* name : {"flow", "fraction", "totalFlow", "nonsense"}) {
        const std::string rest = std::string("; \"") + name + "\" is not a valid flash constraint";
        EXPECT_EQ(rig.failureOf(wireOf(equilibrium, 1., 2., name, "x")),
                  "Invalid value for propName1" + rest);
        EXPECT_EQ(rig.failureOf(wireOf(equilibrium, 1., 2., "PRESSURE", name)),
                  "Invalid value for propName2" + rest);
    }
}

TEST(FlashEquilibrium, rejectsUnsupportedPairsOn10MaterialsOnly) {
    for (const char* name : {"temperature", "enthalpy"}) {
        const Wire request = flash(equilibrium, name, 300, name, 300);
        EXPECT_EQ(flashing(Generation::v10, request)([](CallRecord&) {}).error,
                  "Unsupported combination of flash properties");
        EXPECT_EQ(flashing(Generation::v11, request)([](CallRecord&) {}).error, "");
    }
}

TEST(FlashEquilibrium, offersNoPhasesToA11MaterialWithoutPhases) {
    Rig rig;
    FakeStream stream = makeFakeStream();
    stream.phases.clear();
    FakeMaterial& material = rig.addFeed(Generation::v11, stream);
    rig.prepare(material);
    rig.send(flash(equilibrium, "temperature", 300, "pressure", 1e5));
    EXPECT_THAT(material.record->callsOf("copy.SetPresentPhases"),
                ElementsAre("copy.SetPresentPhases(empty, empty)"));
}

TEST(FlashProperty, writesTheValueDirectlyAfterTheStatus) {
    for (const Generation generation : bothGenerations) {
        FakeStream stream = makeFakeStream();
        stream.phases[2].fraction = 0;
        Rig rig;
        FakeMaterial& material = rig.addFeed(generation, stream);
        // A new 1.1 material has no values; the flash gives it some.
        material.onFlash = [stream](FakeStream& flashed) { flashed = stream; };
        rig.prepare(material);
        Reply reply = rig.send(flash(property, "temperature", 300, "pressure", 1e5) << "enthalpy");
        EXPECT_EQ(reply.word(), 0u);
        EXPECT_DOUBLE_EQ(reply.real(), -775);
    }
}

TEST(FlashProperty, acceptsEightExactNamesOnly) {
    const auto failureFor = [](Generation generation, const std::string& name) {
        return flashing(generation, flash(property, "temperature", 300, "energy", 1e5)
                                        << name)([](CallRecord&) {})
            .error;
    };
    for (const Generation generation : bothGenerations) {
        for (const char* name : {"enthalpy", "enthalpyF", "enthalpyNF", "entropy", "entropyF", "entropyNF",
                                 "internalEnergy", "volume"})
            EXPECT_EQ(failureFor(generation, name), "");
        for (const char* name : {"energy", "Enthalpy", "temperature", ""})
            EXPECT_EQ(failureFor(generation, name),
                      std::string("Invalid or unsupported overall property: ") + name);
    }
}

TEST(FlashProperty, passesFailuresOfTheSumThrough) {
    Rig rig;
    FakeMaterial& material = rig.addFeed(Generation::v10);
    rig.prepare(material);
    EXPECT_EQ(rig.failureOf(flash(property, "temperature", 300, "pressure", 1e5) << "volume"),
              "Failed to calculate volume for phase Vapor: can't calculate volume");
}

} // namespace

} // namespace solvane
