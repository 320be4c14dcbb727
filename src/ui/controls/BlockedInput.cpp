#include "BlockedInput.h"

#include "runtime/QuitMessage.h"

#include <array>

namespace solvane {

namespace {

struct MessageRange {
    UINT first;
    UINT last;
};
constexpr std::array<MessageRange, 3> userInput{{
    {WM_KEYFIRST, WM_KEYLAST},
    {WM_MOUSEFIRST, WM_MOUSELAST},
    {WM_NCMOUSEMOVE, WM_NCXBUTTONDBLCLK},
}};

} // namespace

BlockedInput::~BlockedInput() {
    QuitMessage quitMessage;
    MSG message;
    for (const MessageRange& range : userInput)
        while (PeekMessageW(&message, window_, range.first, range.last, PM_REMOVE))
            quitMessage.keep(message);
}

} // namespace solvane
