/// The way to the unit: one block of bytes that the gateway and the unit hand to each other.
///
/// A build has one of two: the named block and its two events where the gateway runs on the unit's own system
/// (BlockTransport.cpp), and a socket to the automation server, which reaches them for a Linux Octave
/// (SocketTransport.cpp).
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace solvane::gateway {

class Transport {
public:
    virtual ~Transport() = default;

    /// The most bytes that a request may have, as far as the transport knows.
    virtual std::size_t capacity() const = 0;

    /// Writes a request into the block, waits until the unit has answered, and leaves the first `wanted`
    /// bytes of the answer in `reply`, or fewer if the block is smaller. The block keeps the answer until the
    /// next exchange.
    virtual bool exchange(std::string_view request, std::size_t wanted, std::string& reply,
                          std::string& error) = 0;

    /// Appends `count` bytes of the block from `offset`, or fewer if the block ends before.
    virtual bool read(std::size_t offset, std::size_t count, std::string& bytes, std::string& error) = 0;
};

/// Whether the gateway stays loaded between runs. Each run begins with `clear functions`, after which it
/// would be loaded, and connected to the server, again.
extern const bool staysLoaded;

/// Reaches the unit of that id (a GUID with braces), which must be calculating. Null with an error text.
std::unique_ptr<Transport> openTransport(const std::string& unitId, std::string& error);

} // namespace solvane::gateway
