/// Texts between the script, whose names are ANSI, and the host's materials.
#pragma once

#include "com/Failure.h"
#include "com/Variant.h"

#include <unknwn.h>

#include <string>
#include <string_view>

namespace solvane {

/// The texts that most calls on materials need, created once.
struct HostTexts {
    Bstr pressure{L"pressure"};
    Bstr temperature{L"temperature"};
    Bstr fraction{L"fraction"};
    Bstr phaseFraction{L"phaseFraction"};
    Bstr totalFlow{L"totalFlow"};
    Bstr flow{L"flow"};
    Bstr mole{L"mole"};
    Bstr overall{L"overall"};
    Bstr mixture{L"mixture"};
    Bstr pure{L"pure"};
    Bstr vapor{L"vapor"};
};
extern const HostTexts hostTexts;

/// The solution type of every 1.1 equilibrium calculation.
BSTR unspecifiedSolution();

/// Stands for a calculation type or a basis that a call does not specify.
inline constexpr BSTR notGiven = nullptr;

/// An empty list of compounds, which means all of them to a 1.0 material.
inline constexpr VARIANT allCompounds{};

/// Converts a name from the script for a host, through the thread's code page.
Bstr hostText(std::string_view text);
/// Converts a host's text for the script.
std::string scriptText(std::wstring_view text);

/// Describes the failure `hr` of a method of the host's `object`, in the object's own words if it has any.
std::string describeFailure(IUnknown& object, HRESULT hr);

} // namespace solvane
