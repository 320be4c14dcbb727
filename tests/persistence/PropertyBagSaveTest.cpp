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

TEST_F(PropertyBagTest, everyKeyIsWrittenInItsOrder) {
    const HostedUnit unit(module);
    ModelBag model = wholeModel();
    ASSERT_EQ(load(unit, model), S_OK);
    RecordingBag bag;
    ASSERT_EQ(save(unit, bag), S_OK);
    EXPECT_EQ(bag.keys(), (std::vector<std::wstring>{L"info level",
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
                                                     L"file \\ calc.m"}));
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

TEST_F(PropertyBagTest, absentBoundsReadZeroAndAStringsDefaultDoesNotTravel) {
    const HostedUnit unit(module);
    ModelBag model = wholeModel();
    ASSERT_EQ(load(unit, model), S_OK);
    RecordingBag bag;
    ASSERT_EQ(save(unit, bag), S_OK);
    for (const wchar_t* key : {L"area \\ minimum", L"area \\ default"}) {
        EXPECT_EQ(bag.value(key).type(), VT_R8);
        EXPECT_EQ(bag.value(key).real(), 0);
    }
    EXPECT_EQ(bag.value(L"adiabatic \\ default").type(), VT_BOOL);
    EXPECT_EQ(bag.value(L"method \\ default").type(), VT_BSTR);
    EXPECT_EQ(bag.value(L"method \\ default").text(), L"");

    // So a real parameter comes back with bounds that it did not have.
    const HostedUnit second(module);
    ASSERT_EQ(load(second, bag), S_OK);
    ComRef<IDispatch> parameters;
    second.as<ICapeUtilities>()->get_parameters(parameters.put());
    ComRef<IDispatch> area;
    ASSERT_EQ(parameters.as<ICapeCollection>()->Item(Variant(std::wstring_view(L"area")).get(), area.put()),
              S_OK);
    double bound = 1;
    EXPECT_EQ(area.as<ICapeRealParameterSpec>()->get_LowerBound(&bound), S_OK);
    EXPECT_EQ(bound, 0);
}

TEST_F(PropertyBagTest, twoSavesOfARoundTripAreEqual) {
    const HostedUnit first(module);
    ModelBag model = wholeModel();
    ASSERT_EQ(load(first, model), S_OK);
    RecordingBag bag;
    ASSERT_EQ(save(first, bag), S_OK);
    const HostedUnit second(module);
    ASSERT_EQ(load(second, bag), S_OK);
    RecordingBag again;
    ASSERT_EQ(save(second, again), S_OK);
    ASSERT_EQ(again.keys(), bag.keys());
    for (std::size_t i = 0; i < bag.entries.size(); ++i) {
        const Variant& before = bag.entries[i].value;
        const Variant& after = again.entries[i].value;
        EXPECT_EQ(after.type(), before.type());
        if (before.type() == VT_BSTR) {
            EXPECT_EQ(after.text(), before.text());
        }
        if (before.type() == VT_R8) {
            EXPECT_EQ(after.real(), before.real());
        }
    }
    EXPECT_EQ(again.texts(L"method \\ options"), (std::vector<std::wstring>{L"fast", L"exact"}));
}

TEST_F(PropertyBagTest, emptyListsAreEmptyVariants) {
    const HostedUnit unit(module);
    RecordingBag bag;
    ASSERT_EQ(save(unit, bag), S_OK);
    for (const wchar_t* key : {L"feeds", L"products", L"parameters", L"parameter modes", L"parameter types"})
        EXPECT_EQ(bag.value(key).type(), VT_EMPTY) << key;
    EXPECT_EQ(bag.texts(L"files"), std::vector<std::wstring>{L"calc.m"});
}

TEST_F(PropertyBagTest, aFileIsTextWhereAllOfItIsPlainAndBytesWithAZeroOtherwise) {
    const HostedUnit unit(module);
    ModelBag model;
    model.script("x = 1;\r\n")
        .file("accent.txt", "caf\xE9")
        .file("escape.txt", "\x1B[0m")
        .file("empty.txt", "");
    model.values[L"file \\ empty.txt"] = Variant(std::wstring_view(L""));
    ASSERT_EQ(load(unit, model), S_OK);
    RecordingBag bag;
    ASSERT_EQ(save(unit, bag), S_OK);
    EXPECT_EQ(bag.value(L"file \\ calc.m").type(), VT_BSTR);
    EXPECT_EQ(bag.value(L"file \\ empty.txt").type(), VT_BSTR);
    EXPECT_EQ(bag.value(L"file \\ empty.txt").text(), L"");
    VariantArray bytes(bag.value(L"file \\ accent.txt"));
    std::string error;
    ASSERT_TRUE(readVariantArray(bytes, VT_UI1, error)) << error;
    EXPECT_EQ(bytes.bytes(), (std::vector<unsigned char>{'c', 'a', 'f', 0xE9, 0}));
    EXPECT_EQ(bag.value(L"file \\ escape.txt").type(), VT_ARRAY | VT_UI1);

    // The zero byte stays: the file grows by one with each save and load.
    const HostedUnit second(module);
    ASSERT_EQ(load(second, bag), S_OK);
    RecordingBag again;
    ASSERT_EQ(save(second, again), S_OK);
    VariantArray grown(again.value(L"file \\ accent.txt"));
    ASSERT_TRUE(readVariantArray(grown, VT_UI1, error)) << error;
    EXPECT_EQ(grown.count(), bytes.count() + 1);
}

TEST_F(PropertyBagTest, aFullBagEndsTheSaveAtOnceWhereverItIsFull) {
    const HostedUnit unit(module);
    ModelBag model = wholeModel();
    ASSERT_EQ(load(unit, model), S_OK);
    RecordingBag whole;
    ASSERT_EQ(save(unit, whole), S_OK);
    for (std::size_t capacity = 0; capacity < whole.entries.size(); ++capacity) {
        RecordingBag full;
        full.capacity = capacity;
        EXPECT_EQ(save(unit, full), E_FAIL) << capacity;
        EXPECT_EQ(full.entries.size(), capacity);
    }
    EXPECT_EQ(unit.error(), L" |  |  | "); // no text for these
}

TEST_F(PropertyBagTest, aFileThatIsGoneFailsTheSaveWithItsPath) {
    const HostedUnit unit(module);
    ModelBag model = wholeModel();
    ASSERT_EQ(load(unit, model), S_OK);
    const std::wstring path = matlab.workingFolder() + L"data.txt";
    ASSERT_TRUE(DeleteFileW(path.c_str()));
    RecordingBag bag;
    EXPECT_EQ(save(unit, bag), static_cast<HRESULT>(0x80040501));
    EXPECT_EQ(unit.error(), L"save error | Failed to add \"" + path +
                                L"\": unable to re-open file | Save | IPersistPropertyBag");
}

} // namespace
} // namespace solvane
