#include "Strangers.h"

#include <algorithm>
#include <string_view>

namespace solvane::engine {

namespace {

// Octave's side greets as soon as it is connected.
constexpr std::chrono::seconds greetingTime(5);

void setBlocking(SOCKET socket, bool waits) {
    u_long isNonBlocking = waits ? 0 : 1;
    ioctlsocket(socket, FIONBIO, &isNonBlocking);
}

} // namespace

void Strangers::add(Socket socket) {
    setBlocking(socket.get(), false);
    if (strangers_.size() >= most)
        strangers_.pop_front();
    strangers_.push_back({.socket = std::move(socket), .deadline = Clock::now() + greetingTime});
}

void Strangers::joinIn(fd_set& sockets) const {
    for (const Stranger& stranger : strangers_)
        FD_SET(stranger.socket.get(), &sockets);
}

std::list<Strangers::Guest> Strangers::listen(fd_set& readable) {
    std::list<Guest> guests;
    const auto now = Clock::now();
    std::erase_if(strangers_, [&](Stranger& stranger) {
        const bool hasSpoken = FD_ISSET(stranger.socket.get(), &readable) != 0;
        const Greeting greeting = hasSpoken ? read(stranger) : Greeting::awaited;
        if (greeting == Greeting::complete) {
            setBlocking(stranger.socket.get(), true);
            guests.push_back({std::move(stranger.socket), stranger.greeting.back()});
        }
        return greeting != Greeting::awaited || stranger.deadline <= now;
    });
    return guests;
}

Strangers::Greeting Strangers::read(Stranger& stranger) const {
    std::array<char, tokenLength + 1>& greeting = stranger.greeting;
    const int received = recv(stranger.socket.get(), greeting.data() + stranger.count,
                              static_cast<int>(greeting.size() - stranger.count), 0);
    if (received <= 0)
        return received < 0 && WSAGetLastError() == WSAEWOULDBLOCK ? Greeting::awaited : Greeting::wrong;
    stranger.count += static_cast<std::size_t>(received);
    if (stranger.count < greeting.size())
        return Greeting::awaited;
    const bool isRight = std::string_view(greeting.data(), tokenLength) == token_ &&
                         (greeting.back() == commandRole || greeting.back() == gatewayRole);
    return isRight ? Greeting::complete : Greeting::wrong;
}

std::optional<timeval> Strangers::patience() const {
    if (strangers_.empty())
        return std::nullopt;
    using std::chrono::microseconds;
    const auto left = std::chrono::ceil<microseconds>(strangers_.front().deadline - Clock::now());
    const auto count = static_cast<long>(std::max<microseconds::rep>(left.count(), 0)); // some seconds
    return timeval{.tv_sec = count / 1000000, .tv_usec = count % 1000000};
}

} // namespace solvane::engine
