#include "Request.h"

#include "BlockText.h"
#include "channel/ValueTags.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <limits>

namespace solvane::gateway {

namespace {

static_assert(std::endian::native == std::endian::little, "the block is little-endian");

template <typename Number>
void append(std::string& request, Number number) {
    request.append(reinterpret_cast<const char*>(&number), sizeof number);
}

bool isRealScalar(const mxArray* array) {
    return (mxIsNumeric(array) || mxIsLogical(array)) && !mxIsComplex(array) && !mxIsSparse(array) &&
           mxGetNumberOfElements(array) == 1;
}

bool packPort(const mxArray* argument, std::size_t, std::string& request, std::string& error) {
    using Limits = std::numeric_limits<std::int32_t>;
    const double port = isRealScalar(argument) ? mxGetScalar(argument) : std::nan("");
    if (!(port >= Limits::min() && port <= Limits::max()) || port != std::floor(port)) {
        error = "must be one whole number, counted from 1" + gotText(argument);
        return false;
    }
    append(request, static_cast<std::int32_t>(port));
    return true;
}

bool packNumber(const mxArray* argument, std::size_t, std::string& request, std::string& error) {
    if (!isRealScalar(argument) || !std::isfinite(mxGetScalar(argument))) {
        error = "must be one real, finite number" + gotText(argument);
        return false;
    }
    append(request, mxGetScalar(argument));
    return true;
}

bool packComposition(const mxArray* argument, std::size_t compoundCount, std::string& request,
                     std::string& error) {
    const bool isVector = mxIsDouble(argument) && !mxIsComplex(argument) && !mxIsSparse(argument) &&
                          std::min(mxGetM(argument), mxGetN(argument)) <= 1 &&
                          mxGetNumberOfElements(argument) == compoundCount;
    const double* values = isVector ? mxGetPr(argument) : nullptr;
    if (!isVector ||
        !std::all_of(values, values + compoundCount, [](double x) { return std::isfinite(x); })) {
        error = "must be a full vector of " + std::to_string(compoundCount) +
                " real, finite doubles, the mole fraction of each compound" + gotText(argument);
        if (compoundCount > 1 && mxGetM(argument) == compoundCount && mxGetN(argument) == compoundCount)
            error += "; a row with a column makes a matrix: write x(:) for each";
        return false;
    }
    request.append(reinterpret_cast<const char*>(values), compoundCount * sizeof *values);
    return true;
}

bool packText(const mxArray* argument, std::size_t, std::string& request, std::string& error) {
    std::string bytes;
    if (!readText(argument, bytes, error))
        return false;
    request.append(bytes).append(1, '\0');
    return true;
}

bool packFilledText(const mxArray* argument, std::size_t compoundCount, std::string& request,
                    std::string& error) {
    if (mxIsChar(argument) && mxGetNumberOfElements(argument) == 0) {
        error = "must not be empty";
        return false;
    }
    return packText(argument, compoundCount, request, error);
}

/// A number goes as a real: the unit rounds it where the parameter is an integer.
bool packValue(const mxArray* argument, std::size_t compoundCount, std::string& request, std::string& error) {
    if (mxIsChar(argument)) {
        append(request, ValueTag::text);
        return packText(argument, compoundCount, request, error);
    }
    if (!isRealScalar(argument)) {
        error = "must be one real number, one logical value, or text in single quotes" + gotText(argument);
        return false;
    }
    if (mxIsLogical(argument)) {
        append(request, ValueTag::boolean);
        append(request, static_cast<std::int32_t>(mxGetScalar(argument) != 0));
    } else {
        append(request, ValueTag::real);
        append(request, mxGetScalar(argument));
    }
    return true;
}

using Pack = bool(const mxArray* argument, std::size_t compoundCount, std::string& request,
                  std::string& error);

/// In the order of FieldKind.
constexpr std::array<Pack*, 6> packers{packPort,  packNumber, packComposition,
                                       packValue, packText,   packFilledText};

} // namespace

bool packRequest(CommandCode code, std::span<const Field> fields, std::span<const mxArray* const> arguments,
                 std::size_t compoundCount, std::string& request, std::string& error) {
    request.clear();
    append(request, code);
    for (const Field& field : fields) {
        Pack* pack = packers[static_cast<std::size_t>(field.kind)];
        if (!pack(arguments[field.argument - 1], compoundCount, request, error)) {
            error = std::string(field.name) + " " + error;
            return false;
        }
    }
    return true;
}

} // namespace solvane::gateway
