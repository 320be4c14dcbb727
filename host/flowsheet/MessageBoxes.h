#pragma once

#include <windows.h>

#include <functional>
#include <string>

namespace solvane::host {

/// Answers message boxes that come up on the calling thread while it lives, since nobody may sit before a
/// screen: each is told as its title and text and gets Enter pressed, its default answer. One object at a
/// time in a thread.
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
