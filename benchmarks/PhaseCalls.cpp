#include "PhaseCalls.h"

#include "CapeOpen.h"
#include "GatewayClient.h"
#include "com/Module.h"
#include "com/Text.h"
#include "com/VariantArray.h"

#include <array>
#include <memory>

namespace solvane {

namespace {

// The materials are objects of this program.
ComModule thisProgram;

constexpr double givenTemperature = 350; // K
constexpr double givenPressure = 1e5;    // Pa

/// Shared by the calls on a material, which are copied with the function that makes them.
struct Arguments {
    explicit Arguments(const std::string& name) : property(widen(name)) {}

    Bstr property;
    Bstr temperature{L"temperature"}, pressure{L"pressure"}, fraction{L"fraction"};
    Bstr overall{L"overall"}, vapor{L"Vapor"}, mole{L"mole"}, mixture{L"mixture"};
    VariantArray properties = VariantArray::ofTexts({property.get()});
    VariantArray phases = VariantArray::ofTexts({L"Vapor"});
    VariantArray temperatures = VariantArray::of(std::array{givenTemperature});
    VariantArray pressures = VariantArray::of(std::array{givenPressure});
    VariantArray composition = VariantArray::of(std::vector<double>(
        host::allCompounds().size(), 1.0 / static_cast<double>(host::allCompounds().size())));
    VARIANT allCompounds{};
};

} // namespace

ComRef<IDispatch> createHostMaterial(host::Generation generation) {
    std::vector<const host::Compound*> compounds;
    for (const host::Compound& compound : host::allCompounds())
        compounds.push_back(&compound);
    const auto package = std::make_shared<const host::PropertyPackage>(compounds);
    return host::createMaterial(generation, std::make_shared<host::StreamState>(package), L"Feed");
}

std::string phaseRequest(const std::string& property) {
    Wire wire = request(CommandCode::getSinglePhaseProperty) << givenTemperature << givenPressure;
    for (const double share : Arguments(property).composition.reals())
        wire << share;
    return (wire << property << std::string("Vapor")).bytes();
}

std::function<bool()> askMaterial10(const std::string& property) {
    const auto material = createHostMaterial(host::Generation::v10).as<ICapeThermoMaterialObject>();
    return [material, a = std::make_shared<const Arguments>(property)] {
        const auto set = [&](const Bstr& name, const Bstr& phase, BSTR basis, const VariantArray& values) {
            return SUCCEEDED(
                material->SetProp(name.get(), phase.get(), a->allCompounds, nullptr, basis, values.get()));
        };
        VariantArray values;
        return set(a->temperature, a->overall, nullptr, a->temperatures) &&
               set(a->pressure, a->overall, nullptr, a->pressures) &&
               set(a->fraction, a->vapor, a->mole.get(), a->composition) &&
               SUCCEEDED(material->CalcProp(a->properties.get(), a->phases.get(), a->mixture.get())) &&
               SUCCEEDED(material->GetProp(a->property.get(), a->vapor.get(), a->allCompounds,
                                           a->mixture.get(), nullptr, values.put()));
    };
}

std::function<bool()> askMaterial11(const std::string& property) {
    const auto material = createHostMaterial(host::Generation::v11).as<ICapeThermoMaterial>();
    const auto routine = material.as<ICapeThermoPropertyRoutine>();
    return [material, routine, a = std::make_shared<const Arguments>(property)] {
        const auto set = [&](const Bstr& name, BSTR basis, const VariantArray& values) {
            return SUCCEEDED(material->SetSinglePhaseProp(name.get(), a->vapor.get(), basis, values.get()));
        };
        VariantArray values;
        return set(a->temperature, nullptr, a->temperatures) && set(a->pressure, nullptr, a->pressures) &&
               set(a->fraction, a->mole.get(), a->composition) &&
               SUCCEEDED(routine->CalcSinglePhaseProp(a->properties.get(), a->vapor.get())) &&
               SUCCEEDED(
                   material->GetSinglePhaseProp(a->property.get(), a->vapor.get(), nullptr, values.put()));
    };
}

} // namespace solvane
