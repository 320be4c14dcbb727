#pragma once

#include "Dialog.h"

namespace solvane {

/// Asks for one line of text. What is empty is not accepted.
class CInputDlg : public Dialog {
public:
    /// The texts are borrowed. No start value leaves the field empty.
    CInputDlg(const wchar_t* title, const wchar_t* prompt, const wchar_t* start = nullptr);

    /// Once the dialog has ended with IDOK.
    const std::wstring& result() const { return result_; }

private:
    void onInit() override;
    void onCommand(int id, int notification) override;

    const wchar_t* title_;
    const wchar_t* prompt_;
    const wchar_t* start_;
    std::wstring result_;
};

/// Shows the dialog over the active window. Nothing where the user gave up.
std::optional<std::wstring> askText(const wchar_t* title, const wchar_t* prompt,
                                    const wchar_t* start = nullptr);

} // namespace solvane
