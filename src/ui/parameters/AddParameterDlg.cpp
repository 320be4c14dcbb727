#include "AddParameterDlg.h"

#include "ParameterTexts.h"
#include "resources/ResourceIds.h"
#include "ui/Messages.h"
#include "ui/controls/ComboBox.h"

namespace solvane {

namespace {

/// The entries in the order offered, not in that of their numbers.
constexpr std::array offered{ParameterKind::real, ParameterKind::integer, ParameterKind::boolean,
                             ParameterKind::string};

} // namespace

CAddParameterDlg::CAddParameterDlg() : Dialog(IDD_PARAMETER_ADD) {}

void CAddParameterDlg::onInit() {
    for (const ParameterKind kind : offered)
        fillComboBox(control(IDC_PARAMETER_TYPE), {kindWord(kind)}, 0);
}

void CAddParameterDlg::onCommand(int id, int notification) {
    if (id == IDOK) {
        name_ = text(IDC_PARAMETER_NAME);
        kind_ = offered[static_cast<std::size_t>(selectedEntry(control(IDC_PARAMETER_TYPE)))];
        if (name_.empty())
            return showError(window(), L"Please specify a name", L"Add parameter:");
    }
    Dialog::onCommand(id, notification);
}

} // namespace solvane
