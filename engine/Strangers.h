/// Connections that have not completed their greeting.
#pragma once

#include "Connection.h"

#include <array>
#include <chrono>
#include <list>
#include <optional>
#include <string>

namespace solvane::engine {

/// Reads greetings without blocking. Used by one thread.
class Strangers {
public:
    /// A connection with a complete greeting.
    struct Guest {
        Socket socket; ///< blocking again; nothing after the greeting has been read
        char role = 0;
    };

    /// `token` is what a greeting begins with.
    explicit Strangers(std::string token) : token_(std::move(token)) {}

    /// Octave's side makes only two connections at once.
    static constexpr std::size_t most = 32;

    /// Adds a new connection. If there are too many, closes the oldest.
    void add(Socket socket);

    /// Adds all of them to a set of sockets.
    void joinIn(fd_set& sockets) const;

    /// Reads from the connections in the set. Returns those with a complete greeting, and closes those that
    /// sent something else, were closed by the other side, or took too long.
    std::list<Guest> listen(fd_set& readable);

    /// How long to wait for the next bytes at most; empty, for no limit, without connections.
    std::optional<timeval> patience() const;

private:
    using Clock = std::chrono::steady_clock;

    struct Stranger {
        Socket socket;
        Clock::time_point deadline;
        std::array<char, tokenLength + 1> greeting{};
        std::size_t count = 0;
    };
    enum class Greeting { awaited, complete, wrong };

    Greeting read(Stranger& stranger) const;

    std::string token_;
    std::list<Stranger> strangers_; // in the order of arrival, and so of deadlines
};

} // namespace solvane::engine
