#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace solvane {

/// Bytes of the wire, written in order.
class Wire {
public:
    Wire& operator<<(std::uint32_t number) { return append(&number, sizeof number); }
    Wire& operator<<(std::int32_t number) { return append(&number, sizeof number); }
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
inline Wire request(std::uint32_t code) {
    return wireOf(code);
}
inline Wire succeeded() {
    return wireOf(0u);
}
inline Wire refused(const std::string& message) {
    return wireOf(1u, message);
}

} // namespace solvane
