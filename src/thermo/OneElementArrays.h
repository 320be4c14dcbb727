/// Arrays of one element, created once and reused by each call that takes a single value or name.
#pragma once

#include "com/VariantArray.h"

namespace solvane {

class OneReal {
public:
    OneReal();

    /// Valid until the next call.
    const VARIANT& of(double value);

private:
    VariantArray array_;
};

class OneText {
public:
    OneText();

    /// Valid until the next call.
    const VARIANT& of(const Bstr& text);

private:
    VariantArray array_;
};

} // namespace solvane
