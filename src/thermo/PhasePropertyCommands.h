/// The commands that calculate a property of one phase, or of two, at a given state. Both
/// work on the calculation material, which keeps what was set before a failure; both return true with the
/// reply written, or false with the failure's text.
///
/// Request: double temperature, K; double pressure, Pa; nComp doubles for each phase, mole fractions; text
/// property, which may end with a derivative's suffix such as ".Dtemperature"; text for each phase, its
/// label. Reply: uint32 shape, then the doubles, in SI units on a mole basis.
#pragma once

#include <string>

namespace solvane {

struct CalculationRun;
class RequestReader;
class ReplyWriter;

/// Shapes: 0 one value, 1 nComp values, 2 nComp * nComp values.
[[nodiscard]] bool getSinglePhaseProperty(CalculationRun& run, RequestReader& request, ReplyWriter& reply,
                                          std::string& error);

/// Shapes of a surface tension: 0 one value, 3 2 * nComp values; of a K-value: 1 nComp values,
/// 4 2 * nComp * nComp values.
[[nodiscard]] bool getTwoPhaseProperty(CalculationRun& run, RequestReader& request, ReplyWriter& reply,
                                       std::string& error);

} // namespace solvane
