#pragma once

#include "NumberParameterDlg.h"

namespace solvane {

/// Adds the dimensionality, whose unit text follows what is typed.
class CRealParameterDlg : public NumberParameterDlg<double> {
public:
    explicit CRealParameterDlg(CParameter& parameter);

private:
    void showValues() override;
    const wchar_t* storeValues() override;
    void onCommand(int id, int notification) override;

    std::vector<double> dimensionality() const;
};

} // namespace solvane
