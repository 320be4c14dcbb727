#include "UserMessage.h"

#include "Unit.h"
#include "com/Text.h"

namespace solvane {

namespace {

bool isDesktopVisible() {
    USEROBJECTFLAGS flags{};
    return GetUserObjectInformationW(GetProcessWindowStation(), UOI_FLAGS, &flags, sizeof flags, nullptr) &&
           (flags.dwFlags & WSF_VISIBLE) != 0;
}

} // namespace

void showUserMessage(Unit& unit, const std::string& text, const char* title, UINT style) {
    if (isDesktopVisible())
        MessageBoxA(nullptr, text.c_str(), title, style);
    else if (const ComRef<ICapeDiagnostic> log = unit.hostLog())
        log->LogMessage(Bstr(widen(std::string(title) + ' ' + text)).get());
}

} // namespace solvane
