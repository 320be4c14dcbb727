#include "com/VariantArray.h"

#include <gtest/gtest.h>

#include <array>
#include <climits>

namespace solvane {
namespace {

/// An array of `elementType` with one bound per dimension: elements, lower bound.
VariantArray makeArray(VARTYPE elementType, std::vector<SAFEARRAYBOUND> bounds) {
    VariantArray array;
    VARIANT* place = array.put();
    place->parray = SafeArrayCreate(elementType, static_cast<UINT>(bounds.size()), bounds.data());
    place->vt = static_cast<VARTYPE>(VT_ARRAY | elementType);
    return array;
}

TEST(ReadVariantArray, takesTheHostsBounds) {
    for (const LONG lowerBound : {0L, 1L, -5L, LONG_MAX - 3}) {
        VariantArray array = makeArray(VT_R8, {{3, lowerBound}});
        for (LONG i = 0; i < 3; ++i) {
            double value = 10.0 + i;
            LONG index = lowerBound + i;
            SafeArrayPutElement(array.get().parray, &index, &value);
        }
        std::string error;
        ASSERT_TRUE(readVariantArray(array, VT_R8, error)) << error;
        EXPECT_EQ(array.lowerBound(), lowerBound);
        EXPECT_EQ(array.reals(), (std::vector{10.0, 11.0, 12.0}));
    }
}

TEST(ReadVariantArray, readsEmptyVariantsAndArraysAsNoElements) {
    std::string error;
    VariantArray nothing;
    EXPECT_TRUE(readVariantArray(nothing, VT_BSTR, error));
    EXPECT_TRUE(nothing.texts().empty());
    VariantArray empty = makeArray(VT_R8, {{0, 0}});
    EXPECT_TRUE(readVariantArray(empty, VT_R8, error));
    EXPECT_TRUE(empty.reals().empty());
}

TEST(ReadVariantArray, forgetsTheFormerCountWhenRefilled) {
    VariantArray array = VariantArray::of(std::array{1.0, 2.0, 3.0});
    std::string error;
    ASSERT_TRUE(readVariantArray(array, VT_R8, error));
    VARIANT* place = array.put();
    *place = VariantArray::of(std::array{7.0}).release();
    ASSERT_TRUE(readVariantArray(array, VT_R8, error));
    EXPECT_EQ(array.reals(), std::vector{7.0});
}

TEST(VariantArray, keepsNullTextsAndReadsThemAsEmpty) {
    VariantArray array = VariantArray::ofTexts({L"fraction", nullptr, L""});
    std::string error;
    ASSERT_TRUE(readVariantArray(array, VT_BSTR, error));
    EXPECT_EQ(array.texts(), (std::vector<std::wstring>{L"fraction", L"", L""}));
    EXPECT_FALSE(array.isNullText(0));
    EXPECT_TRUE(array.isNullText(1));
    EXPECT_FALSE(array.isNullText(2));
}

} // namespace
} // namespace solvane
