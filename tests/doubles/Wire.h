#pragma once

#include "channel/ChannelFrame.h"
#include "channel/CommandCode.h"
#include "channel/ValueTags.h"

#include <cstdint>
#include <string>
#include <vector>

namespace solvane {

/// Bytes of the wire, written in order.
class Wire {
public:
    Wire& operator<<(std::uint32_t number) { return append(&number, sizeof number); }
    Wire& operator<<(std::int32_t number) { return append(&number, sizeof number); }
    Wire& operator<<(CommandCode code) { return append(&code, sizeof code); }
    Wire& operator<<(ValueTag tag) { return append(&tag, sizeof tag); }
    Wire& operator<<(double number) { return append(&number, sizeof number); }
    /// With its NUL.
    Wire& operator<<(const std::string& text) { return append(text.c_str(), text.size() + 1); }
    Wire& operator<<(const std::vector<double>& numbers) {
        return append(numbers.data(), numbers.size() * sizeof(double));
    }
    const std::string& bytes() const { return bytes_; }

private:
    Wire& append(const void* data, std::size_t size) {
        bytes_.append(static_cast<const char*>(data), size);
        return *this;
    }
    std::string bytes_;
};

Wire wireOf(const auto&... parts) {
    Wire wire;
    (wire << ... << parts);
    return wire;
}
inline Wire request(CommandCode code) {
    return wireOf(code);
}
inline Wire succeeded() {
    return wireOf(statusSuccess);
}
inline Wire refused(const std::string& message) {
    return wireOf(statusFailure, message);
}

} // namespace solvane
