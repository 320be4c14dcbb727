// Any answer of a unit to any command: an error with a text, or outputs that are whole.
#include "Check.h"
#include "CommandForms.h"
#include "PlayedGateway.h"

#include <fuzzer/FuzzedDataProvider.h>

namespace {

using namespace solvane::soak;

const mxArray* argumentFor(ArgumentKind kind, std::size_t compounds) {
    switch (kind) {
    case ArgumentKind::composition:
        return numbers(compounds, 1, std::vector<double>(compounds, 0.5));
    case ArgumentKind::text:
        return text("enthalpy");
    default:
        return numbers(1, 1, {1});
    }
}

void checkWhole(const mxArray* array) {
    check(array != nullptr);
    const std::size_t count = array->rows * array->columns;
    switch (array->kind) {
    case ArrayKind::cell:
        check(array->cells.size() == count);
        for (const mxArray* cell : array->cells)
            checkWhole(cell);
        break;
    case ArrayKind::text:
        check(array->characters.size() == count);
        break;
    default:
        check(array->numbers.size() == count);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    const CommandForm& form =
        commandForms()[input.ConsumeIntegralInRange<std::size_t>(0, commandForms().size() - 1)];
    const auto compounds = input.ConsumeIntegralInRange<std::size_t>(0, 40);
    const std::vector<std::string> phases(input.ConsumeIntegralInRange<std::size_t>(0, 3), "Vapor");
    const int outputs = input.ConsumeIntegralInRange(0, form.outputs);
    PlayedGateway gateway(compounds, phases, input.ConsumeRemainingBytesAsString());

    std::vector<const mxArray*> arguments{text(form.name)};
    for (const ArgumentKind kind : form.arguments)
        arguments.push_back(argumentFor(kind, compounds));
    for (const mxArray* output : gateway.call(outputs, arguments))
        checkWhole(output);
    return 0;
}
