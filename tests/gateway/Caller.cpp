#include "Caller.h"

#include <windows.h>

#include <array>
#include <csetjmp>
#include <cstdint>
#include <sstream>
#include <stdexcept>

namespace {

#ifdef _WIN64
constexpr char gatewayFile[] = SOLVANE_BIN "/CapeOpenUnitMex.mexw64-77";
#else
constexpr char gatewayFile[] = SOLVANE_BIN "/CapeOpenUnitMex.mexw32-77";
#endif

using MexFunction = void(int, mxArray**, int, const mxArray**);

MexFunction* mexFunction = nullptr;
mxArray* nComp = nullptr;
mxArray* phases = nullptr;

std::string raised;
std::jmp_buf whereCalled;

/// Jumps over the gateway: 32-bit exceptions do not pass a module that has a runtime of its own.
void raise(const char* message) {
    raised = message;
    std::longjmp(whereCalled, 1);
}

mxArray* globalVariable(const char* name) {
    const std::string_view wanted = name;
    return wanted == "nComp" ? nComp : wanted == "phaseNames" ? phases : nullptr;
}

std::string show(const mxArray* array) {
    if (!array)
        return "unset";
    std::ostringstream shown;
    if (array->kind == ArrayKind::text) {
        // Characters of two bytes are shown by their lower one, those of one byte
        // as they are.
        const std::size_t size = array->rows * array->columns;
        const std::size_t width = size ? array->characters.size() / size : 1;
        shown << '\'';
        for (std::size_t i = 0; i < size; ++i)
            shown << array->characters[i * width];
        shown << '\'';
        return shown.str();
    }
    const bool isCell = array->kind == ArrayKind::cell;
    shown << array->rows << 'x' << array->columns << (isCell ? " {" : " [");
    const char* separator = "";
    for (std::size_t i = 0; i < array->rows * array->columns; ++i, separator = " ")
        if (isCell)
            shown << separator << show(array->cells[i]);
        else
            shown << separator << array->numbers[i];
    shown << (isCell ? '}' : ']');
    return shown.str();
}

mxArray* makeText(std::size_t size, std::string characters) {
    mxArray* array = keep({.kind = ArrayKind::text, .rows = size > 0 ? 1u : 0u, .columns = size});
    array->characters = std::move(characters);
    return array;
}

} // namespace

mxArray* matrix(std::size_t rows, std::size_t columns, std::vector<double> columnByColumn) {
    mxArray* array = keep({.rows = rows, .columns = columns});
    array->numbers = std::move(columnByColumn);
    return array;
}

mxArray* integer(double value) {
    mxArray* array = matrix(1, 1, {value});
    array->kind = ArrayKind::integer;
    return array;
}

mxArray* text(std::u16string_view characters) {
    return makeText(characters.size(),
                    std::string(reinterpret_cast<const char*>(characters.data()), characters.size() * 2));
}

mxArray* narrowText(std::string_view bytes) {
    return makeText(bytes.size(), std::string(bytes));
}

std::string call(int outputCount, const Arguments& arguments) {
    std::array<mxArray*, 5> outputs{};
    std::vector<const mxArray*> arrays;
    for (const Argument& argument : arguments)
        arrays.push_back(argument.array);
    if (setjmp(whereCalled))
        return "error: " + raised;
    mexFunction(outputCount, outputs.data(), static_cast<int>(arrays.size()), arrays.data());
    std::string shown = outputCount > 0 || outputs[0] ? show(outputs[0]) : "";
    for (int i = 1; i < outputCount; ++i)
        shown += " " + show(outputs[static_cast<std::size_t>(i)]);
    return shown;
}

void useGateway(StandInHooks& hooks, double compoundCount, const Arguments& phaseNames) {
    hooks.raise = raise;
    hooks.globalVariable = globalVariable;
    nComp = Argument(compoundCount).array;
    phases = keep({.kind = ArrayKind::cell, .rows = 1, .columns = phaseNames.size()});
    for (const Argument& name : phaseNames)
        phases->cells.push_back(name.array);
    if (mexFunction)
        return;
    const HMODULE gateway = LoadLibraryA(gatewayFile);
    if (!gateway)
        throw std::runtime_error("the gateway could not be loaded");
    mexFunction = reinterpret_cast<MexFunction*>(
        reinterpret_cast<std::uintptr_t>(GetProcAddress(gateway, "mexFunction")));
}
