// Any arguments of a script to any command: an error with a text, or one request that fits the block.
#include "Check.h"
#include "CommandForms.h"
#include "PlayedGateway.h"
#include "channel/BlockSize.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <cstring>

namespace {

using namespace solvane::soak;

const mxArray* anyArray(FuzzedDataProvider& input) {
    mxArray* array = keep({.kind = input.PickValueInArray({ArrayKind::number, ArrayKind::integer,
                                                           ArrayKind::logical, ArrayKind::text})});
    array->isComplex = input.ConsumeIntegralInRange(0, 7) == 7;
    array->isSparse = input.ConsumeIntegralInRange(0, 7) == 7;
    if (array->kind == ArrayKind::text) {
        array->characters = input.ConsumeRandomLengthString();
        array->columns = array->characters.size();
        array->rows = input.ConsumeIntegralInRange<std::size_t>(0, 8) > 0 ? 1 : 0;
        if (array->rows == 0)
            array->columns = 0;
        return array;
    }
    array->rows = input.ConsumeIntegralInRange<std::size_t>(0, 3);
    array->columns = input.ConsumeIntegralInRange<std::size_t>(0, 3);
    for (std::size_t i = 0; i < array->rows * array->columns; ++i) {
        // Bytes may be any number: infinite, subnormal, none.
        const auto bits = input.ConsumeIntegral<std::uint64_t>();
        double value = 0;
        std::memcpy(&value, &bits, sizeof value);
        array->numbers.push_back(input.ConsumeBool() ? value : static_cast<double>(bits % 1000));
    }
    return array;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    const auto compounds = input.ConsumeIntegralInRange<std::size_t>(0, 3);
    const std::vector<std::string> phases(input.ConsumeIntegralInRange<std::size_t>(0, 2), "Vapor");
    PlayedGateway gateway(compounds, phases, std::string(4096, '\0'));
    const std::uint64_t blockSize = solvane::blockSizeFor(
        compounds, phases.empty() ? std::nullopt : std::optional<std::uint64_t>(phases.size()));

    const CommandForm& form =
        commandForms()[input.ConsumeIntegralInRange<std::size_t>(0, commandForms().size() - 1)];
    std::vector<const mxArray*> arguments{text(form.name)};
    const std::size_t count =
        input.ConsumeBool() ? form.arguments.size() : input.ConsumeIntegralInRange<std::size_t>(0, 9);
    for (std::size_t i = 0; i < count; ++i)
        arguments.push_back(anyArray(input));
    gateway.call(form.outputs, arguments);
    check(gateway.requests().size() <= 1);
    check(gateway.requests().size() == 1 || !gateway.error().empty());
    for (const std::string& request : gateway.requests()) {
        check(count == form.arguments.size());
        check(request.size() >= sizeof form.code && request.size() <= blockSize);
        check(std::memcmp(request.data(), &form.code, sizeof form.code) == 0);
    }
    return 0;
}
