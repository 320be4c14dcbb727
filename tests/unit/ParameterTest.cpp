#include "UnitTest.h"

#include <array>
#include <cfloat>
#include <cmath>
#include <limits>

namespace solvane {
namespace {

class Parameters : public UnitTest {
protected:
    Parameters() {
        model.parameter(L"real", L"real", Variant(5.0)).with(L"real", L"minimum", Variant(1.0));
        model.with(L"real", L"maximum", Variant(10.0)).with(L"real", L"default", Variant(2.0));
        model.with(L"real", L"dimensionality", VariantArray::of(std::array{1.0, -3.0}));
        model.parameter(L"int", L"int", Variant(LONG{5})).with(L"int", L"minimum", Variant(LONG{1}));
        model.parameter(L"bool", L"bool", Variant(false));
        model.parameter(L"choice", L"string", text(L"Fast"));
        model.with(L"choice", L"options", VariantArray::of(std::vector<std::wstring>{L"Fast", L"Exact"}));
        model.with(L"choice", L"restricted", Variant(true)).parameter(L"free", L"string", text(L"x"));
        model.parameter(L"bare", L"real", Variant(1.0)).parameter(L"bareInt", L"int", Variant(LONG{1}));
        loadModel();
    }

    HRESULT put(const wchar_t* name, const Variant& value) { return parameter(name)->put_value(value.get()); }
};

TEST_F(Parameters, rejectValuesThatDoNotConvertToTheirKind) {
    struct Row {
        const wchar_t* name;
        Variant value;
        const wchar_t* error;
    };
    const auto expected = [](const wchar_t* kind) {
        return std::wstring(L"Invalid type | Invalid data type: ") + kind +
               L" value expected | put_value | ICapeParameter";
    };
    const Variant reals = VariantArray::of(std::array{1.0});
    for (const Row& row :
         {Row{L"real", text(L"abc"), L"double precision"}, Row{L"int", text(L"abc"), L"integer"},
          Row{L"bool", text(L"perhaps"), L"boolean"}, Row{L"free", reals, L"string"}}) {
        const Variant before = unit.parameter(row.name);
        EXPECT_EQ(put(row.name, row.value), capeFailure);
        EXPECT_EQ(errorOf(parameter(row.name).get()), expected(row.error));
        EXPECT_EQ(VarCmp(unit.parameter(row.name).in(), before.in(), LOCALE_NEUTRAL, 0),
                  static_cast<HRESULT>(VARCMP_EQ));
    }
}

TEST_F(Parameters, storeConvertibleValuesRegardlessOfBoundsAndMode) {
    EXPECT_EQ(put(L"real", text(L"3.5")), S_OK);
    EXPECT_EQ(unit.parameter(L"real").real(), 3.5);
    EXPECT_EQ(put(L"real", Variant(1000.0)), S_OK);
    EXPECT_EQ(put(L"real", Variant(std::numeric_limits<double>::infinity())), S_OK);
    EXPECT_EQ(put(L"real", Variant(-1.7976931348623155e308)), S_OK);
    EXPECT_EQ(put(L"int", Variant(-7.0)), S_OK);
    EXPECT_EQ(unit.parameter(L"int").integer(), -7);
    EXPECT_EQ(put(L"bool", Variant(LONG{3})), S_OK);
    EXPECT_EQ(unit.parameter(L"bool").boolean(), VARIANT_TRUE);
}

TEST_F(Parameters, rejectAMissingValue) {
    for (const double missing : {-DBL_MAX, std::nan(""), -std::nan("7")})
        EXPECT_EQ(put(L"real", Variant(missing)), capeFailure);
    EXPECT_EQ(errorOf(parameter(L"real").get()),
              L"Invalid value | Value cannot be missing | put_value | ICapeParameter");
}

TEST_F(Parameters, acceptOnlyExactOptionsWhereRestricted) {
    EXPECT_EQ(put(L"choice", text(L"Exact")), S_OK);
    for (const wchar_t* other : {L"exact", L"", L"Exact "})
        EXPECT_EQ(put(L"choice", text(other)), capeFailure) << other;
    EXPECT_EQ(
        errorOf(parameter(L"choice").get()),
        L"Invalid value | The specified value is not valid for this parameter | put_value | ICapeParameter");
    Variant null;
    null.put()->vt = VT_BSTR;
    for (const VARIANT& none : {null.get(), toVariable(null), toVariable(null, VT_BSTR)}) {
        put(L"choice", text(L"none"));
        EXPECT_EQ(parameter(L"choice")->put_value(none), capeFailure);
        EXPECT_EQ(errorOf(parameter(L"choice").get()),
                  L"Invalid value | A value has not been specified | put_value | ICapeParameter");
    }
    EXPECT_EQ(unit.parameter(L"choice").text(), L"Exact");
    EXPECT_EQ(put(L"free", text(L"anything")), S_OK);
}

TEST_F(Parameters, keepTheLastFailureAcrossSuccesses) {
    put(L"real", text(L"abc"));
    put(L"real", Variant(4.0));
    EXPECT_EQ(errorOf(parameter(L"real").get()).substr(0, 12), L"Invalid type");
    put(L"real", Variant(-DBL_MAX));
    EXPECT_EQ(errorOf(parameter(L"real").get()).substr(0, 13), L"Invalid value");
}

TEST_F(Parameters, invalidateAndDirtyTheUnitWhenAValueChanges) {
    EXPECT_EQ(unit.validate(), L"");
    EXPECT_EQ(parameter(L"free")->Reset(), S_OK); // without a default, nothing changes
    put(L"real", text(L"abc"));
    EXPECT_EQ(unit.status(), CAPE_VALID);
    EXPECT_EQ(unit.as<IPersistStream>()->IsDirty(), S_FALSE);
    EXPECT_EQ(parameter(L"real")->Reset(), S_OK);
    EXPECT_EQ(unit.parameter(L"real").real(), 2.0);
    EXPECT_EQ(unit.status(), CAPE_NOT_VALIDATED);
    EXPECT_EQ(unit.as<IPersistStream>()->IsDirty(), S_OK);
}

TEST_F(Parameters, nameTheirOwnKindInOtherKindsSpecifications) {
    double real = 1;
    LONG integer = 1;
    Bstr string;
    VARIANT_BOOL boolean = VARIANT_TRUE;
    EXPECT_EQ(parameter<ICapeRealParameterSpec>(L"int")->get_LowerBound(&real), capeFailure);
    EXPECT_EQ(real, 0); // emptied first
    EXPECT_EQ(errorOf(parameter(L"int").get()),
              L"Parameter type error | Not a real parameter | get_LowerBound | ICapeRealParameterSpec");
    EXPECT_EQ(parameter<ICapeIntegerParameterSpec>(L"real")->get_DefaultValue(&integer), capeFailure);
    EXPECT_EQ(
        errorOf(parameter(L"real").get()),
        L"Parameter type error | Not an integer parameter | get_DefaultValue | ICapeIntegerParameterSpec");
    EXPECT_EQ(parameter<ICapeOptionParameterSpec>(L"bool")->get_RestrictedToList(&boolean), capeFailure);
    EXPECT_EQ(
        errorOf(parameter(L"bool").get()),
        L"Parameter type error | Not an option parameter | get_RestrictedToList | ICapeOptionParameterSpec");
    EXPECT_EQ(parameter<ICapeBooleanParameterSpec>(L"free")->Validate(VARIANT_TRUE, string.put(), &boolean),
              capeFailure);
    EXPECT_EQ(errorOf(parameter(L"free").get()),
              L"Parameter type error | Not a boolean parameter | Validate | ICapeBooleanParameterSpec");
}

TEST_F(Parameters, failForAnAbsentBoundOrDefault) {
    double real = 0;
    const auto bare = parameter<ICapeRealParameterSpec>(L"bare");
    const auto error = [](const wchar_t* text, const wchar_t* scope, const wchar_t* interfaceName) {
        return std::wstring(text) + L" | " + text + L" | " + scope + L" | " + interfaceName;
    };
    EXPECT_EQ(bare->get_DefaultValue(&real), capeFailure);
    EXPECT_EQ(errorOf(bare.get()),
              error(L"No default value", L"get_DefaultValue", L"ICapeRealParameterSpec"));
    EXPECT_EQ(bare->get_UpperBound(&real), capeFailure);
    EXPECT_EQ(errorOf(bare.get()), error(L"No minimum value", L"get_UpperBound", L"ICapeRealParameterSpec"));
    LONG integer = 0;
    const auto bareInt = parameter<ICapeIntegerParameterSpec>(L"bareInt");
    EXPECT_EQ(bareInt->get_UpperBound(&integer), capeFailure);
    EXPECT_EQ(errorOf(bareInt.get()),
              error(L"No maximum value", L"get_UpperBound", L"ICapeIntegerParameterSpec"));
}

TEST_F(Parameters, acceptValuesUpToTheirBounds) {
    struct Row {
        double value;
        const wchar_t* message;
    };
    for (const Row& row : {Row{1, L""}, Row{10, L""}, Row{0.999, L"Value below minimum bound"},
                           Row{10.001, L"Value above maximum bound"}, Row{std::nan(""), L""}}) {
        Bstr message(L"of an earlier call");
        VARIANT_BOOL isValid = VARIANT_FALSE;
        BSTR text = message.release();
        EXPECT_EQ(parameter<ICapeRealParameterSpec>(L"real")->Validate(row.value, &text, &isValid), S_OK);
        EXPECT_EQ(viewOf(text), row.message) << row.value;
        EXPECT_EQ(isValid, *row.message ? VARIANT_FALSE : VARIANT_TRUE);
        SysFreeString(text);
    }
    VARIANT_BOOL isValid = VARIANT_TRUE;
    Bstr message;
    EXPECT_EQ(parameter<ICapeIntegerParameterSpec>(L"int")->Validate(0, message.put(), &isValid), S_OK);
    EXPECT_EQ(isValid, VARIANT_FALSE);
    EXPECT_EQ(parameter<ICapeIntegerParameterSpec>(L"int")->Validate(0, nullptr, &isValid), E_POINTER);
}

TEST_F(Parameters, validateOptionsWithTheCodeThatHostsKnow) {
    struct Row {
        const wchar_t* name;
        const wchar_t* value;
        const wchar_t* message;
    };
    for (const Row& row :
         {Row{L"choice", L"Fast", L""}, Row{L"choice", L"fast", L"Invalid value for this parameter"},
          Row{L"choice", nullptr, L"Value cannot be empty"}, Row{L"free", nullptr, L""}}) {
        Bstr message;
        VARIANT_BOOL isValid = VARIANT_FALSE;
        const Bstr value = row.value ? Bstr(row.value) : Bstr();
        EXPECT_EQ(
            parameter<ICapeOptionParameterSpec>(row.name)->Validate(value.get(), message.put(), &isValid),
            E_NOTIMPL);
        EXPECT_EQ(message.view(), row.message);
        EXPECT_EQ(isValid, *row.message ? VARIANT_FALSE : VARIANT_TRUE);
    }
}

TEST_F(Parameters, showKindModeDimensionalityAndOptionsToTheHost) {
    model.values[L"parameter modes"] = VariantArray::of(
        std::vector<std::wstring>{L"input", L"output", L"input", L"input", L"input", L"input", L"input"});
    ASSERT_EQ(unit.load(model), S_OK);
    CapeParamMode mode = CAPE_INPUT;
    EXPECT_EQ(parameter(L"int")->get_Mode(&mode), S_OK);
    EXPECT_EQ(mode, CAPE_OUTPUT);
    EXPECT_EQ(parameter(L"int")->put_Mode(CAPE_OUTPUT), capeFailure);
    EXPECT_EQ(errorOf(parameter(L"int").get()),
              L"Access denied | The mode of this parameter cannot be changed | put_Mode | ICapeParameter");
    CapeParamType type = CAPE_REAL;
    EXPECT_EQ(parameter<ICapeParameterSpec>(L"choice")->get_Type(&type), S_OK);
    EXPECT_EQ(type, CAPE_OPTION);
    std::string error;
    VariantArray dimensions;
    EXPECT_EQ(parameter<ICapeParameterSpec>(L"real")->get_Dimensionality(dimensions.put()), S_OK);
    ASSERT_TRUE(readVariantArray(dimensions, VT_R8, error)) << error;
    EXPECT_EQ(dimensions.reals(), (std::vector{1.0, -3.0}));
    VariantArray options;
    EXPECT_EQ(parameter<ICapeOptionParameterSpec>(L"choice")->get_OptionList(options.put()), S_OK);
    ASSERT_TRUE(readVariantArray(options, VT_BSTR, error)) << error;
    EXPECT_EQ(options.texts(), (std::vector<std::wstring>{L"Fast", L"Exact"}));
    EXPECT_EQ(parameter<ICapeOptionParameterSpec>(L"free")->get_OptionList(options.put()), S_OK);
    EXPECT_TRUE(options.isEmpty());
    ComRef<IDispatch> specification;
    EXPECT_EQ(parameter(L"real")->get_Specification(specification.put()), S_OK);
    EXPECT_TRUE(specification.as<ICapeRealParameterSpec>());
}

TEST_F(Parameters, areFoundByNameOrNumberInALiveCollection) {
    const auto collection = parameters();
    const auto error = [&] { return errorOf(collection.get()); };
    LONG count = 0;
    EXPECT_EQ(collection->Count(&count), S_OK);
    EXPECT_EQ(count, 7);
    EXPECT_TRUE(item(collection, text(L"CHOICE")));
    EXPECT_FALSE(item(collection, text(L"2")));
    EXPECT_EQ(error(),
              L"Unknown parameter | Parameter by the given name does not exist | Item | ICapeCollection");
    EXPECT_EQ(item(collection, Variant(2.6)).get(), item(collection, Variant(LONG{3})).get());
    for (const Variant& outside : {Variant(LONG{8}), Variant(LONG{0}), Variant(LONG{-1}), Variant()}) {
        EXPECT_FALSE(item(collection, outside));
        EXPECT_EQ(error(),
                  L"Parameter index out of range | Parameter index out of range | Item | ICapeCollection");
    }
    EXPECT_FALSE(item(collection, VariantArray::of(std::array{1.0})));
    EXPECT_EQ(error(),
              L"Invalid parameter specification | Invalid parameter specification (expected 1-based index "
              L"or name) | Item | ICapeCollection");

    // A host may keep the collection and a parameter beyond a load and the unit's end.
    const auto kept = parameter(L"real");
    ModelBag other;
    other.script("1;");
    ASSERT_EQ(unit.load(other), S_OK);
    EXPECT_EQ(collection->Count(&count), S_OK);
    EXPECT_EQ(count, 0);
    unit.terminate();
    EXPECT_EQ(kept->put_value(Variant(3.0).get()), S_OK);
    EXPECT_EQ(collection->Count(&count), S_OK);
    EXPECT_EQ(count, 0);
}

} // namespace
} // namespace solvane
