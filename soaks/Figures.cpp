#include "Figures.h"

#include "Limits.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <sstream>

namespace solvane::soak {

namespace {

bool isWithin(const Limit& limit, double value) {
    switch (limit.bound) {
    case Bound::atMost:
        return value <= limit.limit;
    case Bound::atLeast:
        return value >= limit.limit;
    default:
        return std::isfinite(value);
    }
}

std::string numberText(double value) {
    std::ostringstream text;
    text << std::setprecision(value == std::floor(value) ? 15 : 4) << value;
    return text.str();
}

std::string limitText(const Limit& limit) {
    if (limit.bound == Bound::none)
        return "";
    return (limit.bound == Bound::atMost ? "<= " : ">= ") + numberText(limit.limit);
}

void printRow(const char* segment, const char* figure, const std::string& value, const char* unit,
              const std::string& limit, const char* verdict) {
    std::printf("| %-10s | %-58s | %12s %-3s | %-8s | %-7s |\n", segment, figure, value.c_str(), unit,
                limit.c_str(), verdict);
}

} // namespace

void Figures::put(std::string_view figure, double value) const {
    std::ofstream file(std::filesystem::path(file_), std::ios::app);
    file << segment_ << '\t' << figure << '\t' << std::setprecision(15) << value << '\n';
}

FigureValues readFigures(const std::wstring& file) {
    FigureValues values;
    std::ifstream lines{std::filesystem::path(file)};
    std::string segment, figure, value;
    while (std::getline(lines, segment, '\t') && std::getline(lines, figure, '\t') &&
           std::getline(lines, value))
        values[{segment, figure}] = std::stod(value);
    return values;
}

void printTableHead() {
    printRow("Segment", "Figure", "Value", "", "Limit", "Verdict");
    std::printf("|---|---|---|---|---|\n");
}

bool printTable(const FigureValues& values, const std::string& segment) {
    bool holds = true;
    for (const Limit& limit : limits) {
        if (segment != limit.segment)
            continue;
        const auto found = values.find({limit.segment, limit.figure});
        const bool isMet = found != values.end() && isWithin(limit, found->second);
        holds &= isMet;
        printRow(limit.segment, limit.figure, found == values.end() ? "missing" : numberText(found->second),
                 limit.unit, limitText(limit),
                 !isMet                       ? "BROKEN"
                 : limit.bound == Bound::none ? ""
                                              : "holds");
    }
    for (const auto& [key, value] : values) {
        const bool isKnown = std::ranges::any_of(limits, [&](const Limit& limit) {
            return key.first == limit.segment && key.second == limit.figure;
        });
        if (key.first == segment && !isKnown) {
            printRow(segment.c_str(), key.second.c_str(), numberText(value), "", "not in Limits.h", "BROKEN");
            holds = false;
        }
    }
    return holds;
}

} // namespace solvane::soak
