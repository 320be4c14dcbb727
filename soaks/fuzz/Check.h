#pragma once

/// What must hold whatever the input is; libFuzzer keeps the input that breaks it.
inline void check(bool holds) {
    if (!holds)
        __builtin_trap();
}
