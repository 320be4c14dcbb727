/// The commands that read data of all pure compounds at once, in the run's order. They return true with the
/// reply written, or false with the failure's text.
#pragma once

#include <string>

namespace solvane {

struct CalculationRun;
class RequestReader;
class ReplyWriter;

/// A constant of every compound.
/// Request: text constant. Reply: uint32 0 and nComp doubles, NaN where a compound has no value, or uint32 1
/// and nComp texts, empty where it has none.
/// If a 1.0 material fails to return the constant, it returns true without writing a reply, so that the
/// request's code stays in place of the status.
[[nodiscard]] bool getCompoundConstant(CalculationRun& run, RequestReader& request, ReplyWriter& reply,
                                       std::string& error);

/// A property of every pure compound at a temperature, K, or a pressure, Pa.
/// Request: double temperature or pressure; text property, which may end with ".Dtemperature" or
/// ".Dpressure". Reply: nComp doubles. A 1.0 material calculates, so that its state changes.
[[nodiscard]] bool getTDependentProperty(CalculationRun& run, RequestReader& request, ReplyWriter& reply,
                                         std::string& error);
[[nodiscard]] bool getPDependentProperty(CalculationRun& run, RequestReader& request, ReplyWriter& reply,
                                         std::string& error);

} // namespace solvane
