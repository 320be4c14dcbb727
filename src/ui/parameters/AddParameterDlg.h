#pragma once

#include "ui/controls/Dialog.h"
#include "unit/model/CParameter.h"

namespace solvane {

/// Asks for the name and the type of a new parameter.
class CAddParameterDlg : public Dialog {
public:
    CAddParameterDlg();

    // Valid after the dialog ended with IDOK.
    const std::wstring& name() const { return name_; }
    ParameterKind kind() const { return kind_; }

private:
    void onInit() override;
    void onCommand(int id, int notification) override;

    std::wstring name_;
    ParameterKind kind_ = ParameterKind::real;
};

} // namespace solvane
