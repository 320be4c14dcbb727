#include "ProgressLine.h"

#include "Console.h"
#include "studies/ProgressText.h"

#include <windows.h>

namespace solvane::host {

namespace {

constexpr std::chrono::seconds linePeriod{10}; ///< where no console can show a line that changes

bool isConsole() {
    DWORD mode = 0;
    return GetConsoleMode(GetStdHandle(STD_ERROR_HANDLE), &mode) != FALSE;
}

} // namespace

ProgressLine::ProgressLine()
    : isConsole_(isConsole()), next_(start_ + (isConsole_ ? Clock::duration::zero() : linePeriod)) {}

void ProgressLine::show(const StudyProgress& progress) {
    if (Clock::now() < next_)
        return;
    print(progress);
    if (!isConsole_)
        next_ += linePeriod;
}

void ProgressLine::finish(const StudyProgress& progress) {
    print(progress);
    if (isConsole_)
        host::print(stderr, "\n");
}

void ProgressLine::print(const StudyProgress& progress) const {
    const std::string text =
        progressText(progress, std::chrono::duration<double>(Clock::now() - start_).count());
    // Blanks cover what a longer text before has left.
    host::print(stderr, isConsole_ ? "\r" + text + "     " : text + "\n");
}

} // namespace solvane::host
