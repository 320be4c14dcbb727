/// The process in Matlab's place: it takes turns at several ways of asking and measures each.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace solvane {

/// What a client is to measure. The names of the ways to ask are "ping", "command NAME" (see Commands.h),
/// "getFeedProp NAME", "Invoke NAME", "getSinglePhaseProperty NAME" and, on a material of the client's own,
/// "direct10 NAME" and "direct11 NAME".
struct ClientTask {
    std::vector<std::string> ways;
    std::string unitId;
    std::string responderId;
    std::wstring objectFile; ///< may be missing
};

/// Microseconds of one call, a value for each turn, by the name of the way.
using Timings = std::map<std::string, std::vector<double>>;

/// Runs this program as a client and waits for its end. Empty where it failed, after a message.
Timings measureInClient(const ClientTask& task, const std::wstring& resultFile);

inline constexpr char clientWord[] = "--client";

/// The client's main function, with the arguments after the client word.
int runClient(const std::vector<std::string>& arguments);

} // namespace solvane
