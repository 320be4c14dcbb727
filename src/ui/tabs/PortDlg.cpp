#include "PortDlg.h"

#include "PortNames.h"
#include "com/Text.h"
#include "resources/ResourceIds.h"
#include "ui/EditDlg.h"
#include "ui/Messages.h"
#include "ui/controls/Layout.h"
#include "unit/model/Unit.h"

namespace solvane {

struct CPortDlg::Side {
    std::vector<ComRef<CPort>> Unit::* ports;
    bool isFeed;
    const wchar_t* word; ///< of the names of new ports
    const wchar_t* question;
    int label, list, add, remove; ///< numbers of the controls
};

constexpr std::array<CPortDlg::Side, 2> CPortDlg::sides{{
    {&Unit::feedPorts, true, L"Feed", L"Delete feed port \"", IDC_PORT_FEEDS_LABEL, IDC_PORT_FEEDS,
     IDC_PORT_ADD_FEED, IDC_PORT_REMOVE_FEED},
    {&Unit::productPorts, false, L"Product", L"Delete product port \"", IDC_PORT_PRODUCTS_LABEL,
     IDC_PORT_PRODUCTS, IDC_PORT_ADD_PRODUCT, IDC_PORT_REMOVE_PRODUCT},
}};

CPortDlg::CPortDlg(Unit& unit, CEditDlg& mainWindow) : Tab(IDD_PORT, unit, mainWindow) {}

const ListView& CPortDlg::listOf(const Side& side) const {
    return lists_[static_cast<std::size_t>(&side - sides.data())];
}

void CPortDlg::onInit() {
    static constexpr std::array columns{L"Name", L"#", L"Connected to"};
    for (std::size_t i = 0; i < sides.size(); ++i)
        lists_[i] = ListView(control(sides[i].list), columns);
    RefreshFromModel();
}

void CPortDlg::RefreshFromModel() {
    for (const Side& side : sides)
        fill(side);
    updateButtons();
}

void CPortDlg::fill(const Side& side) const {
    std::vector<std::vector<std::wstring>> rows;
    for (const ComRef<CPort>& port : unit_.*side.ports)
        rows.push_back({port->componentName, std::to_wstring(rows.size() + 1), connectedName(*port)});
    listOf(side).fill(rows);
}

void CPortDlg::updateButtons() const {
    for (const Side& side : sides)
        enable(side.remove, listOf(side).selected() >= 0);
}

void CPortDlg::onCommand(int id, int) {
    for (const Side& side : sides) {
        if (id == side.add)
            return add(side);
        if (id == side.remove)
            return remove(side);
    }
}

LRESULT CPortDlg::onNotify(const NMHDR& header) {
    for (const Side& side : sides) {
        if (header.idFrom != static_cast<UINT_PTR>(side.list))
            continue;
        if (header.code == LVN_ITEMCHANGED)
            updateButtons();
        if (header.code == LVN_ENDLABELEDITW)
            return rename(side, reinterpret_cast<const NMLVDISPINFOW&>(header).item);
    }
    return FALSE;
}

void CPortDlg::add(const Side& side) {
    auto& ports = unit_.*side.ports;
    ports.push_back(unit_.CreatePort(side.isFeed, freePortName(unit_, side.word)));
    const int row = static_cast<int>(ports.size()) - 1;
    fill(side);
    listOf(side).select(row);
    updateButtons();
    unit_.invalidate();
    unit_.markChanged();
    focus(side.list);
    listOf(side).editLabel(row); // the user types the name next
}

void CPortDlg::remove(const Side& side) {
    const int row = listOf(side).selected();
    if (row < 0)
        return;
    auto& ports = unit_.*side.ports;
    const ComRef<CPort> port = ports[static_cast<std::size_t>(row)];
    const std::wstring question = side.question + port->componentName + L"\"?";
    if (!isRemovalConfirmed(mainWindow_.window(), question, L"Delete port:"))
        return;
    port->Disconnect();
    port->ownerUnit = nullptr; // the host may hold the port longer
    std::erase_if(ports, [&](const ComRef<CPort>& each) { return each.get() == port.get(); });
    focus(side.list); // before the button is disabled
    fill(side);
    updateButtons();
    unit_.invalidate();
    unit_.markChanged();
}

bool CPortDlg::rename(const Side& side, const LVITEMW& edited) {
    if (!edited.pszText)
        return false; // the user cancelled
    CPort& port = *(unit_.*side.ports)[static_cast<std::size_t>(edited.iItem)];
    const std::wstring name = edited.pszText;
    if (compareNoCase(name, port.componentName) != 0 && isPortName(unit_, name, &port)) {
        showError(mainWindow_.window(), L"This name is already in use for a port name", L"Rename port:");
        return false;
    }
    port.componentName = name;
    fill(side);
    listOf(side).select(edited.iItem);
    updateButtons();
    unit_.markChanged();
    return true;
}

void CPortDlg::onSize(int width, int height) {
    const int listWidth = (width - 3 * layoutMargin) / 2;
    int left = layoutMargin;
    {
        Layout layout;
        for (const Side& side : sides) {
            const Box label = boxOf(control(side.label));
            const Box button = boxOf(control(side.add));
            const int listTop = label.bottom();
            const int buttonTop = height - layoutMargin - button.height;
            layout.move(control(side.label), {left, label.top, listWidth, label.height});
            layout.move(control(side.list), {left, listTop, listWidth, buttonTop - layoutMargin - listTop});
            layout.move(control(side.add), {left, buttonTop, button.width, button.height});
            layout.move(control(side.remove), {left + button.width, buttonTop, button.width, button.height});
            left += listWidth + layoutMargin;
        }
    }
    for (const ListView& list : lists_)
        list.fillWidth();
}

} // namespace solvane
