#include "PropertyBagTest.h"

#include <cmath>

namespace solvane {
namespace {

TEST_F(PropertyBagTest, replacesAllButTheReportsOnLoad) {
    ModelBag first;
    first.feeds({L"A"}).reports({L"One"}).script("1;").file("old.txt", "x");
    first.parameter(L"p", L"real", Variant(1.0));
    ASSERT_EQ(load(first), S_OK);
    ModelBag second;
    second.products({L"B"}).reports({L"Two"}).script("2;");
    second.values[L"report \\ Two"] = Variant(std::wstring_view(L"text of two"));
    ASSERT_EQ(load(second), S_OK);
    const ModelBag bag = saved();
    EXPECT_EQ(bag.value(L"feeds").type(), VT_EMPTY);
    EXPECT_EQ(bag.texts(L"products"), std::vector<std::wstring>{L"B"});
    EXPECT_EQ(bag.value(L"parameters").type(), VT_EMPTY);
    EXPECT_EQ(bag.texts(L"files"), std::vector<std::wstring>{L"calc.m"});
    EXPECT_EQ(bag.texts(L"reports"), (std::vector<std::wstring>{L"Matlab Output", L"One", L"Two"}));
    EXPECT_EQ(unit.report(L"Two"), L"text of two");
    EXPECT_TRUE(log.lines.empty());
}

// Half a model would be valid, as long as its ports have not been read.
TEST_F(PropertyBagTest, rejectsTheHostsCallsDuringALoad) {
    ModelBag model;
    model.script("1;").feeds({L"A"});
    model.onRead = [&] {
        EXPECT_EQ(unit.validate(),
                  L"Cannot validate the unit while it is being loaded; try again afterwards");
        EXPECT_EQ(unit.calculate(), capeFailure);
        EXPECT_EQ(load(model), capeFailure);
        EXPECT_EQ(unit.as<IPersistPropertyBag>()->Save(&model, TRUE, TRUE), capeFailure);
    };
    ASSERT_EQ(load(model), S_OK);
    EXPECT_EQ(unit.status(), CAPE_NOT_VALIDATED);
    EXPECT_EQ(unit.validate(), L"Feed port \"A\" is not connected");
}

TEST_F(PropertyBagTest, reportsTheMissingScriptOnLoad) {
    ModelBag none;
    none.feeds({L"A"});
    EXPECT_EQ(load(none), E_FAIL);
    ModelBag misspelt;
    misspelt.file("Calc.m", "1;");
    EXPECT_EQ(load(misspelt), E_FAIL);
    EXPECT_EQ(log.lines, (std::vector<std::wstring>{L"files: calc.m not found", L"files: calc.m not found"}));
    EXPECT_EQ(log.source, L"Solvane CAPE-OPEN Unit Operation");
    // A host without a log gets the same result.
    EXPECT_EQ(unit.as<IPersistPropertyBag>()->Load(&none, nullptr), E_FAIL);
}

TEST_F(PropertyBagTest, ignoresParameterListsOfDifferentLengths) {
    for (const std::wstring shorter : {L"parameter modes", L"parameter types"}) {
        ModelBag model;
        model.script("1;").parameter(L"p", L"real", Variant(1.0)).parameter(L"q", L"real", Variant(2.0));
        model.values[shorter] = VariantArray::of(std::vector<std::wstring>{L"input"});
        log.lines.clear();
        EXPECT_EQ(load(model), S_OK);
        EXPECT_EQ(log.lines, std::vector{shorter + L": array size mismatch"});
        EXPECT_TRUE(saved().texts(L"parameters").empty());
    }
}

TEST_F(PropertyBagTest, skipsAndLogsInvalidParameters) {
    ModelBag model;
    model.script("1;").parameter(L"p", L"complex", Variant(1.0)).parameter(L"q", L"REAL", Variant(2.0));
    model.parameter(L"r", L"int", Variant(LONG{3}));
    model.values[L"parameter modes"] =
        VariantArray::of(std::vector<std::wstring>{L"input", L"OUTPUT", L"both"});
    ASSERT_EQ(load(model), S_OK);
    EXPECT_EQ(log.lines, (std::vector<std::wstring>{
                             L"parameter types: Invalid data type \"complex\" for parameter \"p\"",
                             L"parameter modes: Invalid model \"both\" for parameter \"r\""}));
    EXPECT_EQ(saved().texts(L"parameters"), std::vector<std::wstring>{L"q"});
    EXPECT_EQ(unit.parameter(L"q").real(), 2.0);
}

TEST_F(PropertyBagTest, convertsValuesAndInitializesMissingOnes) {
    ModelBag model;
    model.script("1;");
    model.parameter(L"real", L"real", Variant(std::wstring_view(L"3.5")));
    model.parameter(L"int", L"int", Variant(2.0));
    model.parameter(L"bool", L"bool", Variant(LONG{1}));
    model.parameter(L"noReal", L"real", Variant(0.0)).parameter(L"noString", L"string", Variant(0.0));
    model.values.erase(L"noReal \\ value");
    model.values.erase(L"noString \\ value");
    ASSERT_EQ(load(model), S_OK);
    EXPECT_EQ(unit.parameter(L"real").real(), 3.5);
    EXPECT_EQ(unit.parameter(L"int").integer(), 2);
    EXPECT_EQ(unit.parameter(L"bool").boolean(), VARIANT_TRUE);
    EXPECT_TRUE(std::isnan(unit.parameter(L"noReal").real()));
    EXPECT_EQ(unit.parameter(L"noString").type(), VT_BSTR);
    EXPECT_EQ(unit.parameter(L"noString").text(), L"");
}

TEST_F(PropertyBagTest, followsReferencesToTheHostsValues) {
    ModelBag model;
    model.script("1;").feeds({L"F"}).file("data.bin", "\x01").parameter(L"p", L"real", Variant(2.5));
    std::map<std::wstring, Variant> values = model.values;
    for (auto& [key, value] : values) {
        VARIANT* reference = model.values[key].put();
        reference->vt = VT_BYREF | VT_VARIANT;
        reference->pvarVal = value.in();
    }
    ASSERT_EQ(load(model), S_OK);
    EXPECT_EQ(unit.parameter(L"p").real(), 2.5);
    EXPECT_TRUE(unit.port(L"F"));
    EXPECT_EQ(saved().texts(L"files"), (std::vector<std::wstring>{L"data.bin", L"calc.m"}));
}

TEST_F(PropertyBagTest, skipsAFileOfUnknownType) {
    ModelBag model;
    model.file("number.bin", "x").file("shifted.bin", "y").file("gone.txt", "z").script("1;");
    model.values[L"file \\ number.bin"] = Variant(4.0);
    SAFEARRAYBOUND fromOne{2, 1};
    VARIANT* shifted = model.values[L"file \\ shifted.bin"].put();
    shifted->vt = VT_ARRAY | VT_UI1;
    shifted->parray = SafeArrayCreate(VT_UI1, 1, &fromOne);
    model.values.erase(L"file \\ gone.txt");
    ASSERT_EQ(load(model), S_OK);
    EXPECT_EQ(log.lines, (std::vector<std::wstring>{L"file \\ number.bin: invalid file data",
                                                    L"file \\ shifted.bin: invalid file data"}));
    const ModelBag bag = saved();
    EXPECT_EQ(bag.texts(L"files"), std::vector<std::wstring>{L"calc.m"});
}

TEST_F(PropertyBagTest, reportsThePathOfAFileThatCannotBeCreated) {
    ModelBag model;
    model.file("no\\such\\folder.txt", "x").script("1;");
    EXPECT_EQ(load(model), capeFailure);
    EXPECT_EQ(unit.error(), L"save error | Failed to create \"" + matlab.workingFolder() +
                                L"no\\such\\folder.txt\": unable to open file | Load | IPersistPropertyBag");
}

} // namespace
} // namespace solvane
