#include "PropertyBagTest.h"

#include <array>

namespace solvane {
namespace {

/// A model with one of everything.
ModelBag wholeModel() {
    ModelBag model;
    model.feeds({L"Feed 1", L"Recycle"}).products({L"Product 1"}).reports({L"Balance"});
    model.script("disp(1)\r\n").file("data.txt", "1\t2\n");
    model.parameter(L"area", L"real", Variant(12.5)).with(L"area", L"maximum", Variant(20.0));
    model.with(L"area", L"dimensionality", VariantArray::of(std::array{2.0, 0.0}));
    model.parameter(L"stages", L"int", Variant(LONG{7})).with(L"stages", L"minimum", Variant(LONG{1}));
    model.parameter(L"adiabatic", L"bool", Variant(true));
    model.parameter(L"method", L"string", Variant(std::wstring_view(L"fast")));
    model.with(L"method", L"options", VariantArray::of(std::vector<std::wstring>{L"fast", L"exact"}));
    model.with(L"method", L"restricted", Variant(true));
    model.with(L"method", L"default", Variant(std::wstring_view(L"exact")));
    return model;
}

TEST_F(PropertyBagTest, writesEveryKeyInOrder) {
    ModelBag model = wholeModel();
    ASSERT_EQ(load(model), S_OK);
    const ModelBag bag = saved();
    const std::vector<std::wstring> keys{L"info level",
                                         L"reports",
                                         L"report Matlab Output",
                                         L"report \\ Balance",
                                         L"feeds",
                                         L"products",
                                         L"parameters",
                                         L"parameter modes",
                                         L"parameter types",
                                         L"area \\ value",
                                         L"area \\ minimum",
                                         L"area \\ maximum",
                                         L"area \\ default",
                                         L"area \\ dimensionality",
                                         L"stages \\ value",
                                         L"stages \\ minimum",
                                         L"stages \\ maximum",
                                         L"stages \\ default",
                                         L"adiabatic \\ value",
                                         L"adiabatic \\ default",
                                         L"method \\ value",
                                         L"method \\ default",
                                         L"method \\ restricted",
                                         L"method \\ options",
                                         L"files",
                                         L"file \\ data.txt",
                                         L"file \\ calc.m"};
    EXPECT_EQ(bag.written, keys);
    EXPECT_EQ(bag.texts(L"reports"), (std::vector<std::wstring>{L"Matlab Output", L"Balance"}));
    EXPECT_EQ(bag.texts(L"feeds"), (std::vector<std::wstring>{L"Feed 1", L"Recycle"}));
    EXPECT_EQ(bag.texts(L"parameter types"),
              (std::vector<std::wstring>{L"real", L"int", L"bool", L"string"}));
    EXPECT_EQ(bag.texts(L"files"), (std::vector<std::wstring>{L"data.txt", L"calc.m"}));
    EXPECT_EQ(bag.value(L"info level").type(), VT_I4);
    EXPECT_EQ(bag.value(L"area \\ value").real(), 12.5);
    EXPECT_EQ(bag.value(L"stages \\ value").integer(), 7);
    EXPECT_EQ(bag.value(L"adiabatic \\ value").boolean(), VARIANT_TRUE);
    EXPECT_EQ(bag.value(L"file \\ calc.m").text(), L"disp(1)\r\n");
}

TEST_F(PropertyBagTest, writesAbsentBoundsAsZeroAndNoTextOfADefault) {
    ModelBag model = wholeModel();
    model.parameter(L"note", L"string", Variant(std::wstring_view(L"free")));
    ASSERT_EQ(load(model), S_OK);
    ModelBag bag = saved();
    EXPECT_EQ(bag.value(L"method \\ restricted").boolean(), VARIANT_TRUE);
    EXPECT_EQ(bag.value(L"note \\ restricted").boolean(), VARIANT_FALSE);
    for (const wchar_t* key : {L"area \\ minimum", L"area \\ default"}) {
        EXPECT_EQ(bag.value(key).type(), VT_R8);
        EXPECT_EQ(bag.value(key).real(), 0);
    }
    EXPECT_EQ(bag.value(L"adiabatic \\ default").type(), VT_BOOL);
    EXPECT_EQ(bag.value(L"method \\ default").type(), VT_BSTR);
    EXPECT_EQ(bag.value(L"method \\ default").text(), L"");

    // So a load gives a real parameter bounds that it did not have.
    unit = HostedUnit(module);
    ASSERT_EQ(load(bag), S_OK);
    double bound = 1;
    const auto area = unit.findParameter(L"area").as<ICapeRealParameterSpec>();
    EXPECT_EQ(area->get_LowerBound(&bound), S_OK);
    EXPECT_EQ(bound, 0);
    EXPECT_EQ(saved().texts(L"method \\ options"), (std::vector<std::wstring>{L"fast", L"exact"}));
}

TEST_F(PropertyBagTest, writesEmptyListsAsEmptyVariants) {
    ModelBag bag = saved();
    for (const wchar_t* key : {L"feeds", L"products", L"parameters", L"parameter modes", L"parameter types"})
        EXPECT_EQ(bag.value(key).type(), VT_EMPTY) << key;
    EXPECT_EQ(bag.texts(L"files"), std::vector<std::wstring>{L"calc.m"});
}

TEST_F(PropertyBagTest, writesPlainFilesAsTextAndOthersAsZeroTerminatedBytes) {
    ModelBag model;
    model.script("x = 1;\r\n")
        .file("accent.txt", "caf\xE9")
        .file("escape.txt", "\x1B[0m")
        .file("empty.txt", "");
    model.values[L"file \\ empty.txt"] = Variant(std::wstring_view(L""));
    ASSERT_EQ(load(model), S_OK);
    ModelBag bag = saved();
    EXPECT_EQ(bag.value(L"file \\ calc.m").type(), VT_BSTR);
    EXPECT_EQ(bag.value(L"file \\ empty.txt").type(), VT_BSTR);
    EXPECT_EQ(bag.value(L"file \\ empty.txt").text(), L"");
    VariantArray bytes(bag.value(L"file \\ accent.txt"));
    std::string error;
    ASSERT_TRUE(readVariantArray(bytes, VT_UI1, error)) << error;
    EXPECT_EQ(bytes.bytes(), (std::vector<unsigned char>{'c', 'a', 'f', 0xE9, 0}));
    EXPECT_EQ(bag.value(L"file \\ escape.txt").type(), VT_ARRAY | VT_UI1);

    // The zero byte stays: the file grows by one with each save and load.
    ASSERT_EQ(load(bag), S_OK);
    VariantArray grown(saved().value(L"file \\ accent.txt"));
    ASSERT_TRUE(readVariantArray(grown, VT_UI1, error)) << error;
    EXPECT_EQ(grown.count(), bytes.count() + 1);
}

TEST_F(PropertyBagTest, stopsTheSaveAtTheFirstFailingKey) {
    ModelBag model = wholeModel();
    ASSERT_EQ(load(model), S_OK);
    ModelBag whole = saved();
    for (std::size_t capacity = 0; capacity < whole.written.size(); ++capacity) {
        ModelBag full;
        full.capacity = capacity;
        EXPECT_EQ(save(full), E_FAIL) << capacity;
        EXPECT_EQ(full.written.size(), capacity);
    }
    EXPECT_EQ(unit.error(), L" |  |  | "); // no text for these
}

TEST_F(PropertyBagTest, reportsThePathOfAMissingFileOnSave) {
    ModelBag model = wholeModel();
    ASSERT_EQ(load(model), S_OK);
    const std::wstring path = matlab.workingFolder() + L"data.txt";
    ASSERT_TRUE(DeleteFileW(path.c_str()));
    ModelBag bag;
    EXPECT_EQ(save(bag), capeFailure);
    EXPECT_EQ(unit.error(), L"save error | Failed to add \"" + path +
                                L"\": unable to re-open file | Save | IPersistPropertyBag");
}

} // namespace
} // namespace solvane
