#pragma once

#include "RunWatch.h"
#include "Streams.h"
#include "UnitSession.h"
#include "cases/CaseModel.h"
#include "materials/MaterialHabits.h"
#include "results/RunResults.h"
#include "script/WrongNames.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace solvane::host {

/// Receives a log line (UTF-8) of the named unit.
using RunLog = std::function<void(std::string_view unit, std::string_view line)>;

/// A case as a flowsheet that can be calculated again and again. All units exist at the same time, as in a
/// simulator, and live from the first run to the end, so that Matlab starts once. Every run begins with new
/// streams and with units in the state in which their models are loaded: it gives the same results as the
/// first run of a new flowsheet. Only what a script keeps in Matlab itself passes from run to run. The
/// calling thread is in a single-threaded apartment.
class Flowsheet {
public:
    Flowsheet(Case flowsheet, RunLog log);
    Flowsheet(const Flowsheet&) = delete;
    Flowsheet& operator=(const Flowsheet&) = delete;

    /// Calculates one unit after the other in the way of the case's profile, with recycles again and again
    /// until they converge, and replaces `results`. False with the host's or the unit's text; `results` then
    /// holds what is known of the units up to the failed one, including its reports if it still returns them.
    /// Once the watch, which may be null, has a stop request, no more units start or calculate, and the text
    /// is the watch's.
    bool run(RunResults& results, std::string& error, RunWatch* watch = nullptr);

    /// The same with the feeds and the parameter settings of a variation of the case, also from then on.
    bool run(const Case& variation, RunResults& results, std::string& error, RunWatch* watch = nullptr);

private:
    bool start(RunResults& results, std::string& error);
    bool calculate(RunResults& results, std::string& error);
    bool calculateUnits(const std::string& when, RunResults& results, std::string& error);
    bool runOne(std::size_t unit, RunResults& results, std::string& error);
    bool addStream(const std::string& name, RunResults& results, std::string& error) const;
    void review(std::size_t unit, RunResults& results) const;
    void addNameWarnings(std::size_t unit, RunResults& results) const;
    void addReadWarnings(std::size_t unit, RunResults& results, const char* subject,
                         const std::vector<ScriptFinding>& findings) const;
    void addCause(RunFailure& failure, std::string& error) const;
    bool mayBegin(std::size_t unit) const;
    bool failed(std::size_t unit, RunResults& results, std::string& error) const;

    struct Member {
        LogSink log;
        std::unique_ptr<UnitSession> session;    ///< null if the next run has to make one
        std::vector<ScriptFinding> wrongNames{}; ///< in the script
        std::vector<ScriptFinding> mistakes{};   ///< in the script
    };

    Case case_;
    RunLog log_;
    // Of the run that is under way; null if there is none.
    RunResults* results_ = nullptr;
    RunWatch* watch_ = nullptr;
    std::shared_ptr<MaterialHabits> habits_ = std::make_shared<MaterialHabits>();
    std::vector<Stream> streams_;
    std::vector<StreamResult> tears_; ///< what the units of the last iteration began with
    std::vector<Member> members_;     ///< by unit
};

/// Runs a case once. The units have ended when this returns.
bool runCase(const Case& flowsheet, const RunLog& log, RunResults& results, std::string& error,
             RunWatch* watch = nullptr);

} // namespace solvane::host
