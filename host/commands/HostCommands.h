/// The commands of SolvaneHost, after the command line is parsed. Paths are UTF-8.
#pragma once

#include "Console.h"
#include "studies/Adjustment.h"
#include "studies/Design.h"

#include <optional>
#include <string>
#include <vector>

namespace solvane::host {

struct RunOptions {
    std::string casePath;
    std::string generation; ///< "1.0" or "1.1"; empty for the case's own
    std::string profile;    ///< the name of one of `profiles`; empty for the case's own
    std::string units;      ///< of the tables, one of `unitSystems`; empty for the case's own
    // Files that also receive the results; empty for none.
    std::string jsonPath;
    std::string csvPath;            ///< the streams
    std::string htmlPath;           ///< a page
    std::string reportFolder;       ///< one file per report
    bool verbose = false;           ///< also prints what Matlab printed
    std::optional<double> limit{};  ///< s, for the whole run
    AdjustmentRequest adjustment{}; ///< without a variable for none
};

/// Calculates a case, again and again if an output has a target, and prints its streams and reports. Ctrl-C
/// and the limit stop the run, or end the program if that takes more than two seconds.
ExitCode runCommand(const RunOptions& options);

struct SweepOptions {
    std::string casePath;
    DesignRequest design{};
    std::string designPath;        ///< of a CSV file with the points, instead of `design`; empty for none
    std::string shard;             ///< "3/16" for the third of 16 parts; empty for all
    std::string units;             ///< of the table, as in a run
    std::size_t jobs = 0;          ///< processes that calculate; 0 for one per core
    std::optional<double> limit{}; ///< s, for each point
    std::string csvPath;           ///< of the table; empty for the standard output
    std::string jsonPath;          ///< also the table
    std::string plotPath;          ///< of a picture; empty for none
    std::string plotOf;            ///< the result that it shows; empty for the first output
    bool plotScript = false;       ///< also writes gnuplot's script beside the picture
    bool resume = false;           ///< keeps the rows that the table has
    bool retry = false;            ///< but not those of failed points
};

/// Calculates a case at many points, and writes a table. Ctrl-C stops it; the rows that are written stay.
ExitCode sweepCommand(const SweepOptions& options);

struct MergeOptions {
    std::string csvPath;
    std::vector<std::string> partPaths; ///< a name may have the wildcards * and ?
};

/// Writes one table of the tables of a study's shards.
ExitCode mergeCommand(const MergeOptions& options);

struct ServeOptions {
    std::string casePath;
    std::optional<double> limit{}; ///< s, for each variation
};

/// Calculates the variations of a case that come in lines on the standard input, and answers each with a line
/// of results. What `sweepCommand` starts.
ExitCode serveCommand(const ServeOptions& options);

struct CheckOptions {
    std::string casePath;
    std::string jsonPath;          ///< also receives the findings; empty for none
    std::optional<double> limit{}; ///< s, for each run
};

/// Checks whether the models of a case are fit for a flowsheet, and returns 1 if something is found.
ExitCode checkCommand(const CheckOptions& options);

struct SaveOptions {
    std::string casePath;
    std::string modelPath;
};

/// Writes the model of a case's only unit to a model file, as the unit saves it.
ExitCode saveCommand(const SaveOptions& options);

struct ShowOptions {
    std::string modelPath;
    bool json = false;
};

/// Prints a model file as the unit reads it.
ExitCode showCommand(const ShowOptions& options);

struct UnpackOptions {
    std::string modelPath;
    std::string folder; ///< to make; must not exist
};

/// Makes a folder with a case, model.json, script and files, from which `save` makes the same model.
ExitCode unpackCommand(const UnpackOptions& options);

struct DiffOptions {
    std::vector<std::string> modelPaths; ///< one or two
};

/// Prints what differs between two model files, and returns 1 if anything does; or one model as the text that
/// is compared.
ExitCode diffCommand(const DiffOptions& options);

struct NewOptions {
    bool list = false;  ///< prints the library instead
    std::string model;  ///< the name of a model of the library
    std::string folder; ///< to make; must not exist
};

/// Makes a folder with a case, its script and files from the library of models.
ExitCode newCommand(const NewOptions& options);

struct EditOptions {
    std::string path;     ///< of a case of one unit, or of a model file
    std::string casePath; ///< of the case of one unit whose streams a model file gets; empty for none
    std::vector<std::string> feeds{}; ///< of a model file, instead; see `readFeedLines`
};

/// Opens the unit's window, with the case's streams at its ports, and writes the changed model to its file.
ExitCode editCommand(const EditOptions& options);

/// Registers the CAPE-OPEN type library for all users, or removes its registration.
ExitCode registerCommand(bool unregister);

/// Checks this machine step by step, and prints what is wrong and what to do.
ExitCode doctorCommand();

} // namespace solvane::host
