#include "OneElementArrays.h"

#include <array>

namespace solvane {

OneReal::OneReal() : array_(VariantArray::of(std::array{0.0})) {}

const VARIANT& OneReal::of(double value) {
    *static_cast<double*>(array_.get().parray->pvData) = value;
    return array_.get();
}

OneText::OneText() : array_(VariantArray::ofTexts({nullptr})) {}

const VARIANT& OneText::of(const Bstr& text) {
    replaceBstr(*static_cast<BSTR*>(array_.get().parray->pvData), text.view());
    return array_.get();
}

} // namespace solvane
