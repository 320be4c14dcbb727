#include "BlockText.h"

#include "CodePage.h"

#include <algorithm>
#include <array>

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
        error = "must be text in single quotes";
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
