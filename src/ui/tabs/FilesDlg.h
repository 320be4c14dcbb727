#pragma once

#include "Tab.h"
#include "ui/controls/ListView.h"

namespace solvane {

/// The additional files of the model. They lie in the working folder; the unit holds their names.
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

    /// Appends a file of the working folder to the list.
    void append(const std::wstring& name);
    /// Whether a row other than `except` has this name.
    bool isListed(const std::wstring& name, int except = -1) const;
    /// Reports a name that no file of a model can have.
    bool isRefused(const std::wstring& name, const wchar_t* title) const;
    void updateButtons() const;

    std::string& nameOf(int row) const;
    std::wstring workingFolder() const;
    std::wstring pathOf(const std::wstring& name) const { return workingFolder() + name; }

    ListView list_;
};

} // namespace solvane
