#pragma once

#include <string>

namespace solvane {

struct CalculationRun;
class RequestReader;
class ReplyWriter;

/// States a product, which is flashed accordingly when the script has ended. A later call for the same
/// product replaces an earlier one. Request: int32 product, from 1; double total flow, mol/s; nComp doubles,
/// mole fractions; double and double, the flash constraints' values; text and text, their names. No reply
/// fields. A failure keeps the earlier statement.
[[nodiscard]] bool setProduct(CalculationRun& run, RequestReader& request, ReplyWriter& reply,
                              std::string& error);

} // namespace solvane
