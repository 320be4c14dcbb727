#pragma once

#include <windows.h>

namespace solvane {

/// While it exists, Ctrl+Tab and Ctrl+Shift+Tab select the next and the previous tab in the thread's dialogs:
/// of the innermost tab control around the focus, or of the dialog's own. From a tab itself the Tab key leads
/// into its page. Dialogs do not handle these keys for tabs. A control that wants all keys keeps these too.
class TabKeys {
public:
    TabKeys();
    ~TabKeys();
    TabKeys(const TabKeys&) = delete;
    TabKeys& operator=(const TabKeys&) = delete;

private:
    HHOOK hook_;
};

} // namespace solvane
