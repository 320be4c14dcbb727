/// The commands of the channel that touch no thermodynamics. All return true with the reply written, or false
/// with the failure's text. The parameters' commands ignore the parameter's mode, and a value that a script
/// sets does not make the unit dirty.
#pragma once

#include <string>

namespace solvane {

struct CalculationRun;
class RequestReader;
class ReplyWriter;

[[nodiscard]] bool setReport(CalculationRun& run, RequestReader& request, ReplyWriter& reply,
                             std::string& error);
[[nodiscard]] bool getParameter(CalculationRun& run, RequestReader& request, ReplyWriter& reply,
                                std::string& error);
[[nodiscard]] bool setParameter(CalculationRun& run, RequestReader& request, ReplyWriter& reply,
                                std::string& error);
[[nodiscard]] bool getUnitName(CalculationRun& run, RequestReader& request, ReplyWriter& reply,
                               std::string& error);
[[nodiscard]] bool getFeedCount(CalculationRun& run, RequestReader& request, ReplyWriter& reply,
                                std::string& error);
[[nodiscard]] bool getProductCount(CalculationRun& run, RequestReader& request, ReplyWriter& reply,
                                   std::string& error);
/// Without a text or a log it writes no reply, so that the request's code stays in place of the
/// status.
[[nodiscard]] bool logMessage(CalculationRun& run, RequestReader& request, ReplyWriter& reply,
                              std::string& error);

} // namespace solvane
