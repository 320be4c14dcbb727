/// The unit's side of the channel: a block and two events, and a thread that answers what it is told to.
#pragma once

#include "Wire.h"

#include <windows.h>

#include <string>
#include <thread>

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
    void answer(const solvane::Wire& reply, DWORD delay = 0);

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
