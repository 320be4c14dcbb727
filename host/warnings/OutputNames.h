/// Of which stream an output is, by its name.
#pragma once

#include "UnitReview.h"

#include <string_view>

namespace solvane::host {

/// The stream whose state or flow the output surely is: the name has nothing but its name and words such as
/// "mass flow of", or "outlet" where there is one product. Null if there is none.
const StreamResult* namedStream(std::string_view output, const UnitReview& review);

/// Whether the name of the stream is a part of the other's, as "Gas" of "Raw gas".
bool isPartOfName(const StreamResult& stream, const StreamResult& other);

/// Whether the name has words for states and flows alone, such as "total mass flow".
bool isBareQuantity(std::string_view output);

} // namespace solvane::host
