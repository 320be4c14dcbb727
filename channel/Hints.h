/// What adds to the unit's message about a wrong argument: the name that was probably meant, or the limits.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace solvane {

/// The known name that is closest to this one, whatever the case of its letters. Empty if none is close: a
/// quarter of the letters may be wrong, and no more than `mostWrong`.
std::string closestName(std::span<const std::string> known, std::string_view name,
                        std::size_t mostWrong = static_cast<std::size_t>(-1));

/// The closest name; otherwise the only one of which this is a short form: each of its words begins one of
/// that name, as those of "mixed temp" do in "mixed temperature". Empty if there is none, or more than one.
std::string probableName(std::span<const std::string> known, std::string_view name);

/// Only the unit knows its ports and parameters: it leaves the hint in the block, after the failure record.
/// The record itself stays as it is, and a gateway need not look for more. `about` is the wrong name, or the
/// record's text.
void writeHint(std::span<std::byte> block, std::string_view about, std::string_view hint);
/// The hint in the bytes after the failure record. Empty if they have none, or one about something else,
/// since a block keeps what was in it.
std::string readHint(std::string_view afterRecord, std::string_view about);

/// The most bytes that `writeHint` leaves.
inline constexpr std::size_t hintSize = 256;

} // namespace solvane
