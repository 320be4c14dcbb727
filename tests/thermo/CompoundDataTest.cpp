#include "OddVariants.h"
#include "Rig.h"

#include <gmock/gmock.h>

#include <bit>

namespace solvane {

namespace {

using testing::ElementsAre;

const Wire weights = wireOf(6u, "weight");

FakeStream streamWith(std::initializer_list<Variant> constants) {
    FakeStream stream = makeFakeStream();
    stream.constants[L"weight"] = variants(constants);
    stream.results = {{L"vaporPressure.DTemperature", {1, 2, 3}},
                      {L"meltingTemperature.Dpressure", {1, 2, 3}}};
    return stream;
}

Scenario askingThree(Generation generation, const Wire& request) {
    return asking(generation, request, streamWith({Variant(16.0), Variant(44.0), Variant(72.0)}));
}

TEST(CompoundData, reportsFailingCallsAndOddAnswers) {
    const Scenario constants = askingThree(Generation::v11, weights);
    expectRoad(
        {{"copy.GetCompoundConstant(BSTR[weight], empty)", "Failed to get compound constant \"weight\": "}},
        constants);
    expectOddLists("copy.Get", VT_VARIANT, "Invalid return values from GetCompoundConstant: ", constants);
    const struct {
        std::uint32_t code;
        std::string letter, condition, name;
    } rows[] = {{7, "T", "temperature", "vaporPressure.DTemperature"},
                {8, "P", "pressure", "meltingTemperature.Dpressure"}};
    for (const auto& row : rows) {
        const std::string property = row.letter + "-dependent property \"" + row.name + "\": ";
        const Wire request = wireOf(row.code, 350., row.name);
        const Scenario of10 = askingThree(Generation::v10, request);
        const Scenario of11 = askingThree(Generation::v11, request);
        expectRoad(
            {{"copy.SetProp(" + row.condition + ", overall, empty, null, null, R8[350])",
              "Failed to set " + row.condition + " on material object: "},
             {"copy.CalcProp(BSTR[" + row.name + "], BSTR[overall], pure)",
              "Failed to calculate " + property},
             {"copy.GetProp(" + row.name + ", overall, empty, pure, null)", "Failed to get " + property}},
            of10);
        expectRoad({{"copy.Get" + row.letter + "DependentProperty(BSTR[" + row.name + "], 350, empty)",
                     "Failed to get " + property}},
                   of11);
        for (const Scenario& scenario : {of10, of11}) {
            expectOddLists("copy.Get", VT_R8,
                           "Invalid return values from Get" + row.letter + "DependentProperty: ", scenario);
            // The same words for both commands.
            const std::string count =
                "Invalid return values from GetTDependentProperty: unexpected number of values";
            expectOddAnswers({{"copy.Get", Variant(), count}, {"copy.Get", reals({1, 2, 3, 4}), count}},
                             scenario);
        }
    }
}

TEST(CompoundConstant, writesNoReplyForAFailing10Material) {
    Rig rig;
    FakeMaterial& material =
        rig.addFeed(Generation::v10, streamWith({Variant(16.0), Variant(44.0), Variant(72.0)}));
    rig.prepare(material);
    EXPECT_EQ(rig.send(weights).word(), 0u);
    EXPECT_THAT(material.record->calls, ElementsAre("copy.GetComponentConstant(BSTR[weight], empty)"));

    material.record->calls.clear();
    material.record->failAt(1, static_cast<HRESULT>(ECapeThrmPropertyNotAvailableHR), L"not for C2");
    Reply reply = rig.send(weights);
    EXPECT_EQ(reply.word(), 6u);
    EXPECT_EQ(reply.text(), "weight");
    EXPECT_THAT(material.record->calls, ElementsAre("copy.GetComponentConstant(BSTR[weight], empty)",
                                                    "copy.GetComponentConstant(BSTR[weight], BSTR[C1])",
                                                    "copy.GetComponentConstant(BSTR[weight], BSTR[C2])",
                                                    "copy.GetComponentConstant(BSTR[weight], BSTR[C3])"));
    EXPECT_EQ(rig.send(weights).word(), 0u);
}

TEST(CompoundConstant, takesTheKindOfTheFirstValue) {
    const std::string invalid = "Invalid return values from GetCompoundConstant: ";
    const std::string wrongType = invalid + "unexpected data type for a value";
    const Variant none, one(1.0), text(L"a"), whole(LONG{1});
    Variant nullText;
    nullText.put()->vt = VT_BSTR;
    const struct {
        Variant answer;
        std::string failure;
        std::vector<std::string> texts = {};
    } rows[] = {
        {variants({none, one, none}), ""},
        {variants({none, text, none}), "", {"", "a", ""}},
        {variants({nullText, Variant(std::wstring_view(L"b\0c", 3)), text}), "", {"", "b", "a"}},
        {variants({one, text, one}), wrongType},
        {variants({text, one, none}), wrongType},
        {variants({nullText, whole, text}), wrongType},
        {variants({none, whole, one}), wrongType},
        {variants({none, none, none}), invalid + "values not available"},
        {variants({one, one}), invalid + "unexpected number of values"},
        {none, invalid + "unexpected number of values"},
    };
    // On 1.1, this failure does not count, but the values that it returned do.
    for (const HRESULT result : {S_OK, S_FALSE, static_cast<HRESULT>(ECapeThrmPropertyNotAvailableHR)})
        for (const auto& row : rows) {
            const bool is10 = result == S_FALSE;
            Rig rig;
            FakeMaterial& material = rig.addFeed(is10 ? Generation::v10 : Generation::v11, streamWith({}));
            rig.prepare(material);
            material.record->add({.call = is10 ? "copy.GetComponentConstant" : "copy.GetCompoundConstant",
                                  .result = result,
                                  .text = {},
                                  .value = row.answer});
            Reply reply = rig.send(weights);
            ASSERT_EQ(reply.word(), row.failure.empty() ? 0u : 1u) << row.failure;
            if (!row.failure.empty()) {
                EXPECT_EQ(reply.text(), row.failure);
                continue;
            }
            EXPECT_EQ(reply.word(), row.texts.empty() ? 0u : 1u);
            for (const std::string& expected : row.texts)
                EXPECT_EQ(reply.text(), expected);
            if (!row.texts.empty())
                continue;
            EXPECT_EQ(std::bit_cast<std::uint64_t>(reply.real()), 0x7FF8000000000000u);
            EXPECT_EQ(reply.real(), 1);
        }
}

TEST(DependentProperty, asks10MaterialsForKnownNamesAndDerivativesOnly) {
    const struct {
        std::uint32_t code;
        std::string name;
        std::string failure;
    } rows[] = {
        {7, "vaporPressure.Dpressure", "Invalid derivative"},
        {7, "vaporPressure.", "Invalid derivative"},
        {7, "nonsense.Dtemperature.x", "Invalid derivative"},
        {7, "meltingTemperature",
         "Property 'meltingTemperature' is not a known temperature dependent property"},
        {7, "x.DTEMPERATURE", "Property 'x.DTEMPERATURE' is not a known temperature dependent property"},
        {8, "meltingTemperature.Dtemperature", "Invalid derivative"},
        {8, "vaporPressure", "Property 'vaporPressure' is not a known pressure dependent property"},
    };
    Rig rig;
    FakeMaterial& material = rig.addFeed(Generation::v10);
    rig.prepare(material);
    for (const auto& row : rows)
        EXPECT_EQ(rig.failureOf(wireOf(row.code, 300., row.name)), row.failure);
    EXPECT_EQ(material.record->calls.size(), 0u);
}

} // namespace

} // namespace solvane
