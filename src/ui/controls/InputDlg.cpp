#include "InputDlg.h"

#include "Layout.h"
#include "resources/ResourceIds.h"

namespace solvane {

CInputDlg::CInputDlg(const wchar_t* title, const wchar_t* prompt, const wchar_t* start)
    : Dialog(IDD_INPUT), title_(title), prompt_(prompt), start_(start) {}

void CInputDlg::onInit() {
    centreOverOwner(window());
    SetWindowTextW(window(), title_);
    setText(IDC_INPUT_PROMPT, prompt_);
    if (start_)
        setText(IDC_INPUT_TEXT, start_);
}

void CInputDlg::onCommand(int id, int) {
    if (id == IDOK)
        result_ = text(IDC_INPUT_TEXT);
    if (id == IDCANCEL || (id == IDOK && !result_.empty()))
        end(id);
}

std::optional<std::wstring> askText(const wchar_t* title, const wchar_t* prompt, const wchar_t* start) {
    CInputDlg dialog(title, prompt, start);
    if (dialog.runModal() != IDOK)
        return std::nullopt;
    return dialog.result();
}

} // namespace solvane
