/// What a script may have meant by a wrong name.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace solvane {

/// The known name that is closest to this one, whatever the case of its letters. Empty if none is close.
std::string closestName(std::span<const std::string> known, std::string_view name);

/// Only the unit knows its parameters: it leaves the one that was meant in the block, after the failure
/// record about the wrong name. The record itself stays as it is, and a gateway need not look for more.
void writeMeantName(std::span<std::byte> block, std::string_view wrong, std::string_view meant);
/// What the bytes after the failure record say. Empty if they are about no name or another one, since a block
/// keeps what was in it.
std::string readMeantName(std::string_view afterRecord, std::string_view wrong);

/// The most bytes that `writeMeantName` leaves.
inline constexpr std::size_t meantNameSize = 256;

} // namespace solvane
