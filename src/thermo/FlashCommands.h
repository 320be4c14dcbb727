/// The commands that flash a composition on the calculation material. Both return true with the reply
/// written, or false with the failure's text; the calculation material keeps what was set before a failure.
///
/// Request: nComp doubles, mole fractions; double and double, the constraints' values; text and text, their
/// names; values in SI units on a mole basis.
#pragma once

#include <string>

namespace solvane {

struct CalculationRun;
class RequestReader;
class ReplyWriter;

/// Reply: see Equilibrium.h.
[[nodiscard]] bool flashEquilibrium(CalculationRun& run, RequestReader& request, ReplyWriter& reply,
                                    std::string& error);

/// The request also has the text of the property to return, after the names. Reply: double.
[[nodiscard]] bool flashProperty(CalculationRun& run, RequestReader& request, ReplyWriter& reply,
                                 std::string& error);

} // namespace solvane
