#include "ChannelFrame.h"

#include <algorithm>

namespace solvane {

void RequestReader::copy(void* to, std::size_t bytes) {
    if (bytes > block_.size() - position_)
        throw memoryOverrun;
    std::memcpy(to, block_.data() + position_, bytes);
    position_ += bytes;
}

std::int32_t RequestReader::integer() {
    std::int32_t value = 0;
    copy(&value, sizeof value);
    return value;
}

std::uint32_t RequestReader::unsignedInteger() {
    std::uint32_t value = 0;
    copy(&value, sizeof value);
    return value;
}

double RequestReader::real() {
    double value = 0;
    copy(&value, sizeof value);
    return value;
}

std::vector<double> RequestReader::reals(std::size_t count) {
    if (count > (block_.size() - position_) / sizeof(double))
        throw memoryOverrun;
    std::vector<double> values(count);
    if (count > 0)
        copy(values.data(), count * sizeof(double));
    return values;
}

std::string RequestReader::text() {
    const char* begin = reinterpret_cast<const char*>(block_.data()) + position_;
    const char* end = reinterpret_cast<const char*>(block_.data()) + block_.size();
    const char* terminator = std::find(begin, end, '\0');
    position_ += static_cast<std::size_t>(terminator - begin) + (terminator == end ? 0 : 1);
    return {begin, terminator};
}

void ReplyWriter::copy(const void* from, std::size_t bytes) {
    if (bytes > room())
        throw memoryOverrun;
    if (bytes > 0)
        std::memcpy(block_.data() + position_, from, bytes);
    position_ += bytes;
}

void SetChannelError(std::span<std::byte> block, std::string_view message) {
    constexpr std::string_view ellipsis = "...";
    constexpr std::size_t textOffset = sizeof statusFailure;
    std::memcpy(block.data(), &statusFailure, sizeof statusFailure);
    char* place = reinterpret_cast<char*>(block.data()) + textOffset;
    const std::size_t room = block.size() - textOffset - 1;
    if (message.size() > room) {
        const std::size_t kept = room - ellipsis.size();
        std::memcpy(place, message.data(), kept);
        std::memcpy(place + kept, ellipsis.data(), ellipsis.size());
        place[room] = '\0';
    } else {
        std::memcpy(place, message.data(), message.size());
        place[message.size()] = '\0';
    }
}

} // namespace solvane
