#include "ProgressLine.h"

#include "Console.h"
#include "studies/ProgressText.h"

#include <windows.h>

namespace solvane::host {

namespace {

bool isConsole() {
    DWORD mode = 0;
    return GetConsoleMode(GetStdHandle(STD_ERROR_HANDLE), &mode) != FALSE;
}

} // namespace

ProgressLine::ProgressLine() : isConsole_(isConsole()) {}

std::chrono::milliseconds ProgressLine::period() const {
    return isConsole_ ? std::chrono::milliseconds(200) : std::chrono::seconds(10);
}

void ProgressLine::show(const StudyProgress& progress) {
    // Blanks cover what a longer text before has left.
    const std::string text = progressText(progress, seconds());
    print(stderr, isConsole_ ? "\r" + text + "     " : text + "\n");
}

void ProgressLine::finish(const StudyProgress& progress) {
    show(progress);
    if (isConsole_)
        print(stderr, "\n");
}

double ProgressLine::seconds() const {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
}

} // namespace solvane::host
