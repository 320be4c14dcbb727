#pragma once

#include "Dialog.h"

namespace solvane {

/// Asks for one line of text, which must not be empty.
class CInputDlg : public Dialog {
public:
    /// The texts are borrowed. No start value leaves the field empty.
    CInputDlg(const wchar_t* title, const wchar_t* prompt, const wchar_t* start = nullptr);

    /// Valid after the dialog ended with IDOK.
    const std::wstring& result() const { return result_; }

private:
    void onInit() override;
    void onCommand(int id, int notification) override;

    const wchar_t* title_;
    const wchar_t* prompt_;
    const wchar_t* start_;
    std::wstring result_;
};

/// Shows the dialog over the active window. Nothing if the user cancelled.
std::optional<std::wstring> askText(const wchar_t* title, const wchar_t* prompt,
                                    const wchar_t* start = nullptr);

} // namespace solvane
