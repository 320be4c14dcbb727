#pragma once

#include "NumberParameterDlg.h"

namespace solvane {

class CIntegerParameterDlg : public NumberParameterDlg<LONG> {
public:
    explicit CIntegerParameterDlg(CParameter& parameter);
};

} // namespace solvane
