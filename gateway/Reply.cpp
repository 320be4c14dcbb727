#include "Reply.h"

#include "BlockText.h"
#include "channel/ValueTags.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace solvane::gateway {

namespace {

/// How much of the block is fetched at a time in search of a text's end.
constexpr std::size_t textChunk = 1024;

constexpr char longerThanBlock[] = "the unit's answer is longer than its block";

mxArray* makeMatrix(std::size_t rows, std::size_t columns, const std::vector<double>& columnByColumn) {
    mxArray* matrix = mxCreateDoubleMatrix(rows, columns, mxREAL);
    std::copy(columnByColumn.begin(), columnByColumn.end(), mxGetPr(matrix));
    return matrix;
}

mxArray* makeNumber(double number) {
    return makeMatrix(1, 1, {number});
}

bool failUnknown(const char* what, std::uint32_t number, std::string& error) {
    error = std::string("the unit answered with an unknown ") + what + ", " + std::to_string(number);
    return false;
}

} // namespace

bool Reply::have(std::uint64_t count, std::string& error) {
    const std::uint64_t missing = position_ + count > bytes_.size() ? position_ + count - bytes_.size() : 0;
    if (missing == 0)
        return true;
    if (!transport_.read(bytes_.size(),
                         static_cast<std::size_t>(std::min<std::uint64_t>(missing, UINT32_MAX)), bytes_,
                         error))
        return false;
    if (position_ + count <= bytes_.size())
        return true;
    error = longerThanBlock;
    return false;
}

bool Reply::copy(void* target, std::uint64_t count, std::string& error) {
    if (!have(count, error))
        return false;
    const auto size = static_cast<std::size_t>(count);
    if (size > 0)
        std::memcpy(target, bytes_.data() + position_, size);
    position_ += size;
    return true;
}

bool Reply::word(std::uint32_t& number, std::string& error) {
    return copy(&number, sizeof number, error);
}

bool Reply::number(double& number, std::string& error) {
    return copy(&number, sizeof number, error);
}

bool Reply::numbers(std::uint64_t count, std::vector<double>& numbers, std::string& error) {
    if (!have(count * sizeof(double), error))
        return false;
    numbers.resize(static_cast<std::size_t>(count));
    return copy(numbers.data(), count * sizeof(double), error);
}

bool Reply::text(std::string& text, std::string& error) {
    std::size_t end = bytes_.find('\0', position_);
    while (end == std::string::npos) {
        const std::size_t searched = bytes_.size();
        if (!transport_.read(searched, textChunk, bytes_, error))
            return false;
        if (bytes_.size() == searched) {
            error = longerThanBlock;
            return false;
        }
        end = bytes_.find('\0', searched);
    }
    text = bytes_.substr(position_, end - position_);
    position_ = end + 1;
    return true;
}

std::string_view Reply::rest(std::size_t count) {
    std::string ignored;
    static_cast<void>(have(count, ignored));
    return std::string_view(bytes_).substr(std::min(position_, bytes_.size()), count);
}

bool unpackNothing(Reply&, const Run&, std::span<mxArray*>, std::string&) {
    return true;
}

bool unpackCount(Reply& reply, const Run&, std::span<mxArray*> outputs, std::string& error) {
    std::uint32_t count = 0;
    if (!reply.word(count, error))
        return false;
    outputs[0] = makeNumber(count);
    return true;
}

bool unpackNumber(Reply& reply, const Run&, std::span<mxArray*> outputs, std::string& error) {
    double number = 0;
    if (!reply.number(number, error))
        return false;
    outputs[0] = makeNumber(number);
    return true;
}

bool unpackText(Reply& reply, const Run&, std::span<mxArray*> outputs, std::string& error) {
    std::string text;
    if (!reply.text(text, error))
        return false;
    outputs[0] = makeText(text);
    return true;
}

bool unpackVector(Reply& reply, const Run& run, std::span<mxArray*> outputs, std::string& error) {
    std::vector<double> values;
    if (!reply.numbers(run.compoundCount, values, error))
        return false;
    outputs[0] = makeMatrix(run.compoundCount, 1, values);
    return true;
}

/// A word that tells the shape, then the values, which fill the matrix column by column.
bool unpackShaped(Reply& reply, const Run& run, std::span<mxArray*> outputs, std::string& error) {
    const std::size_t n = run.compoundCount;
    struct Shape {
        std::size_t rows, columns;
    };
    // By ValueShape.
    const std::array<Shape, 5> shapes{{{1, 1}, {n, 1}, {n, n}, {n, 2}, {n, 2 * n}}};
    std::uint32_t code = 0;
    std::vector<double> values;
    if (!reply.word(code, error))
        return false;
    if (code >= shapes.size())
        return failUnknown("shape", code, error);
    if (!reply.numbers(shapes[code].rows * shapes[code].columns, values, error))
        return false;
    outputs[0] = makeMatrix(shapes[code].rows, shapes[code].columns, values);
    return true;
}

bool unpackParameter(Reply& reply, const Run& run, std::span<mxArray*> outputs, std::string& error) {
    std::uint32_t tag = 0;
    std::uint32_t integer = 0;
    if (!reply.word(tag, error))
        return false;
    switch (static_cast<ValueTag>(tag)) {
    case ValueTag::real:
        return unpackNumber(reply, run, outputs, error);
    case ValueTag::integer:
    case ValueTag::boolean:
        if (!reply.word(integer, error))
            return false;
        outputs[0] = makeNumber(static_cast<std::int32_t>(integer));
        return true;
    case ValueTag::text:
        return unpackText(reply, run, outputs, error);
    default:
        return failUnknown("kind of value", tag, error);
    }
}

bool unpackConstants(Reply& reply, const Run& run, std::span<mxArray*> outputs, std::string& error) {
    std::uint32_t kind = 0;
    if (!reply.word(kind, error))
        return false;
    if (kind == static_cast<std::uint32_t>(ConstantKind::numbers))
        return unpackVector(reply, run, outputs, error);
    if (kind != static_cast<std::uint32_t>(ConstantKind::texts))
        return failUnknown("kind of constant", kind, error);
    mxArray* texts = mxCreateCellMatrix(run.compoundCount, 1);
    std::string text;
    for (std::size_t compound = 0; compound < run.compoundCount; ++compound) {
        if (!reply.text(text, error))
            return false;
        mxSetCell(texts, compound, makeText(text));
    }
    outputs[0] = texts;
    return true;
}

namespace {

/// Phases as indices, counted from 1, into the run's phase names.
bool readPhaseIndices(Reply& reply, const Run& run, std::size_t count, mxArray* phases, std::string& error) {
    for (std::size_t phase = 0; phase < count; ++phase) {
        std::uint32_t index = 0;
        if (!reply.word(index, error))
            return false;
        if (index == 0 || index > run.phaseNames.size())
            return failUnknown("phase", index, error);
        mxSetCell(phases, phase, makeText(run.phaseNames[index - 1]));
    }
    return true;
}

bool readPhaseNames(Reply& reply, const Run&, std::size_t count, mxArray* phases, std::string& error) {
    std::string name;
    for (std::size_t phase = 0; phase < count; ++phase) {
        if (!reply.text(name, error))
            return false;
        mxSetCell(phases, phase, makeText(name));
    }
    return true;
}

} // namespace

/// A positive number of phases is followed by indices, a negative one by names; the rest is the same.
bool unpackEquilibrium(Reply& reply, const Run& run, std::span<mxArray*> outputs, std::string& error) {
    std::uint32_t word = 0;
    if (!reply.word(word, error))
        return false;
    const auto signedCount = static_cast<std::int32_t>(word);
    const auto count = static_cast<std::size_t>(signedCount < 0 ? -std::int64_t{signedCount} : signedCount);
    // Four bytes a phase come at the least; a count that the block can't hold must not size the cell array.
    if (count > run.blockSize / sizeof word)
        return failUnknown("number of phases", word, error);

    mxArray* phases = mxCreateCellMatrix(1, count);
    std::vector<double> fractions;
    std::vector<double> byCompound;
    double temperature = 0;
    double pressure = 0;
    if (!(signedCount < 0 ? readPhaseNames : readPhaseIndices)(reply, run, count, phases, error) ||
        !reply.numbers(count, fractions, error) ||
        !reply.numbers(count * run.compoundCount, byCompound, error) || !reply.number(temperature, error) ||
        !reply.number(pressure, error))
        return false;

    std::vector<double> byPhase(byCompound.size());
    for (std::size_t compound = 0; compound < run.compoundCount; ++compound)
        for (std::size_t phase = 0; phase < count; ++phase)
            byPhase[phase * run.compoundCount + compound] = byCompound[compound * count + phase];

    const std::array<mxArray*, 5> values{phases, makeMatrix(1, count, fractions),
                                         makeMatrix(run.compoundCount, count, byPhase),
                                         makeNumber(temperature), makeNumber(pressure)};
    std::copy_n(values.begin(), outputs.size(), outputs.begin());
    return true;
}

} // namespace solvane::gateway
