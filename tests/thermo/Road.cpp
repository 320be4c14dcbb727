#include "Road.h"

#include "CapeOpen.h"

#include <gmock/gmock.h>

namespace solvane {

void expectRoad(const std::vector<Step>& steps, const Scenario& scenario) {
    std::vector<std::string> calls;
    for (const Step& step : steps)
        calls.push_back(step.call);
    const Outcome undisturbed = scenario([](CallRecord&) {});
    EXPECT_EQ(undisturbed.error, "");
    EXPECT_THAT(undisturbed.calls, testing::ElementsAreArray(calls));

    for (std::size_t i = 0; i < steps.size(); ++i) {
        SCOPED_TRACE("failing " + steps[i].call);
        const Outcome outcome = scenario([&](CallRecord& record) {
            record.failAt(i + 1, static_cast<HRESULT>(ECapeComputationHR), L"the reason");
        });
        EXPECT_EQ(outcome.error, steps[i].failure + "the reason");
        EXPECT_EQ(outcome.calls.size(), i + 1);
    }
}

void expectOddAnswers(const std::vector<OddAnswer>& answers, const Scenario& scenario) {
    for (const OddAnswer& answer : answers) {
        SCOPED_TRACE("odd answer to " + answer.call + ": " + describe(answer.value.get()));
        const Outcome outcome = scenario([&](CallRecord& record) {
            record.add(Fault{.call = answer.call,
                             .result = S_OK,
                             .text = {},
                             .value = answer.value,
                             .output = answer.output});
        });
        EXPECT_EQ(outcome.error, answer.failure);
    }
}

} // namespace solvane
