/// The commands that read a feed, and the one that tells the units of what is read. All return true with the
/// reply written, or false with the failure's text.
#pragma once

#include <string>

namespace solvane {

struct CalculationRun;
class RequestReader;
class ReplyWriter;

/// One overall property of a feed, of those of FlashProperties.h but vaporFraction. One that the feed's
/// material is not asked for directly is calculated on a copy, which takes the calculation material's place.
/// Request: int32 feed, from 1; text property. Reply: uint32 0 for a scalar, 1 for a vector; the double or
/// the nComp doubles, in SI units on a mole basis.
[[nodiscard]] bool getFeedProp(CalculationRun& run, RequestReader& request, ReplyWriter& reply,
                               std::string& error);

/// The equilibrium state of a feed as it stands.
/// Request: int32 feed, from 1. Reply: see Equilibrium.h.
[[nodiscard]] bool getFeedEquilibrium(CalculationRun& run, RequestReader& request, ReplyWriter& reply,
                                      std::string& error);

/// The unit of measure of any property name that the script can use, with or without a derivative suffix.
/// Request: text name. Reply: text unit.
[[nodiscard]] bool getPropertyUnit(CalculationRun& run, RequestReader& request, ReplyWriter& reply,
                                   std::string& error);

} // namespace solvane
