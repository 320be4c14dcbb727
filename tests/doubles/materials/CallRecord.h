/// The calls that doubles of a host's objects received, as text, and the faults that a test asks for.
#pragma once

#include "com/Variant.h"

#include <functional>
#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

namespace solvane {

/// What goes wrong at one call.
struct Fault {
    /// How the text of the call begins, as "copy.GetProp(enthalpy, Vapor".
    std::string call;
    /// A failure, or S_OK with an odd result.
    HRESULT result = S_OK;
    /// What the object then says of its failure.
    std::wstring text;
    /// The odd result: what stands in the out-VARIANT number `output`, from 0. A call that is to give an
    /// object gives none.
    Variant value;
    std::size_t output = 0;
};

class CallRecord {
public:
    /// In their order, as "SetProp(fraction, overall, empty, null, mole, R8[0.5, 0.5])".
    std::vector<std::string> calls;
    /// What the host does inside each call, before the material answers.
    std::function<void(const std::string& call)> onCall;

    void add(Fault fault) { faults_.push_back(std::move(fault)); }
    /// Fails the call number `number`, from 1, whatever it is.
    void failAt(std::size_t number, HRESULT result, std::wstring text) {
        failingCall_ = number;
        failure_ = Fault{.call = {}, .result = result, .text = std::move(text), .value = {}};
    }

    /// Notes a call. A fault for it strikes once.
    std::optional<Fault> note(std::string call);

    /// The calls whose text begins so.
    std::vector<std::string> callsOf(const std::string& beginning) const;

private:
    std::vector<Fault> faults_;
    std::size_t failingCall_ = 0;
    Fault failure_;
};

/// The texts of arguments: "null" for a null string, "empty" for VT_EMPTY, an array as "R8[1, 2]",
/// "BSTR[a, null]" or "I4[0]".
std::string describe(BSTR text);
std::string describe(double value);
std::string describe(const VARIANT& value);

std::string describeCall(const std::string& name, std::initializer_list<std::string> arguments);

} // namespace solvane
