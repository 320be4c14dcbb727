#pragma once

#include "ParameterEditor.h"

namespace solvane {

/// A text, free or one of a list of options.
class CStringParameterDlg : public ParameterEditor {
public:
    explicit CStringParameterDlg(CParameter& parameter);

private:
    void showValues() override;
    const wchar_t* storeValues() override;
    void onCommand(int id, int notification) override;

    void addOption();
    void removeOption();
    void listOption(const std::wstring& option) const;
    /// Fills the choices for the value and the default; their texts stay.
    void fillChoices() const;
    void updateButtons() const;
    int selectedOption() const;
    bool isOption(const std::wstring& text) const;

    std::vector<std::wstring> options_;
};

} // namespace solvane
