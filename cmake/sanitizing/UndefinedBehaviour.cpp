// What code compiled with -fsanitize=undefined calls. The records' layouts are the compiler's.
#include "Finding.h"

#include <cstdint>
#include <cstdio>

namespace {

struct Place {
    const char* file;
    std::uint32_t line;
    std::uint32_t column;
};

struct TypeMismatch {
    Place place;
    const void* type;
    unsigned char logOfAlignment;
    unsigned char access;
};

[[noreturn]] void report(const char* what, const Place& place) {
    char text[400];
    std::snprintf(text, sizeof text, "%s:%u:%u: %s", place.file ? place.file : "?", place.line, place.column,
                  what);
    reportFinding(text);
}

} // namespace

#define CHECK(name, what, ...)                                                                               \
    extern "C" void __ubsan_handle_##name(const Place* place, ##__VA_ARGS__) {                               \
        report(what, *place);                                                                                \
    }

using Value = void*;
CHECK(add_overflow_abort, "signed addition overflows", Value, Value)
CHECK(sub_overflow_abort, "signed subtraction overflows", Value, Value)
CHECK(mul_overflow_abort, "signed multiplication overflows", Value, Value)
CHECK(negate_overflow_abort, "negation overflows", Value)
CHECK(divrem_overflow_abort, "division by zero, or its quotient overflows", Value, Value)
CHECK(shift_out_of_bounds_abort, "shift by too much, or of a negative number", Value, Value)
CHECK(out_of_bounds_abort, "index out of the array's bounds", Value)
CHECK(pointer_overflow_abort, "pointer arithmetic on null or beyond the address space", Value, Value)
CHECK(vla_bound_not_positive_abort, "array of no or negative length", Value)
CHECK(load_invalid_value_abort, "value that a bool or enumeration cannot have", Value)
CHECK(float_cast_overflow_abort, "floating-point number beyond the integer's range", Value)
CHECK(invalid_builtin_abort, "zero given to a count of leading or trailing zeros")
CHECK(nonnull_arg_abort, "null given for an argument that must not be null")
CHECK(builtin_unreachable, "unreachable code is reached")
CHECK(missing_return, "function ends without returning a value")

extern "C" void __ubsan_handle_nonnull_return_v1_abort(const void*, const Place* place) {
    report("null returned by a function that never returns null", *place);
}

extern "C" void __ubsan_handle_type_mismatch_v1_abort(const TypeMismatch* record, std::uintptr_t address) {
    const std::uintptr_t alignment = std::uintptr_t{1} << record->logOfAlignment;
    report(!address                    ? "null pointer is used"
           : address & (alignment - 1) ? "misaligned pointer is used"
                                       : "object too small for its type",
           record->place);
}
