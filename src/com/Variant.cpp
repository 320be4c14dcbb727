#include "Variant.h"

#include <cstdint>
#include <cwchar>
#include <new>

namespace solvane {

namespace {

bool isReadable(const void* begin, std::size_t bytes) {
    auto address = reinterpret_cast<std::uintptr_t>(begin);
    const std::uintptr_t end = address + bytes;
    if (end < address)
        return false;
    while (address < end) {
        MEMORY_BASIC_INFORMATION pages{};
        if (VirtualQuery(reinterpret_cast<const void*>(address), &pages, sizeof pages) == 0 ||
            pages.State != MEM_COMMIT || (pages.Protect & (PAGE_NOACCESS | PAGE_GUARD)) != 0)
            return false;
        address = reinterpret_cast<std::uintptr_t>(pages.BaseAddress) + pages.RegionSize;
    }
    return true;
}

/// A VARIANT with the caller's text, which may be null.
Variant copyText(BSTR text) {
    if (text)
        return Variant(callersText(text));
    Variant null;
    null.put()->vt = VT_BSTR;
    return null;
}

} // namespace

std::wstring_view callersText(BSTR text) {
    if (!text)
        return {};
    const std::size_t shown = std::wcslen(text);
    const std::size_t length = SysStringLen(text);
    // A BSTR ends with a terminator, and its text may contain others.
    const bool isBstr = length == shown || (length > shown && isReadable(text, (length + 1) * sizeof *text) &&
                                            text[length] == L'\0');
    return {text, isBstr ? length : shown};
}

BSTR newBstr(std::wstring_view text) {
    BSTR result = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    if (!result)
        throw std::bad_alloc();
    return result;
}

void replaceBstr(BSTR& place, std::wstring_view text) {
    Bstr replacement(text);
    SysFreeString(std::exchange(place, replacement.release()));
}

bool readArgument(const VARIANT& given, Variant& value) {
    const VARIANT* source = &given;
    if (given.vt == (VT_VARIANT | VT_BYREF))
        source = given.pvarVal;
    if (!source || source->vt == (VT_VARIANT | VT_BYREF) || ((source->vt & VT_BYREF) && !source->byref))
        return false;
    if (source->vt == VT_BSTR || source->vt == (VT_BSTR | VT_BYREF)) {
        value = copyText(source->vt == VT_BSTR ? source->bstrVal : *source->pbstrVal);
        return true;
    }
    return SUCCEEDED(VariantCopyInd(value.put(), const_cast<VARIANT*>(source)));
}

} // namespace solvane
