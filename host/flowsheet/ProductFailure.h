#pragma once

#include "cases/CaseModel.h"
#include "results/RunResults.h"

#include <string>

namespace solvane::host {

/// Adds the place of the call of setProduct for a product that could not be flashed, if the unit failed so.
/// The run does not tell several calls apart: their places, such as "drum.m:7, drum.m:12", go to the end of
/// the failure's message and of `error`.
void addProductPlace(const Case& flowsheet, RunFailure& failure, std::string& error);

} // namespace solvane::host
