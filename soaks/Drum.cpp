#include "Drum.h"

#include "cases/CaseReader.h"
#include "com/Module.h"
#include "com/Text.h"

#include <cstdio>

namespace solvane::soak {

namespace {

// The materials are objects of this program.
ComModule thisProgram;

constexpr char caseFile[] = SOLVANE_EXAMPLES "/flash-drum/case.json";

std::string exact(double number) {
    char text[40];
    std::snprintf(text, sizeof text, " %a", number);
    return text;
}

} // namespace

Drum::Drum(const UnitModule& module, int number, const std::string& scriptBefore) : unit_(module) {
    if (FAILED(unit_.as<ICapeUtilities>()->Initialize()))
        startError_ = narrow(unit_.errorDescription());
    else if (!prepare(number, scriptBefore) && startError_.empty())
        startError_ = "The drum's model can't be loaded: " + narrow(unit_.errorDescription());
}

Drum::~Drum() {
    unit_.terminate();
}

bool Drum::prepare(int number, const std::string& scriptBefore) {
    host::Case example;
    if (!host::readCase(caseFile, example, startError_))
        return false;
    example.feeds[0].flow += number;
    if (!host::makeStreams(example, std::make_shared<host::MaterialHabits>(), streams_, startError_))
        return false;
    const auto& model = std::get<host::UnitModel>(example.units[0].model);
    ModelBag bag;
    bag.feeds({L"Feed"}).products({L"Vapor", L"Liquid"}).reports({L"Drum"});
    for (const wchar_t* name : {L"temperature", L"pressure", L"duty"})
        bag.parameter(name, L"real", Variant(2e6));
    bag.script(scriptBefore + model.script.bytes);
    if (FAILED(unit_.load(bag)))
        return false;
    for (const host::Stream& stream : streams_)
        if (FAILED(unit_.connect(widen(stream.name), stream.material.get())))
            return false;
    return true;
}

bool Drum::calculate(double temperature, std::string& error) {
    const bool isDone = SUCCEEDED(unit_.setParameter(L"temperature", Variant(temperature))) &&
                        unit_.validate().empty() && SUCCEEDED(unit_.calculate());
    if (!isDone)
        error = narrow(unit_.errorDescription());
    return isDone;
}

std::string Drum::products() const {
    std::string text;
    for (const host::Stream& stream : streams_) {
        host::StreamResult result;
        std::string error;
        if (!host::readStream(stream, result, error))
            return error;
        text += stream.name;
        for (const double number :
             {result.temperature, result.pressure, result.totalFlow, result.vaporFraction, result.enthalpy})
            text += exact(number);
        for (const double share : result.fraction)
            text += exact(share);
        text += '\n';
    }
    return text;
}

} // namespace solvane::soak
