#include "CapeError.h"

#include "CapeOpen.h"
#include "com/ComRef.h"
#include "com/Variant.h"

#include <array>
#include <cstdint>

namespace solvane {

namespace {

constexpr std::uint32_t firstCapeCode = 0x80040501;

/// Texts of the CAPE-OPEN codes, from `firstCapeCode` upward.
constexpr std::array capeCodeTexts{
    L"Failed to get error name for ECapeUnknown",
    L"invalid data",
    L"license problem",
    L"Bad Cape-Open parameter",
    L"Bad argument",
    L"Invalid argument",
    L"index out of bounds",
    L"current implementation related error",
    L"not implemented",
    L"implementation is limited",
    L"computation error",
    L"out of resources",
    L"out of memory",
    L"operation was timed out",
    L"initialization error",
    L"solution error",
    L"invalid order of invocations",
    L"invalid operation",
    L"storage / persistence error",
    L"illegal access",
    L"persistence error: not found",
    L"persistence system error",
    L"persistence overflow error",
    L"solver scope error",
    L"Hessian information not available",
    L"One or more of the requested thermodynamic properties are not set on the material",
};
static_assert(capeCodeTexts.size() == 0x8004051A - firstCapeCode + 1);

/// The result of one text getter of an error interface; empty if it fails.
template <class Interface>
std::wstring errorText(IUnknown* object, HRESULT (STDMETHODCALLTYPE Interface::*getter)(BSTR*)) {
    const ComRef<Interface> error = queryInterface<Interface>(object);
    Bstr text;
    if (!error || FAILED((error.get()->*getter)(text.put())))
        return {};
    return std::wstring(text.view());
}

} // namespace

std::wstring DescribeCapeError(IUnknown* object, HRESULT hr) {
    const auto code = static_cast<std::uint32_t>(hr) - firstCapeCode;
    if (code >= capeCodeTexts.size())
        return FormatHresultText(hr);
    std::wstring text = errorText(object, &ECapeUser::get_description);
    if (text.empty())
        text = errorText(object, &ECapeRoot::get_name);
    return text.empty() ? capeCodeTexts[code] : text;
}

std::wstring FormatHresultText(HRESULT hr) {
    std::array<wchar_t, 0x400> buffer{};
    DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                  static_cast<DWORD>(hr), LANG_USER_DEFAULT, buffer.data(),
                                  static_cast<DWORD>(buffer.size()), nullptr);
    if (length == 0) {
        DWORD_PTR arguments[] = {static_cast<DWORD>(hr)};
        length = FormatMessageW(FORMAT_MESSAGE_FROM_STRING | FORMAT_MESSAGE_ARGUMENT_ARRAY,
                                L"error code 0x%1!08X!", 0, LANG_USER_DEFAULT, buffer.data(),
                                static_cast<DWORD>(buffer.size()), reinterpret_cast<va_list*>(arguments));
    }
    std::wstring text(buffer.data(), length);
    if (text.ends_with(L'\n'))
        text.pop_back();
    if (text.ends_with(L'\r'))
        text.pop_back();
    return text.empty() ? L"<unknown error>" : text;
}

} // namespace solvane
