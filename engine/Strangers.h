/// The connections whose greeting is not complete.
#pragma once

#include "Connection.h"

#include <array>
#include <chrono>
#include <list>
#include <optional>
#include <string>

namespace solvane::engine {

/// Reads greetings without waiting for any. Used by one thread.
class Strangers {
public:
    /// A stranger who has greeted.
    struct Guest {
        Socket socket; ///< blocking again; nothing after the greeting has been read
        char role = 0;
    };

    /// `token` is what a greeting begins with.
    explicit Strangers(std::string token) : token_(std::move(token)) {}

    /// Octave's side makes two connections; whoever makes more at once is somebody else.
    static constexpr std::size_t most = 32;

    /// Takes a new connection in. With too many of them the one that came first is hung up on.
    void add(Socket socket);

    /// Adds all of them to a set of sockets.
    void joinIn(fd_set& sockets) const;

    /// Reads what has come from those in the set. Returns those who have greeted, and hangs up on those who
    /// cannot any more: who said something else, have gone, or have had their time.
    std::list<Guest> listen(fd_set& readable);

    /// How long nothing needs to be done unless somebody says something; without end where nobody is there.
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
    std::list<Stranger> strangers_; // in the order in which they came, which is that of the deadlines
};

} // namespace solvane::engine
