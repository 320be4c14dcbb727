#include "HostCommands.h"

#include "Gnuplot.h"
#include "Interrupts.h"
#include "ProgressLine.h"
#include "StudyWorkers.h"
#include "UnitParameters.h"
#include "cases/CaseReader.h"
#include "cases/FilePath.h"
#include "studies/StudyPlot.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <iterator>
#include <memory>

namespace solvane::host {

namespace {

/// What is known before anything is calculated.
struct Study {
    Case flowsheet{};
    UnitParameters parameters{};
    Design design{};
    std::unique_ptr<StudyTable> table{};
    std::vector<std::size_t> points{}; ///< of this shard
    StudyPlot plot{};
    std::filesystem::path gnuplot{};
};

using Lines = std::map<std::size_t, std::string>; ///< by point

bool readDesignFile(const std::string& path, const std::vector<Variable>& variables, Design& design,
                    std::string& error) {
    std::string text;
    if (!readFile(filePath(path), text, error))
        return false;
    if (readDesign(variables, text, design, error))
        return true;
    error.insert(0, path + ": ");
    return false;
}

/// "3/16" as the part 2 of 16.
bool readShard(const std::string& text, std::size_t& part, std::size_t& count, std::string& error) {
    const char* const end = text.data() + text.size();
    const auto slash = std::from_chars(text.data(), end, part);
    const bool isRight = slash.ec == std::errc() && slash.ptr != end && *slash.ptr == '/' &&
                         std::from_chars(slash.ptr + 1, end, count).ptr == end && part >= 1 && part <= count;
    if (!isRight)
        error = "--shard: expected PART/COUNT, such as 3/16";
    --part;
    return isRight;
}

bool choosePoints(const std::string& shard, Study& study, std::string& error) {
    std::size_t part = 0, count = 1;
    if (!shard.empty() && !readShard(shard, part, count, error))
        return false;
    for (std::size_t i = part; i < study.design.points.size(); i += count)
        study.points.push_back(i);
    return true;
}

/// Points that cannot be are found before anything is calculated.
bool checkPoints(const Study& study, std::string& error) {
    for (std::size_t i = 0; i < study.design.points.size(); ++i) {
        Variation variation;
        if (!vary(study.flowsheet, study.design.axes, study.design.points[i], variation, error)) {
            error.insert(0, "point " + std::to_string(i + 1) + ": ");
            return false;
        }
    }
    return true;
}

bool plan(const SweepOptions& options, Study& study, std::string& error) {
    if (!readCase(options.casePath, study.flowsheet, error) ||
        !readUnitParameters(study.flowsheet, study.parameters, error))
        return false;
    const std::vector<Variable> variables = variablesOf(study.flowsheet, study.parameters);
    const bool hasDesign = options.designPath.empty()
                               ? makeDesign(variables, options.design, study.design, error)
                               : readDesignFile(options.designPath, variables, study.design, error);
    if (!hasDesign || !checkPoints(study, error) || !choosePoints(options.shard, study, error))
        return false;
    study.table = std::make_unique<StudyTable>(study.flowsheet, study.parameters, study.design,
                                               options.units.empty() ? unitsOfCase(study.flowsheet)
                                                                     : unitsOfSystem(options.units));
    return options.plotPath.empty() ||
           (choosePlot(*study.table, study.design, options.plotOf, options.plotPath, study.plot, error) &&
            findGnuplot(study.gnuplot, error));
}

/// The rows of an earlier study that stay, by point.
bool readKnown(const SweepOptions& options, const Study& study, Lines& known, std::string& error) {
    std::error_code fault;
    if (!options.resume || !std::filesystem::exists(filePath(options.csvPath), fault))
        return true;
    std::string text;
    if (!readFile(filePath(options.csvPath), text, error))
        return false;
    if (!study.table->readLines(text, known, error)) {
        error.insert(0, options.csvPath + ": ");
        return false;
    }
    const bool isOfShard = std::ranges::all_of(
        known, [&](const auto& row) { return std::ranges::binary_search(study.points, row.first); });
    if (!isOfShard) {
        error = options.csvPath + ": it has points of another shard; choose another file";
        return false;
    }
    if (options.retry)
        std::erase_if(known, [](const auto& row) { return hasFailed(row.second); });
    return true;
}

/// The table's file, or the standard output.
class TableOutput {
public:
    /// The file then has the text, all at once.
    bool open(const std::string& path, const std::string& text, std::string& error) {
        file_.close();
        path_ = path;
        if (path.empty()) {
            print(stdout, text);
            return true;
        }
        if (!writeFile(filePath(path), text, error))
            return false;
        file_.open(filePath(path), std::ios::binary | std::ios::app);
        return true;
    }

    bool write(const std::string& text) {
        if (path_.empty()) {
            print(stdout, text);
            return true;
        }
        file_.write(text.data(), static_cast<std::streamsize>(text.size()));
        file_.flush();
        return file_.good();
    }

private:
    std::string path_;
    std::ofstream file_;
};

std::string tableText(const Study& study, const Lines& lines) {
    std::string text = study.table->heading();
    for (const auto& [point, line] : lines)
        text += line;
    return text;
}

std::size_t jobCount(std::size_t wanted, std::size_t points) {
    const std::size_t cores = std::max(std::thread::hardware_concurrency(), 1u);
    return std::min(wanted == 0 ? cores : wanted, points);
}

bool writePlot(const SweepOptions& options, const Study& study, const std::string& csv, std::string& error) {
    const std::string script = plotScript(*study.table, study.design, csv, study.plot);
    std::string picture;
    return (!options.plotScript || writeFile(filePath(options.plotPath + ".gp"), script, error)) &&
           runGnuplot(study.gnuplot, script, picture, error) &&
           writeFile(filePath(options.plotPath), picture, error);
}

/// Writes what comes of the whole table.
bool writeRest(const SweepOptions& options, const Study& study, const std::string& csv, std::string& error) {
    return (options.jsonPath.empty() ||
            writeFile(filePath(options.jsonPath), tableJson(study.table->columns(), csv), error)) &&
           (options.plotPath.empty() || writePlot(options, study, csv, error));
}

/// Returns how the study was stopped. `error` says why no process could be started.
StopReason calculateRows(const SweepOptions& options, const Study& study, std::size_t count, StudyRows& rows,
                         std::string& error) {
    StudyWorkers workers({options.casePath, options.limit}, study.flowsheet, study.design, *study.table,
                         rows);
    RunWatch watch(
        {.patience = std::chrono::seconds(5), .giveUp = [&](const RunWatch&) { workers.terminate(); }});
    const Interrupts interrupts(watch);
    ProgressLine progress;
    workers.start(jobCount(options.jobs, count));
    while (count > 0 && !watch.isStopRequested() && !rows.waitFor(std::chrono::milliseconds(200)))
        progress.show(rows.progress());
    const StopReason stopped = watch.stopReason(); // a later one changes nothing
    if (stopped != StopReason::none) {
        rows.stop();
        workers.stopRuns();
    }
    workers.finish();
    progress.finish(rows.progress());
    error = workers.fault();
    return stopped;
}

/// Calculates what is not known and writes all rows.
ExitCode calculate(const SweepOptions& options, const Study& study, Lines lines) {
    std::vector<std::size_t> toDo;
    std::ranges::copy_if(study.points, std::back_inserter(toDo),
                         [&](std::size_t point) { return !lines.contains(point); });
    // Failed points that are calculated again leave gaps. Their rows follow the others until all are there.
    const bool hasGaps = !toDo.empty() && !lines.empty() && toDo.front() < lines.rbegin()->first;
    TableOutput output;
    std::string error;
    if (!output.open(options.csvPath, tableText(study, lines), error))
        return complain(badUsage, error);
    StudyRows rows(toDo, [&](std::size_t point, const std::string& line) {
        lines[point] = line;
        return output.write(line);
    });
    const StopReason stopped = calculateRows(options, study, toDo.size(), rows, error);
    if (stopped != StopReason::none)
        return complain(interrupted,
                        "Interrupted" + std::string(options.csvPath.empty()
                                                        ? ""
                                                        : "; --resume calculates the other points"));
    if (!error.empty())
        return complain(calculationFailed, error);
    if (!rows.isComplete())
        return complain(calculationFailed, options.csvPath + " cannot be written");
    const std::string text = tableText(study, lines);
    if ((hasGaps && !output.open(options.csvPath, text, error)) || !writeRest(options, study, text, error))
        return complain(badUsage, error);
    return std::ranges::any_of(lines, [](const auto& line) { return hasFailed(line.second); })
               ? calculationFailed
               : ok;
}

} // namespace

ExitCode sweepCommand(const SweepOptions& options) {
    Study study;
    Lines known;
    std::string error;
    if (!plan(options, study, error) || !readKnown(options, study, known, error))
        return complain(badUsage, error);
    return calculate(options, study, std::move(known));
}

} // namespace solvane::host
