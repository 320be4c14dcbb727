/// A block of memory and two events between two processes, as a unit's run has them.
#pragma once

#include "com/Handle.h"

#include <string>

namespace solvane {

/// The asking side.
class RoundTrip {
public:
    /// Opens the block and events that `id` names.
    explicit RoundTrip(const std::string& id);

    bool isOpen() const { return static_cast<bool>(view_); }

    /// Writes a request and waits for the answer, whose first word is 0 where it is a success.
    bool ask(const std::string& request);

private:
    Handle mapping_;
    MappedView view_;
    Handle requestEvent_;
    Handle replyEvent_;
};

/// The answering side at its barest: a thread that waits as a unit must, for a request, for the end of the
/// script or for the time to look at paint messages; then writes one word and sets the other event.
class BareResponder {
public:
    BareResponder();
    ~BareResponder();
    BareResponder(const BareResponder&) = delete;
    BareResponder& operator=(const BareResponder&) = delete;

    const std::string& id() const { return id_; }

private:
    static DWORD WINAPI respond(void* argument);

    std::string id_;
    Handle mapping_;
    MappedView view_;
    Handle requestEvent_;
    Handle replyEvent_;
    Handle stopEvent_;
    Handle thread_;
};

} // namespace solvane
