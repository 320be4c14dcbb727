/// Texts between the script, whose names are ANSI, and the host's materials.
#pragma once

#include "com/Failure.h"
#include "com/Variant.h"

#include <unknwn.h>

#include <string>
#include <string_view>

namespace solvane {

/// The texts that the calls on materials need all the time, made once.
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

/// What stands for a calculation type or a basis that a call doesn't give.
inline constexpr BSTR notGiven = nullptr;

/// An empty list of compounds, by which a 1.0 material understands all of them.
inline constexpr VARIANT allCompounds{};

/// A name from the script for a host, through the thread's code page.
Bstr hostText(std::string_view text);
/// A host's text for the script.
std::string scriptText(std::wstring_view text);

/// What the host's `object` has to say of the failure `hr` of one of its methods.
std::string describeFailure(IUnknown& object, HRESULT hr);

} // namespace solvane
