#include "flowsheet/ModelBag.h"

#include "com/Module.h"
#include "com/VariantArray.h"

#include <gtest/gtest.h>

namespace solvane::host {

namespace {

ComModule module;

using Texts = std::vector<std::wstring>;

class ModelBagTest : public testing::Test {
protected:
    ModelBagTest() {
        const UnitModel model{
            .parameters = {{.name = "T", .value = 260.5, .minimum = 100.0, .dimensionality = {0, 0, 0, 0, 1}},
                           {.name = "n", .kind = ParameterKind::integer, .isInput = false, .value = 7},
                           {.name = "on", .kind = ParameterKind::boolean, .value = true},
                           {.name = "how",
                            .kind = ParameterKind::text,
                            .value = std::string("a"),
                            .options = {"a", "b"},
                            .restricted = true}},
            .reports = {"Summary"},
            .script = {"drum.m", "disp(1)\r\n"},
            .files = {{"data.bin", std::string("\x1B\xFF", 2)}, {"empty.txt", ""}},
            .echo = true};
        bag = createModelBag(model, {.feeds = {{"F1", "S1"}, {"F2", "S2"}}, .products = {{"Öl", "S3"}}});
    }

    Variant read(const wchar_t* key, VARTYPE wanted = VT_EMPTY) {
        Variant value;
        value.put()->vt = wanted;
        EXPECT_EQ(bag->Read(key, value.in(), nullptr), S_OK) << key;
        return value;
    }
    Texts list(const wchar_t* key) {
        VariantArray array(read(key));
        std::string error;
        EXPECT_TRUE(readVariantArray(array, VT_BSTR, error)) << error;
        return array.texts();
    }

    ComRef<IPropertyBag> bag;
};

TEST_F(ModelBagTest, holdsTheModelUnderTheUnitsKeys) {
    EXPECT_EQ(read(L"info level").integer(), 1);
    EXPECT_EQ(list(L"feeds"), (Texts{L"F1", L"F2"}));
    EXPECT_EQ(list(L"products"), Texts{L"\u00d6l"});
    EXPECT_EQ(list(L"reports"), Texts{L"Summary"});
    EXPECT_EQ(list(L"parameters"), (Texts{L"T", L"n", L"on", L"how"}));
    EXPECT_EQ(list(L"parameter modes"), (Texts{L"input", L"output", L"input", L"input"}));
    EXPECT_EQ(list(L"parameter types"), (Texts{L"real", L"int", L"bool", L"string"}));
    EXPECT_EQ(list(L"files"), (Texts{L"data.bin", L"empty.txt", L"calc.m"}));

    EXPECT_EQ(read(L"T \\ value").real(), 260.5);
    EXPECT_EQ(read(L"T \\ minimum").type(), VT_R8);
    EXPECT_EQ(read(L"T \\ dimensionality").type(), VT_ARRAY | VT_R8);
    EXPECT_EQ(read(L"n \\ value").type(), VT_I4);
    EXPECT_EQ(read(L"on \\ value").boolean(), VARIANT_TRUE);
    EXPECT_EQ(read(L"how \\ value").text(), L"a");
    EXPECT_EQ(read(L"how \\ restricted").boolean(), VARIANT_TRUE);
    EXPECT_EQ(list(L"how \\ options"), (Texts{L"a", L"b"}));

    EXPECT_EQ(read(L"file \\ calc.m").text(), L"disp(1)\r\n");
    EXPECT_EQ(read(L"file \\ empty.txt").type(), VT_BSTR);
    VariantArray bytes(read(L"file \\ data.bin"));
    std::string error;
    ASSERT_TRUE(readVariantArray(bytes, VT_UI1, error)) << error;
    EXPECT_EQ(bytes.bytes(), (std::vector<unsigned char>{0x1B, 0xFF}));
}

TEST_F(ModelBagTest, hasNoKeysForWhatIsLeftOut) {
    for (const wchar_t* key : {L"T \\ maximum", L"T \\ default", L"n \\ dimensionality", L"file \\ drum.m"}) {
        Variant value;
        EXPECT_EQ(bag->Read(key, value.put(), nullptr), E_INVALIDARG);
    }
}

TEST_F(ModelBagTest, convertsToTheWantedType) {
    EXPECT_EQ(read(L"n \\ value", VT_R8).real(), 7);
    Variant value;
    value.put()->vt = VT_R8;
    EXPECT_EQ(bag->Read(L"how \\ value", value.in(), nullptr), DISP_E_TYPEMISMATCH);
}

} // namespace

} // namespace solvane::host
