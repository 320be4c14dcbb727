/// The results of a case. Texts are UTF-8, quantities SI.
#pragma once

#include "Fault.h"
#include "cases/CaseModel.h"

#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace solvane::host {

/// One phase of a stream.
struct PhaseResult {
    std::string label;            ///< "Vapor" or "Liquid"
    double amount = 0;            ///< mol/mol of the stream
    std::vector<double> fraction; ///< mole fractions in the results' order of compounds
};

struct StreamResult {
    std::string name;
    double temperature = 0;       ///< K
    double pressure = 0;          ///< Pa
    double totalFlow = 0;         ///< mol/s
    std::vector<double> fraction; ///< mole fractions in the results' order of compounds
    double vaporFraction = 0;     ///< mol/mol
    double enthalpy = 0;          ///< J/mol
    double enthalpyF = 0;         ///< J/mol, with that of formation
    double massFlow = 0;          ///< kg/s
    double entropy = 0;           ///< J/mol/K, without that of formation
    std::vector<PhaseResult> phases{};
};

struct ReportResult {
    std::string name;
    std::string text;
};

/// The report that our own unit adds to the script's: what Matlab printed.
inline constexpr char outputReport[] = "Matlab Output";
/// The line before what the script prints.
inline constexpr char outputBegin[] = "MATLAB output:";
/// Its last line once the script has ended, before what an error adds.
inline constexpr char outputEnd[] = "MATLAB done";

enum class UnitStatus { notCalculated, calculated, failed };

/// What a unit returns after its calculation, failed or not.
struct UnitResult {
    std::string name;
    UnitStatus status = UnitStatus::notCalculated;
    std::vector<std::string> feeds{};    ///< the streams of its ports
    std::vector<std::string> products{}; ///< likewise
    std::vector<ModelParameter> parameters{};
    std::vector<ReportResult> reports{};
    double seconds = 0; ///< from the connection of its ports to its results
    int flashes = 0;    ///< that it asked of its materials
};

/// The totals of a unit's feeds and of its products.
struct Flows {
    double in = 0;
    double out = 0;
};

/// The atoms of one element.
struct ElementFlow {
    std::string symbol;
    Flows moles; ///< mol/s
};

struct Balance {
    std::string unit{};
    Flows mass{};  ///< kg/s
    Flows moles{}; ///< mol/s
    /// W; includes the enthalpies of formation if the unit reacts. The difference is the heat and work that
    /// the unit takes up.
    Flows enthalpy{};
    Flows sensible{};    ///< W; the enthalpies without those of formation
    bool reacts = false; ///< conserves the mass, but not the moles of each compound
    std::vector<ElementFlow> elements{};
    Flows entropy{}; ///< W/K, without those of formation
};

/// An implausible result.
struct Warning {
    std::string unit;    ///< empty if it is of none
    std::string subject; ///< such as "stream Vapor", "parameter duty"
    std::string text;
    std::string remedy{};  ///< what to do
    bool isSlight = false; ///< outputs that differ so little may come of a script's own formulas
};

/// The subject of warnings about names that a script looks for.
inline constexpr char namesInScript[] = "names in the script";

/// The text of warnings about a result that shows no reaction, as is right for a feed without a reactant.
inline constexpr char nothingReacts[] = "it is 0: nothing reacts";

struct LogLine {
    std::string unit;
    std::string text;
};

/// The place in a unit's script that made the unit fail: where an error ended it, or where it sets a product
/// that could not be flashed. Lines and columns are counted from 1.
struct ScriptError {
    /// The script's file, or an additional file; "script" for one without a file of its own.
    std::string file;
    std::string path{}; ///< where that file was found, from the current folder; empty for one without a path
    long line = 0;
    long column = 0; ///< 0 if it is not known
    std::string message;
    std::vector<std::string> callers{}; ///< the places that led there, innermost first, such as "drum.m:3:1"
};

/// Why a run failed.
struct RunFailure {
    std::string unit; ///< empty if none failed
    std::string message;
    std::optional<ScriptError> scriptError{};
    std::string hint{}; ///< what to do, with which the message ends; empty if that is not known
};

/// The largest relative change of the tear streams in an iteration.
struct IterationResult {
    double deviation = 0;
    std::string stream;
    std::string quantity; ///< such as "pressure", "flow of methane"
};

/// How the recycles converged.
struct ConvergenceResult {
    std::string method;
    double tolerance = 0;
    int limit = 0; ///< of the iterations
    bool converged = false;
    std::vector<IterationResult> iterations;
};

/// One run of a search for a target.
struct TrialResult {
    double value = 0;                                         ///< of the variable
    double output = std::numeric_limits<double>::quiet_NaN(); ///< not a number if the run failed
};

/// How the value of a variable was found that gives an output its target. Quantities are SI; the units are
/// those of tables.
struct AdjustmentResult {
    std::string variable{};
    std::string variableUnit{};
    std::string output{};
    std::string outputUnit{};
    double target = 0;
    double tolerance = 0; ///< in parts of the target
    int limit = 0;        ///< of the trials
    bool reached = false; ///< by the last trial
    std::vector<TrialResult> trials{};
};

struct RunResults {
    Generation generation = Generation::v11;
    std::vector<std::string> compounds;
    std::vector<StreamResult> streams; ///< the case's feeds, then each unit's products
    std::vector<UnitResult> units;     ///< all units of the case, in the order of their calculation
    std::vector<Balance> balances;     ///< of the units that were calculated
    std::vector<Warning> warnings;
    std::vector<LogLine> log;
    std::optional<ConvergenceResult> convergence; ///< of a case with recycles
    std::optional<AdjustmentResult> adjustment; ///< of a run with a target; the others are of its last trial
    std::optional<RunFailure> failure;          ///< none if all units were calculated
    bool isFlowsheet = false;                   ///< the case lists its units
    Fault fault = Fault::calculation;           ///< of a failed run
};

} // namespace solvane::host
