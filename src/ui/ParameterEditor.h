#pragma once

#include "Dialog.h"
#include "unit/model/CParameter.h"

namespace solvane {

/// Shows the editor of the parameter's type. True where it was closed with OK; otherwise the parameter is as
/// it was.
bool editParameter(CParameter& parameter);

/// What the editors of all types have in common: the title, the mode, and that the parameter is written only
/// once OK finds all fields right.
class ParameterEditor : public Dialog {
protected:
    ParameterEditor(int templateId, CParameter& parameter) : Dialog(templateId), parameter_(parameter) {}

    /// Fills the fields from the parameter.
    virtual void showValues() = 0;
    /// Writes the fields into the parameter and returns null, or returns why they cannot be.
    virtual const wchar_t* storeValues() = 0;

    void onInit() override;
    void onCommand(int id, int notification) override;

    CParameter& parameter_;
};

} // namespace solvane
