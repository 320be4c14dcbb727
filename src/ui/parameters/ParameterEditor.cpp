#include "ParameterEditor.h"

#include "BooleanParameterDlg.h"
#include "IntegerParameterDlg.h"
#include "ParameterTexts.h"
#include "RealParameterDlg.h"
#include "StringParameterDlg.h"
#include "resources/ResourceIds.h"
#include "ui/Messages.h"
#include "ui/controls/ComboBox.h"

namespace solvane {

namespace {

template <class Editor>
INT_PTR run(CParameter& parameter) {
    return Editor(parameter).runModal();
}

} // namespace

bool editParameter(CParameter& parameter) {
    static constexpr std::array editors{run<CRealParameterDlg>, run<CIntegerParameterDlg>,
                                        run<CStringParameterDlg>, run<CBooleanParameterDlg>};
    return editors[static_cast<std::size_t>(parameter.parameterKind)](parameter) == IDOK;
}

void ParameterEditor::onInit() {
    const std::wstring title =
        kindWord(parameter_.parameterKind) + (L" parameter \"" + parameter_.componentName + L"\":");
    SetWindowTextW(window(), title.c_str());
    fillComboBox(control(IDC_PARAMETER_MODE), {L"Input", L"Output"}, parameter_.isInput ? 0 : 1);
    showValues();
    focus(IDC_PARAMETER_VALUE); // what most users come for
}

void ParameterEditor::onCommand(int id, int notification) {
    if (id == IDOK) {
        if (const wchar_t* fault = storeValues())
            return showError(window(), fault, L"Error:");
        parameter_.isInput = selectedEntry(control(IDC_PARAMETER_MODE)) == 0;
    }
    Dialog::onCommand(id, notification);
}

} // namespace solvane
