#include "Strangers.h"

#include <algorithm>
#include <string_view>

namespace solvane::engine {

namespace {

// Octave's side greets as soon as it is connected.
constexpr std::chrono::seconds greetingTime(5);
// Octave's side makes two connections; whoever makes more at once is somebody else.
constexpr std::size_t mostStrangers = 32;
static_assert(mostStrangers <= FD_SETSIZE);

/// A socket whose events are selected never waits.
void makeBlocking(SOCKET socket) {
    WSAEventSelect(socket, nullptr, 0);
    u_long no = 0;
    ioctlsocket(socket, FIONBIO, &no);
}

} // namespace

void Strangers::add(Socket socket) {
    if (WSAEventSelect(socket.get(), activity_, FD_READ | FD_CLOSE) != 0)
        return;
    if (strangers_.size() >= mostStrangers)
        strangers_.pop_front();
    strangers_.push_back({.socket = std::move(socket), .deadline = Clock::now() + greetingTime});
}

std::list<Strangers::Guest> Strangers::listen() {
    std::list<Guest> guests;
    const auto now = Clock::now();
    fd_set readable;
    FD_ZERO(&readable);
    for (const Stranger& stranger : strangers_)
        FD_SET(stranger.socket.get(), &readable);
    timeval atOnce{};
    if (strangers_.empty() || select(0, &readable, nullptr, nullptr, &atOnce) < 0)
        FD_ZERO(&readable);
    std::erase_if(strangers_, [&](Stranger& stranger) {
        const bool hasSpoken = FD_ISSET(stranger.socket.get(), &readable) != 0;
        const Greeting greeting = hasSpoken ? read(stranger) : Greeting::awaited;
        if (greeting == Greeting::complete) {
            makeBlocking(stranger.socket.get());
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
        return Greeting::wrong;
    stranger.count += static_cast<std::size_t>(received);
    if (stranger.count < greeting.size())
        return Greeting::awaited;
    const bool isRight = std::string_view(greeting.data(), tokenLength) == token_ &&
                         (greeting.back() == commandRole || greeting.back() == gatewayRole);
    return isRight ? Greeting::complete : Greeting::wrong;
}

DWORD Strangers::patience() const {
    if (strangers_.empty())
        return INFINITE;
    const auto left =
        std::chrono::ceil<std::chrono::milliseconds>(strangers_.front().deadline - Clock::now());
    return static_cast<DWORD>(std::max<long long>(left.count(), 0));
}

} // namespace solvane::engine
