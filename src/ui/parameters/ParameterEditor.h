#pragma once

#include "ui/controls/Dialog.h"
#include "unit/model/CParameter.h"

namespace solvane {

/// Shows the editor for the parameter's type. Returns true if it was closed with OK; otherwise the parameter
/// is unchanged.
bool editParameter(CParameter& parameter);

/// What the editors of all types have in common: the title, the mode, and that the parameter is written only
/// once OK finds all fields right.
class ParameterEditor : public Dialog {
protected:
    ParameterEditor(int templateId, CParameter& parameter) : Dialog(templateId), parameter_(parameter) {}

    /// Fills the fields from the parameter.
    virtual void showValues() = 0;
    /// Writes the fields into the parameter and returns null, or returns why they are invalid.
    virtual const wchar_t* storeValues() = 0;

    void onInit() override;
    void onCommand(int id, int notification) override;

    CParameter& parameter_;
};

} // namespace solvane
