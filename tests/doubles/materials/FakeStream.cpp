#include "FakeStream.h"

#include "com/Text.h"

#include <algorithm>

namespace solvane {

FakePhase* FakeStream::findPhase(const std::wstring& label) {
    const auto phase =
        std::ranges::find_if(phases, [&](const FakePhase& p) { return compareNoCase(p.label, label) == 0; });
    return phase == phases.end() ? nullptr : &*phase;
}

FakeStream makeFakeStream(std::size_t compounds) {
    FakeStream stream;
    std::vector<double> rising;
    for (std::size_t i = 1; i <= compounds; ++i) {
        stream.compounds.push_back(L"C" + std::to_wstring(i));
        rising.push_back(2.0 * static_cast<double>(i) / static_cast<double>(compounds * (compounds + 1)));
    }
    const std::vector<double> falling(rising.rbegin(), rising.rend());
    stream.phases = {
        {L"Vapor", L"Vapor", 0.25, rising, {{L"enthalpy", -100}}},
        {L"Liquid", L"Liquid", 0.75, falling, {{L"enthalpy", -1000}}},
        {L"Liquid2", L"Liquid", 0, {}, {}, false},
    };
    stream.overall = {
        {L"temperature", {300}}, {L"pressure", {101325}}, {L"totalFlow", {10}}, {L"fraction", rising}};
    return stream;
}

} // namespace solvane
