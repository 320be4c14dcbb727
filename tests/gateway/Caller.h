/// The interpreter's side: makes arguments, calls the gateway as a statement of a script would, and shows
/// what came back as text.
#pragma once

#include "StandInArray.h"

#include <string>
#include <string_view>
#include <vector>

mxArray* number(double value);
mxArray* integer(double value);
mxArray* logical(bool value);
mxArray* matrix(std::size_t rows, std::size_t columns, std::vector<double> columnByColumn);
/// A char row of the stand-in's characters: UTF-16, or with wide = false the bytes as they are.
mxArray* text(std::u16string_view characters);
mxArray* narrowText(std::string_view bytes);
mxArray* cellRow(std::vector<mxArray*> cells);

/// What a call gave: "error: ..." or its outputs, as "2x1 [0.25 0.75]", "'K'", "1x2 {'a' 'b'}", with one
/// blank between them; an output that was left unset as "unset".
std::string call(int outputCount, std::vector<mxArray*> arguments);

/// Loads the gateway, hooks the stand-in up, and sets the globals of a run with these counts.
void useGateway(StandInHooks& hooks, double compoundCount, std::vector<mxArray*> phaseNames);
