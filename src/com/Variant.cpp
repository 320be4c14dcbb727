#include "Variant.h"

#include <new>

namespace solvane {

BSTR newBstr(std::wstring_view text) {
    BSTR result = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    if (!result)
        throw std::bad_alloc();
    return result;
}

} // namespace solvane
