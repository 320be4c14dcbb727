#include "HostCommands.h"

#include "Interrupts.h"
#include "ResultFiles.h"
#include "cases/CaseReader.h"
#include "cases/FilePath.h"
#include "check/CaseCheck.h"

#include <nlohmann/json.hpp>

#include <atomic>

namespace solvane::host {

namespace {

using Json = nlohmann::ordered_json;

constexpr std::size_t nameWidth = 20;

void printOutcome(const CheckOutcome& outcome) {
    if (outcome.findings.empty())
        print(stdout, "ok       " + outcome.summary + "\n");
    for (std::size_t i = 0; i < outcome.findings.size(); ++i) {
        const CheckFinding& finding = outcome.findings[i];
        print(stdout, (i > 0 ? padded("", nameWidth) : "") + "FOUND    " + visible(finding.text) + "\n" +
                          padded("", nameWidth) + "to do    " + finding.remedy + "\n");
    }
    for (const CheckFinding& note : outcome.notes)
        print(stdout, padded("", nameWidth) + "note     " + visible(note.text) + "; " + note.remedy + "\n");
}

Json outcomeJson(const char* check, const CheckOutcome& outcome) {
    Json json{{"check", check},
              {"summary", outcome.summary},
              {"findings", Json::array()},
              {"notes", Json::array()}};
    for (const CheckFinding& finding : outcome.findings)
        json["findings"].push_back({{"text", finding.text}, {"remedy", finding.remedy}});
    for (const CheckFinding& note : outcome.notes)
        json["notes"].push_back({{"text", note.text}, {"remedy", note.remedy}});
    return json;
}

/// Writes the JSON document, if one is asked for.
ExitCode finish(const CheckOptions& options, Json json, std::size_t findings) {
    json["ok"] = findings == 0;
    std::string error;
    if (!options.jsonPath.empty() &&
        !writeFile(filePath(options.jsonPath),
                   json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n", error))
        return complain(badUsage, error);
    return findings == 0 ? ok : calculationFailed;
}

/// The heartbeats between the parts of a line: the name of a check, and its outcome.
class Heartbeats {
public:
    /// On the watch's thread.
    void print(const std::string& line, bool namesLimit) {
        if (!interruptedLine_.exchange(true))
            host::print(stdout, "\n");
        host::print(stderr,
                    line + (namesLimit ? "; --limit SECONDS stops a run that takes too long" : "") + "\n");
    }

    /// Whether the line began in vain; asked once.
    bool interruptedLine() { return interruptedLine_.exchange(false); }

private:
    std::atomic<bool> interruptedLine_ = false;
};

ExitCode complainOfStop(const CheckOptions& options, const RunWatch& watch) {
    return complain(stopCode(watch.stopReason()),
                    options.casePath + ": " + watch.stopText() + ": " + watch.place());
}

/// Ends the program in the middle of a run that does not end.
void abandon(const CheckOptions& options, const RunWatch& watch) {
    print(stdout, "\n");
    TerminateProcess(GetCurrentProcess(), complainOfStop(options, watch));
}

} // namespace

ExitCode checkCommand(const CheckOptions& options) {
    Case flowsheet;
    std::string error;
    if (!removeOldFile(options.jsonPath, error) || !readCase(options.casePath, flowsheet, error))
        return complain(badUsage, error);
    if (!flowsheet.tears.empty())
        return complain(badUsage, options.casePath +
                                      ": the case has recycles, whose tolerance hides what the checks "
                                      "look for; check its models in cases of their own");
    Case sources = flowsheet;
    if (!openModels(sources, error))
        return complain(calculationFailed, options.casePath + ": " + error);
    Heartbeats heartbeats;
    constexpr std::chrono::seconds longRun(10);
    RunWatch watch({
        .limit = options.limit,
        .beat =
            [&](const std::string& line) {
                heartbeats.print(line, !options.limit && watch.runTime() >= longRun);
            },
        // Matlab does not know of the stop request.
        .giveUp = [&](const RunWatch& stopped) { abandon(options, stopped); },
    });
    const Interrupts interrupts(watch);
    TrialConditions conditions{sources, watch};
    CheckedCase checked{flowsheet, conditions, Trials(flowsheet, conditions), {}};
    Json json{{"case", options.casePath}, {"checks", Json::array()}};
    std::size_t findings = 0;
    // The name comes first, since a check may take long.
    checkCase(
        checked,
        [&](const char* name) {
            watch.postponeBeat();
            print(stdout, padded(name, nameWidth));
        },
        [&](const char* name, const CheckOutcome& outcome) {
            if (heartbeats.interruptedLine())
                print(stdout, padded(name, nameWidth));
            printOutcome(outcome);
            json["checks"].push_back(outcomeJson(name, outcome));
            findings += outcome.findings.size();
        });
    if (watch.isStopRequested()) {
        if (!heartbeats.interruptedLine())
            print(stdout, "\n");
        if (!conditions.stopped.empty())
            print(stderr, visible(conditions.stopped) + "\n");
        return complainOfStop(options, watch);
    }
    print(stdout, findings == 0   ? "The model is fit for a flowsheet.\n"
                  : findings == 1 ? "1 finding.\n"
                                  : std::to_string(findings) + " findings.\n");
    return finish(options, std::move(json), findings);
}

} // namespace solvane::host
