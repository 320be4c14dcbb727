#pragma once

#include <windows.h>

#include <functional>
#include <string>

namespace solvane::host {

/// Answers message boxes that open on the calling thread during its lifetime, since nobody may be at the
/// screen: the sink receives the title and text, and Enter gives the default answer. One object at a time in
/// a thread.
class MessageBoxes {
public:
    using Sink = std::function<void(const std::string& title, const std::string& text)>; ///< UTF-8

    explicit MessageBoxes(Sink sink);
    ~MessageBoxes();
    MessageBoxes(const MessageBoxes&) = delete;
    MessageBoxes& operator=(const MessageBoxes&) = delete;

private:
    static LRESULT CALLBACK sawMessage(int code, WPARAM isOwn, LPARAM message);

    Sink sink_;
    HHOOK hook_;
};

} // namespace solvane::host
