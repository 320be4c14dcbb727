#pragma once

#include "CapeOpen.h"
#include "cases/CaseModel.h"

#include <string>
#include <vector>

namespace solvane::host {

/// A unit's model as the unit itself describes it.
struct ModelDescription {
    std::vector<std::string> feeds;
    std::vector<std::string> products;
    UnitModel model;
};

/// Asks the unit for its ports, parameters and reports (except what Matlab printed), and has it save its
/// files into a property bag. False with the text of the call that failed.
bool describeModel(ICapeUnit* unit, ModelDescription& description, std::string& error);

/// The description for people.
std::string modelText(const ModelDescription& description);

/// The description as a JSON document (UTF-8), parameters as in a case:
///     { "feeds": [ name ], "products": [ name ], "parameters": [ { "name", "kind", "mode", "value", ... } ],
///       "reports": [ name ], "files": [ { "name", "size" } ], "script": text, "echo": false }
/// Dimensionalities are lists of exponents; bounds and defaults appear only if the parameter has them.
std::string modelJson(const ModelDescription& description);

} // namespace solvane::host
