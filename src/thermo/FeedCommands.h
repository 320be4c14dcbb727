/// The commands that read a feed, and the one that returns units of measure. All return true with the reply
/// written, or false with the failure's text.
#pragma once

#include <string>

namespace solvane {

struct CalculationRun;
class RequestReader;
class ReplyWriter;

/// One overall property of a feed: any of FlashProperties.h except vaporFraction. Calculates a property that
/// cannot be read directly on a copy, which becomes the calculation material.
/// Request: int32 feed, from 1; text property. Reply: uint32 0 for a scalar, 1 for a vector; the double or
/// the nComp doubles, in SI units on a mole basis.
[[nodiscard]] bool getFeedProp(CalculationRun& run, RequestReader& request, ReplyWriter& reply,
                               std::string& error);

/// The current equilibrium state of a feed.
/// Request: int32 feed, from 1. Reply: see Equilibrium.h.
[[nodiscard]] bool getFeedEquilibrium(CalculationRun& run, RequestReader& request, ReplyWriter& reply,
                                      std::string& error);

/// The unit of measure of any property name that the script can use, with or without a derivative suffix.
/// Request: text name. Reply: text unit.
[[nodiscard]] bool getPropertyUnit(CalculationRun& run, RequestReader& request, ReplyWriter& reply,
                                   std::string& error);

} // namespace solvane
