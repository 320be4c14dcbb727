#pragma once

#include "ParameterEditor.h"

namespace solvane {

class CBooleanParameterDlg : public ParameterEditor {
public:
    explicit CBooleanParameterDlg(CParameter& parameter);

private:
    void showValues() override;
    const wchar_t* storeValues() override;
};

} // namespace solvane
