#include "ProgressText.h"

#include "cases/NumberText.h"

namespace solvane::host {

namespace {

constexpr std::size_t barWidth = 20;

/// "13 s", "4 min", "3.2 h".
std::string duration(double seconds) {
    if (seconds < 120)
        return fixedNumber(seconds, 0) + " s";
    return seconds < 7200 ? fixedNumber(seconds / 60, 0) + " min" : fixedNumber(seconds / 3600, 1) + " h";
}

} // namespace

std::string progressText(const StudyProgress& progress, double seconds) {
    const std::size_t filled = progress.total == 0 ? barWidth : barWidth * progress.done / progress.total;
    std::string text = "[" + std::string(filled, '#') + std::string(barWidth - filled, '.') + "] " +
                       std::to_string(progress.done) + " of " + std::to_string(progress.total) + " points, " +
                       std::to_string(progress.failed) + " failed";
    if (progress.done == 0 || seconds <= 0)
        return text;
    const double rate = static_cast<double>(progress.done) / seconds;
    text += ", " + shortNumber(rate, 2) + " per second";
    if (progress.done < progress.total)
        text += ", " + duration(static_cast<double>(progress.total - progress.done) / rate) + " left";
    return text;
}

} // namespace solvane::host
