/// The connections whose greeting is not complete.
#pragma once

#include "Connection.h"

#include <array>
#include <chrono>
#include <list>
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

    /// `token` is what a greeting begins with. `activity`, an event, is set when a stranger says something.
    Strangers(std::string token, HANDLE activity) : token_(std::move(token)), activity_(activity) {}

    /// Takes a new connection in. With too many of them the one that came first is hung up on.
    void add(Socket socket);

    /// Reads what has come. Returns those who have greeted, and hangs up on those who cannot any more: who
    /// said something else, have gone, or have had their time.
    std::list<Guest> listen();

    /// How long nothing needs to be done unless somebody says something, in milliseconds.
    DWORD patience() const;

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
    HANDLE activity_;
    std::list<Stranger> strangers_; // in the order in which they came, which is that of the deadlines
};

} // namespace solvane::engine
