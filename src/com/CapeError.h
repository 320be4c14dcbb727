/// Texts for failures of other components: the host's materials, Matlab's automation server.
#pragma once

#include <windows.h>

#include <unknwn.h>

#include <string>

namespace solvane {

/// What a method that failed returns to the host, with the texts stored on its object.
inline constexpr HRESULT capeFailure = static_cast<HRESULT>(0x80040501);

/// The text for a failure `hr` that a method of another component's `object` returned. A CAPE-OPEN code is
/// described by the object itself, as far as it can, any other code by the system.
std::wstring DescribeCapeError(IUnknown* object, HRESULT hr);

/// The system's text for a code, without its line end; "error code 0x0123ABCD" where it has none.
std::wstring FormatHresultText(HRESULT hr);

} // namespace solvane
