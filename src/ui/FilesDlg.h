#pragma once

#include "ListView.h"
#include "Tab.h"

namespace solvane {

/// The files that travel with the model beside its script. They lie in the working folder; the unit holds
/// their names.
class CFilesDlg : public Tab {
public:
    CFilesDlg(Unit& unit, CEditDlg& mainWindow);

    void RefreshFromModel() override;

private:
    void onInit() override;
    void onCommand(int id, int notification) override;
    LRESULT onNotify(const NMHDR& header) override;
    void onSize(int width, int height) override;
    void onDestroy() override;

    void browse();
    void newScript();
    void open();
    void rename();
    void remove();
    void saveAs();

    /// Puts a file, which lies in the working folder already, at the list's end.
    void append(const std::wstring& name);
    /// Whether a row other than the `except`th has this name.
    bool isListed(const std::wstring& name, int except = -1) const;
    /// Tells the user where no model can have a file of this name.
    bool isRefused(const std::wstring& name, const wchar_t* title) const;
    void updateButtons() const;

    std::string& nameOf(int row) const;
    std::wstring workingFolder() const;
    std::wstring pathOf(const std::wstring& name) const { return workingFolder() + name; }

    ListView list_;
};

} // namespace solvane
