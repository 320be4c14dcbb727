#include "Leftovers.h"

#include "cases/NumberText.h"

#include <cstdio>

namespace solvane::host {

namespace {

constexpr char innerName[] = "solvaneCheckedScript";
constexpr char marker[] = "solvaneLeftovers:";

/// The variables that the unit declares global for its script.
constexpr char innerHeader[] = "function solvaneCheckedScript\n"
                               "global nComp nPhase compNames phaseNames phaseAggregationStates "
                               "AGGSTATE_UNKNOWN AGGSTATE_VAPOR AGGSTATE_LIQUID AGGSTATE_SOLID\n";

/// The inner script has ended with all its variables, so that what they clean up is gone. Linux tells the
/// memory of a process in pages of 4 KiB.
constexpr char outerScript[] =
    R"(solvaneFolder = pwd;
solvaneCheckedScript
solvaneMemory = 0;
solvaneFile = fopen('/proc/self/statm');
if solvaneFile > 0
    solvanePages = fscanf(solvaneFile, '%f');
    fclose(solvaneFile);
    solvaneMemory = 4096 * solvanePages(2);
end
fprintf('\nsolvaneLeftovers: %d %d %d %.0f\n', numel(fopen('all')), ...
        numel(get(0, 'Children')), ~strcmp(pwd, solvaneFolder), solvaneMemory);
)";

} // namespace

UnitModel withProbe(const UnitModel& model) {
    UnitModel probed = model;
    ModelFile& inner = probed.files.emplace_back();
    inner.name = std::string(innerName) + ".m";
    inner.bytes = innerHeader + model.script.bytes;
    probed.script.bytes = outerScript;
    return probed;
}

std::optional<Leftovers> readLeftovers(const std::string& output) {
    const std::size_t at = output.rfind(marker);
    if (at == output.npos)
        return std::nullopt;
    Leftovers left;
    int moved = 0;
    if (std::sscanf(output.c_str() + at + sizeof marker - 1, "%d %d %d %lf", &left.files, &left.figures,
                    &moved, &left.memory) != 4)
        return std::nullopt;
    left.movedFolder = moved != 0;
    return left;
}

std::vector<CheckFinding> findLeftovers(const std::vector<Leftovers>& runs) {
    constexpr double toleratedGrowth = 4e6; // bytes
    std::vector<CheckFinding> findings;
    if (runs.empty())
        return findings;
    const std::string afterRuns = " open after " + counted(runs.size(), "run");
    const Leftovers& last = runs.back();
    if (last.files > 0)
        findings.push_back({counted(static_cast<std::size_t>(last.files), "file") + afterRuns,
                            "close them: file = fopen(...); closing = onCleanup(@() fclose(file));"});
    if (last.figures > 0)
        findings.push_back({counted(static_cast<std::size_t>(last.figures), "window") + afterRuns,
                            "close figures at the end of the script"});
    if (last.movedFolder)
        findings.push_back({"the script ends in another current folder",
                            "go back with onCleanup, or use full paths instead of cd"});
    const double growth =
        runs.size() > 1 ? (last.memory - runs.front().memory) / static_cast<double>(runs.size() - 1) : 0;
    if (growth > toleratedGrowth)
        findings.push_back({"every run takes " + shortNumber(growth / 1e6, 2) + " MB more memory",
                            "look for persistent variables, figures and global lists that grow"});
    return findings;
}

} // namespace solvane::host
