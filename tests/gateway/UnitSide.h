/// The unit's side of the channel: a block and two events, and a thread that answers what it is told to.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <thread>

/// Bytes of the wire, written in order.
class Bytes {
public:
    Bytes& operator<<(std::uint32_t number) { return append(&number, sizeof number); }
    Bytes& operator<<(std::int32_t number) { return append(&number, sizeof number); }
    Bytes& operator<<(double number) { return append(&number, sizeof number); }
    /// With its NUL.
    Bytes& operator<<(const char* text) {
        bytes_.append(text).append(1, '\0');
        return *this;
    }
    operator const std::string&() const { return bytes_; }

private:
    Bytes& append(const void* data, std::size_t size) {
        bytes_.append(static_cast<const char*>(data), size);
        return *this;
    }
    std::string bytes_;
};

Bytes bytesOf(const auto&... parts) {
    Bytes bytes;
    (bytes << ... << parts);
    return bytes;
}

class UnitSide {
public:
    static constexpr char untouched = '\xcc';

    explicit UnitSide(std::size_t blockSize);
    ~UnitSide();
    UnitSide(const UnitSide&) = delete;
    UnitSide& operator=(const UnitSide&) = delete;

    const std::string& id() const { return id_; }
    std::u16string wideId() const { return {id_.begin(), id_.end()}; }

    /// The answer to each command from now on, and how long the unit thinks about it, in milliseconds.
    void answer(const std::string& bytes, DWORD delay = 0);

    /// The block as the last command left it, without the untouched bytes at its end; then forgotten.
    std::string takeRequest();

    /// Ends as a process does that dies: the thread answers no more, and all handles are closed.
    void die();

private:
    void serve();

    std::string id_;
    std::size_t blockSize_;
    HANDLE mapping_;
    char* block_;
    HANDLE requestEvent_;
    HANDLE replyEvent_;
    HANDLE stopEvent_;
    std::string answer_;
    DWORD delay_ = 0;
    std::string request_;
    std::thread thread_;
};
