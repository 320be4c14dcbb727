#include "Road.h"

#include "CapeOpen.h"
#include "OddVariants.h"

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
        EXPECT_EQ(outcome.errorOfNext, "");
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
        EXPECT_EQ(outcome.errorOfNext, "");
    }
}

void expectOddLists(const std::string& call, VARTYPE elementType, const std::string& failure,
                    const Scenario& scenario, std::size_t output) {
    const std::string word = elementType == VT_R8     ? "double precision"
                             : elementType == VT_BSTR ? "string"
                                                      : "VARIANT";
    std::vector<OddAnswer> answers{{call, twoDimensional(elementType),
                                    failure + "unexpected dimension; 1-dimensional array expected", output}};
    for (const Variant& value : {Variant(1.0), Variant(L"1"), reals({1}), texts({L"1"}), listOfVariants()})
        if (value.type() != (VT_ARRAY | elementType))
            answers.push_back({call, value, failure + "Expected an array of type " + word, output});
    expectOddAnswers(answers, scenario);
}

} // namespace solvane
