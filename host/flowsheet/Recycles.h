#pragma once

#include "Streams.h"

#include <functional>
#include <string>
#include <vector>

namespace solvane::host {

/// Calculates all units from these tear streams; `iteration` counts from 1. False with a text.
using FlowsheetPass =
    std::function<bool(int iteration, const std::vector<StreamResult>& tears, std::string& error)>;

/// Repeats the pass until the flowsheet's tear streams no longer change, and writes down how. A tear stream
/// is one of `streams`, from the first guess to what the last pass makes of it. False with the pass's text,
/// or with one that names the stream and the quantity that changed most.
///
/// The variables of a tear stream are its pressure, molar enthalpy, and the flow of each compound: a
/// temperature would leave the state of a boiling pure compound open.
bool convergeRecycles(const Case& flowsheet, std::vector<Stream>& streams, const FlowsheetPass& pass,
                      ConvergenceResult& result, std::string& error);

} // namespace solvane::host
