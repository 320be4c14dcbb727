/// The messages in the block of memory that a run shares with the gateway in Matlab's process.
///
/// A request is a uint32 command code and the command's fields; a reply, in the same memory, a uint32 status
/// and its fields. Fields follow one another without padding: int32, uint32, double, and NUL-terminated text
/// in the ANSI code page. A handler reads its whole request before it writes the first field of its reply.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace solvane {

inline constexpr std::uint32_t statusSuccess = 0;
inline constexpr std::uint32_t statusFailure = 1;

/// What is thrown, as a plain narrow string, where a field does not fit the block.
inline constexpr const char* memoryOverrun = "memory overrun";

/// The gateway is trusted to send well-formed requests; nothing outside the block is read all the same.
class RequestReader {
public:
    /// Begins after the command code.
    explicit RequestReader(std::span<const std::byte> block)
        : block_(block), position_(sizeof(std::uint32_t)) {}

    std::int32_t integer();
    std::uint32_t unsignedInteger();
    double real();
    std::vector<double> reals(std::size_t count);
    /// Up to its NUL or the block's end.
    std::string text();

private:
    void copy(void* to, std::size_t bytes);

    std::span<const std::byte> block_;
    std::size_t position_;
};

/// Every field is tested against the block's end at the moment it is written.
class ReplyWriter {
public:
    explicit ReplyWriter(std::span<std::byte> block) : block_(block) {}

    /// The status word; the first thing that a successful handler writes.
    void success() { unsignedInteger(statusSuccess); }

    void integer(std::int32_t value) { copy(&value, sizeof value); }
    void unsignedInteger(std::uint32_t value) { copy(&value, sizeof value); }
    void real(double value) { copy(&value, sizeof value); }
    void reals(std::span<const double> values) { copy(values.data(), values.size_bytes()); }
    /// The word that says what follows (ValueTags.h).
    template <class Tag>
        requires std::is_enum_v<Tag>
    void tag(Tag value) {
        unsignedInteger(static_cast<std::uint32_t>(value));
    }
    /// Up to and with its first NUL.
    void text(const std::string& value) { copy(value.c_str(), std::strlen(value.c_str()) + 1); }

    /// Bytes that are left from here to the block's end.
    std::size_t room() const { return block_.size() - position_; }

private:
    void copy(const void* from, std::size_t bytes);

    std::span<std::byte> block_;
    std::size_t position_ = 0;
};

/// Writes the failure record: the status and the message, cut with "..." where it is longer than the block.
void SetChannelError(std::span<std::byte> block, std::string_view message);

} // namespace solvane
