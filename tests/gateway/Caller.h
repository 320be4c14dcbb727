/// The interpreter's side: makes arguments, calls the gateway as a statement of a script would, and shows
/// what came back as text.
#pragma once

#include "StandInArray.h"

#include <concepts>
#include <string>
#include <string_view>
#include <vector>

mxArray* integer(double value);
mxArray* matrix(std::size_t rows, std::size_t columns, std::vector<double> columnByColumn);
/// A char row of the stand-in's characters: UTF-16, or the bytes as they are.
mxArray* text(std::u16string_view characters);
mxArray* narrowText(std::string_view bytes);

/// An argument of a call. What a script's literals become: a double, a logical value, a char row.
struct Argument {
    Argument(mxArray* made) : array(made) {}
    Argument(double value) : array(matrix(1, 1, {value})) {}
    Argument(std::same_as<bool> auto value) : Argument(value ? 1. : 0.) { array->kind = ArrayKind::logical; }
    Argument(const std::convertible_to<std::u16string_view> auto& characters) : array(text(characters)) {}

    mxArray* array;
};
using Arguments = std::vector<Argument>;

/// What a call gave: "error: ..." or its outputs, as "2x1 [0.25 0.75]", "'K'", "1x2 {'a' 'b'}", with one
/// blank between them; an output that was left unset as "unset".
std::string call(int outputCount, const Arguments& arguments);

/// Loads the gateway, hooks the stand-in up, and sets the globals of a run with these counts.
void useGateway(StandInHooks& hooks, double compoundCount, const Arguments& phaseNames);
