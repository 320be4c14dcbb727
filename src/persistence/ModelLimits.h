/// How much a model can hold. A model can be a stranger's, so loading refuses more; saving refuses the same,
/// so that a saved model loads again.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace solvane::modelLimits {

/// Bytes of a description. The XML library and the unit need several times as much for its texts.
inline constexpr std::size_t document = 50'000'000;
/// Elements of a description, comments and instructions included: the XML library keeps them all.
inline constexpr std::size_t elements = 100'000;
/// References to entities that nobody declared, none of which a model can have.
inline constexpr std::size_t unknownReferences = 1'000;
/// Attributes of an element. The XML library compares each with all others.
inline constexpr std::size_t attributes = 64;
/// Bytes of a tag, with the values in it as they are written. The XML library takes ten million.
inline constexpr std::size_t tag = 9'900'000;
/// Files besides the script. Each takes the system a millisecond or more.
inline constexpr std::size_t files = 1'000;
/// Characters of the warnings of a load, about as many as a message box can show.
inline constexpr std::size_t warnings = 2'000;

/// Bytes that a container of so many may unpack to. A few bytes of a hostile one would fill the disk.
constexpr std::uint64_t unpacked(std::uint64_t packed) {
    constexpr std::uint64_t alwaysAllowed = 256U << 20;
    constexpr std::uint64_t timesPacked = 100;
    return std::max(alwaysAllowed, timesPacked * packed);
}

} // namespace solvane::modelLimits
