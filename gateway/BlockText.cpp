#include "BlockText.h"

#include "CodePage.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace solvane::gateway {

namespace {

template <typename Characters>
mxArray* makeCharRow(const Characters& characters) {
    const std::array<mwSize, 2> dimensions{characters.empty() ? 0u : 1u,
                                           static_cast<mwSize>(characters.size())};
    mxArray* array = mxCreateCharArray(dimensions.size(), dimensions.data());
    std::copy(characters.begin(), characters.end(),
              static_cast<typename Characters::value_type*>(mxGetData(array)));
    return array;
}

bool toCodePage(const mxArray* array, std::string& bytes) {
    const void* data = mxGetData(array);
    const std::size_t size = mxGetNumberOfElements(array);
#ifdef _WIN32
    if (isMatlab())
        return utf16ToCodePage({static_cast<const char16_t*>(data), size}, bytes);
#endif
    return utf8ToCodePage({static_cast<const char*>(data), size}, bytes);
}

} // namespace

bool readText(const mxArray* array, std::string& bytes, std::string& error) {
    if (!mxIsChar(array) || (mxGetM(array) != 1 && mxGetNumberOfElements(array) != 0)) {
        error = "must be text in single quotes" + gotText(array);
        return false;
    }
    bytes.clear();
    if (mxGetNumberOfElements(array) == 0)
        return true;
    if (!toCodePage(array, bytes)) {
        error = "holds a character that is not in the system's ANSI code page";
        return false;
    }
    if (bytes.find('\0') != std::string::npos) {
        error = "must not hold the character with code 0";
        return false;
    }
    return true;
}

std::string gotText(const mxArray* array) {
    const std::size_t count = mxGetNumberOfElements(array);
    const std::string size = std::to_string(mxGetM(array)) + " by " + std::to_string(mxGetN(array));
    if (mxIsChar(array))
        return mxGetM(array) > 1 ? ", got " + size + " characters; [a; b] stacks texts: write [a b]"
                                 : ", got text";
    if (mxIsCell(array))
        return ", got a cell, " + size;
    if (!mxIsNumeric(array) && !mxIsLogical(array))
        return ", got a value of another kind";
    if (mxIsComplex(array) || mxIsSparse(array))
        return ", got " + size + (mxIsSparse(array) ? " sparse" : " complex") + " values";
    if (count == 1) {
        std::array<char, 32> number;
        std::snprintf(number.data(), number.size(), ", got %.6g", mxGetScalar(array));
        return number.data();
    }
    if (!mxIsDouble(array))
        return ", got " + size + " values that are not doubles, as int32(x) makes them; write double(x)";
    const double* const values = mxGetPr(array);
    const double* const bad =
        std::find_if_not(values, values + count, [](double x) { return std::isfinite(x); });
    return ", got " + size + " values" +
           (bad == values + count ? ""
                                  : ", number " + std::to_string(bad - values + 1) +
                                        (std::isnan(*bad) ? " is NaN" : " is infinite"));
}

mxArray* makeText(std::string_view bytes) {
#ifdef _WIN32
    if (isMatlab())
        return makeCharRow(codePageToUtf16(bytes));
#endif
    return makeCharRow(codePageToUtf8(bytes));
}

std::string messageText(const std::string& bytes) {
    return isMatlab() ? bytes : codePageToUtf8(bytes);
}

} // namespace solvane::gateway
