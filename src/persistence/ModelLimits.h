/// The limits of a model. Models may come from strangers, so loading rejects larger ones; saving applies the
/// same limits, so that a saved model loads again.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace solvane::modelLimits {

/// Bytes of a description. The XML library and the unit need several times that for its texts.
inline constexpr std::size_t document = 50'000'000;
/// Elements of a description, including comments and instructions: the XML library keeps them all.
inline constexpr std::size_t elements = 100'000;
/// References to undeclared entities. A valid model has none.
inline constexpr std::size_t unknownReferences = 1'000;
/// Attributes of an element. The XML library compares each with all the others.
inline constexpr std::size_t attributes = 64;
/// Bytes of a tag, including its escaped values. The XML library accepts ten million.
inline constexpr std::size_t tag = 9'900'000;
/// Files besides the script. Each takes a millisecond or more.
inline constexpr std::size_t files = 1'000;
/// Characters of a load's warnings, about as many as a message box can show.
inline constexpr std::size_t warnings = 2'000;

/// The number of bytes that a container may unpack to. A few bytes of a hostile one would fill the disk.
constexpr std::uint64_t unpacked(std::uint64_t packed) {
    constexpr std::uint64_t alwaysAllowed = 256U << 20;
    constexpr std::uint64_t timesPacked = 100;
    return std::max(alwaysAllowed, timesPacked * packed);
}

inline constexpr char unpacksToTooMuch[] = "the model unpacks to more than a model can hold";

} // namespace solvane::modelLimits
