/// Reading a command's arguments and packing them into its request.
#pragma once

#include "KnownNames.h"
#include "channel/CommandCode.h"
#include "mex/MexFunctions.h"

#include <cstddef>
#include <span>
#include <string>

namespace solvane::gateway {

enum class FieldKind {
    port,        ///< int32, a port counted from 1; its range is the unit's to judge
    number,      ///< double, finite
    composition, ///< nComp doubles, finite, given as a row or a column
    value,       ///< a parameter's value after its tag
    text,        ///< text in the code page, with a closing NUL
    filledText,  ///< the same, not empty
};

/// One field of a request.
struct Field {
    FieldKind kind;
    /// Which argument of the function it comes from, counted from 1.
    std::size_t argument;
    const char* name;
    /// What a text names.
    NameKind names = NameKind::any;
};

/// Packs a request: the command's code, then the fields in the order of the wire. `arguments` are as many as
/// the fields name. False with an error that begins with the argument's name.
bool packRequest(CommandCode code, std::span<const Field> fields, std::span<const mxArray* const> arguments,
                 std::size_t compoundCount, std::string& request, std::string& error);

} // namespace solvane::gateway
