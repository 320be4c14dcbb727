#include "AboutDlg.h"

#include "com/Module.h"
#include "com/Text.h"
#include "resources/ResourceIds.h"
#include "runtime/MexPlacement.h"
#include "ui/EditDlg.h"
#include "ui/controls/Layout.h"
#include "unit/model/LicenceCheck.h"

#include <filesystem>
#include <fstream>
#include <iterator>

namespace solvane {

namespace {

/// Empty where the file cannot be read.
std::wstring licenceText() {
    std::ifstream file(std::filesystem::path(ComModule::current().pathBeside(licenceFile)));
    return widen(std::string(std::istreambuf_iterator<char>(file), {}), CP_UTF8);
}

} // namespace

CAboutDlg::CAboutDlg(Unit& unit, CEditDlg& mainWindow) : Tab(IDD_ABOUT, unit, mainWindow) {}

void CAboutDlg::onInit() {
    setText(IDC_ABOUT_CODE, licenceCode);
    setText(IDC_ABOUT_TYPE, licenceType);
    setText(IDC_ABOUT_VERSION, ComModule::current().version());
    setText(IDC_ABOUT_MATLAB, installedMatlab().value_or(L"<not found>"));
    setText(IDC_ABOUT_LICENCE, licenceText());
}

void CAboutDlg::onCommand(int id, int) {
    if (id == IDCANCEL)
        mainWindow_.close();
}

void CAboutDlg::onSize(int width, int height) {
    Layout layout;
    int bottom = 0;
    for (const int id :
         {IDC_ABOUT_PRODUCT, IDC_ABOUT_CODE, IDC_ABOUT_TYPE, IDC_ABOUT_VERSION, IDC_ABOUT_MATLAB}) {
        const Box field = boxOf(control(id));
        layout.move(control(id), {field.left, field.top, width - layoutMargin - field.left, field.height});
        bottom = field.bottom();
    }
    const int top = bottom + layoutMargin;
    layout.move(control(IDC_ABOUT_LICENCE),
                {layoutMargin, top, width - 2 * layoutMargin, height - layoutMargin - top});
}

} // namespace solvane
