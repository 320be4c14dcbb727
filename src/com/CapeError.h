/// Texts for failures of other components: the host's materials, Matlab's automation server.
#pragma once

#include <windows.h>

#include <unknwn.h>

#include <string>

namespace solvane {

/// What a failing method returns to the host; its object holds the texts.
inline constexpr HRESULT capeFailure = static_cast<HRESULT>(0x80040501);

/// Describes the failure `hr` that a method of another component's `object` returned: the object's own words
/// for a CAPE-OPEN code, if it has any, and the system's text for any other code.
std::wstring DescribeCapeError(IUnknown* object, HRESULT hr);

/// The system's text for a code, without its line end, or "error code 0x0123ABCD" if it has none.
std::wstring FormatHresultText(HRESULT hr);

} // namespace solvane
