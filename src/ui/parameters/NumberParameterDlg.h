#pragma once

#include "ParameterEditor.h"

namespace solvane {

/// What the editors of real (T double) and integer (T LONG) parameters share: the value, its default and its
/// limits.
template <class T>
class NumberParameterDlg : public ParameterEditor {
protected:
    using ParameterEditor::ParameterEditor;

    void showValues() override;
    const wchar_t* storeValues() override;
};

extern template class NumberParameterDlg<double>;
extern template class NumberParameterDlg<LONG>;

} // namespace solvane
