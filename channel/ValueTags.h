/// The words of a request or a reply that say what follows them.
#pragma once

#include <cstdint>

namespace solvane {

/// Before a parameter's value. A double follows a `real`, an int32 an `integer` or a `boolean`.
enum class ValueTag : std::uint32_t { real = 0, integer = 1, boolean = 2, text = 3 };

/// Before the values of a property, column by column, of nComp compounds.
enum class ValueShape : std::uint32_t {
    scalar = 0,
    vector = 1,        ///< nComp by 1
    matrix = 2,        ///< nComp by nComp
    vectorOfPair = 3,  ///< nComp by 2: derivatives for the composition of one phase, then of the other
    matricesOfPair = 4 ///< nComp by 2 nComp: the same of each value of a vector
};

/// Before the values of a compound constant, one a compound.
enum class ConstantKind : std::uint32_t { numbers = 0, texts = 1 };

} // namespace solvane
