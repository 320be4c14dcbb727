// The page of the ports.

#include "FakeMaterial10.h"
#include "FakeMaterial11.h"
#include "UiTest.h"

#include <commctrl.h>

namespace solvane {
namespace {

using Rows = std::vector<std::vector<std::wstring>>;

class Ports : public UiTest {
protected:
    void loadPorts(const std::vector<std::wstring>& feeds, const std::vector<std::wstring>& products) {
        ModelBag model;
        model.script("1;").feeds(feeds).products(products);
        ASSERT_EQ(load(model), S_OK);
    }

    static void rename(WindowDriver& user, int list, int row, const wchar_t* name) {
        focusOn(user.control(list));
        SendMessageW(user.control(list), LVM_EDITLABELW, static_cast<WPARAM>(row), 0);
        user.endLabel(list, name);
    }

    /// Of the ports as the host finds them; '-' for a name that no port has.
    std::string directions(const std::vector<std::wstring>& names) {
        std::string result;
        for (const std::wstring& name : names) {
            ComRef<IDispatch> port;
            CapePortDirection direction = CAPE_INLET_OUTLET;
            if (SUCCEEDED(unit.as<ICapeCollection>()->Item(Variant(name).get(), port.put())))
                port.as<ICapeUnitPort>()->get_direction(&direction);
            result += !port ? '-' : direction == CAPE_INLET ? 'i' : direction == CAPE_OUTLET ? 'o' : '?';
        }
        return result;
    }
};

TEST_F(Ports, namesANewPortAndStartsEditing) {
    loadPorts({L"Feed 1", L"Feed 4"}, {L"feed 2"});
    EXPECT_EQ(edit(L"Ports",
                   [&](WindowDriver& user) {
                       user.press(L"&Add");
                       EXPECT_EQ(user.selectedRow(IDC_PORT_FEEDS), 2);
                       user.endLabel(IDC_PORT_FEEDS, L"given up", false);
                       user.press(L"&Add");
                       user.endLabel(IDC_PORT_FEEDS, L"Recycle");
                       EXPECT_EQ(user.focus(), user.control(IDC_PORT_FEEDS));
                       EXPECT_EQ(user.rows(IDC_PORT_FEEDS), (Rows{{L"Feed 1", L"1", L""},
                                                                  {L"Feed 4", L"2", L""},
                                                                  {L"Feed 3", L"3", L""},
                                                                  {L"Recycle", L"4", L""}}));
                       user.press(L"A&dd");
                       user.endLabel(IDC_PORT_PRODUCTS, L"", false);
                       EXPECT_EQ(user.rows(IDC_PORT_PRODUCTS),
                                 (Rows{{L"feed 2", L"1", L""}, {L"Product 1", L"2", L""}}));
                   }),
              S_OK);
    EXPECT_EQ(directions({L"Feed 3", L"Recycle", L"Product 1", L"given up"}), "iio-");
    EXPECT_EQ(unit.as<IPersistStream>()->IsDirty(), S_OK);
}

TEST_F(Ports, invalidatesOnAddingButNotOnRenaming) {
    loadPorts({}, {});
    ASSERT_EQ(unit.validate(), L"");
    edit(L"Ports", [&](WindowDriver& user) {
        user.press(L"&Add");
        user.endLabel(IDC_PORT_FEEDS, L"", false);
    });
    EXPECT_EQ(unit.status(), CAPE_NOT_VALIDATED);
    const auto material = FakeMaterial11::create();
    unit.connect(L"Feed 1", material->dispatch());
    ASSERT_EQ(unit.validate(), L"");
    EXPECT_EQ(edit(L"Ports",
                   [](WindowDriver& user) {
                       rename(user, IDC_PORT_FEEDS, 0, L"FEED 1");
                       EXPECT_EQ(user.rows(IDC_PORT_FEEDS), (Rows{{L"FEED 1", L"1", L""}}));
                       EXPECT_EQ(user.selectedRow(IDC_PORT_FEEDS), 0);
                   }),
              S_OK);
    EXPECT_EQ(unit.status(), CAPE_VALID);
}

TEST_F(Ports, rejectsTheNameOfAnotherPort) {
    loadPorts({L"A", L"B"}, {L"C"});
    EXPECT_EQ(edit(L"Ports",
                   [](WindowDriver& user) {
                       for (const auto& [list, row, name] :
                            {std::tuple{IDC_PORT_FEEDS, 1, L"a"}, std::tuple{IDC_PORT_FEEDS, 0, L"c"},
                             std::tuple{IDC_PORT_PRODUCTS, 0, L"B"}}) {
                           rename(user, list, row, name);
                           EXPECT_EQ(user.answer(L"Rename port:"),
                                     L"This name is already in use for a port name");
                           EXPECT_EQ(user.title(), L"Solvane CAPE-OPEN Unit Operation:");
                       }
                       EXPECT_EQ(user.rows(IDC_PORT_FEEDS), (Rows{{L"A", L"1", L""}, {L"B", L"2", L""}}));
                       EXPECT_EQ(user.rows(IDC_PORT_PRODUCTS), (Rows{{L"C", L"1", L""}}));
                   }),
              S_FALSE);
}

TEST_F(Ports, showsAndDisconnectsStreams) {
    loadPorts({L"A", L"B", L"C"}, {L"D"});
    const auto named = FakeMaterial11::create();
    named->componentName = L"Steam";
    const auto named10 = FakeMaterial10::create();
    named10->componentName = L"Water";
    named10->record->add({.call = "ComponentName", .result = E_FAIL, .text = {}, .value = {}});
    const auto nameless = FakeMaterial11::create();
    unit.connect(L"A", named->dispatch());
    unit.connect(L"B", named10->dispatch());
    unit.connect(L"D", nameless->dispatch());
    ComRef<IDispatch> removed;
    unit.as<ICapeCollection>()->Item(Variant(L"A").get(), removed.put());
    EXPECT_EQ(
        edit(L"Ports",
             [](WindowDriver& user) {
                 EXPECT_EQ(user.rows(IDC_PORT_FEEDS),
                           (Rows{{L"A", L"1", L"Steam"}, {L"B", L"2", L"<unnamed>"}, {L"C", L"3", L""}}));
                 EXPECT_EQ(user.rows(IDC_PORT_PRODUCTS), (Rows{{L"D", L"1", L""}}));
                 EXPECT_FALSE(user.isEnabled(L"&Remove"));
                 user.selectRow(IDC_PORT_FEEDS, 0);
                 EXPECT_FALSE(user.isEnabled(L"R&emove"));
                 user.press(L"&Remove");
                 EXPECT_EQ(user.answer(L"Delete port:", IDCANCEL), L"Delete feed port \"A\"?");
                 user.press(L"&Remove");
                 user.answer(L"Delete port:");
                 EXPECT_EQ(user.rows(IDC_PORT_FEEDS), (Rows{{L"B", L"1", L"Water"}, {L"C", L"2", L""}}));
                 EXPECT_FALSE(user.isEnabled(L"&Remove"));
                 EXPECT_EQ(user.focus(), user.control(IDC_PORT_FEEDS));
                 user.selectRow(IDC_PORT_PRODUCTS, 0);
                 user.press(L"R&emove");
                 EXPECT_EQ(user.answer(L"Delete port:", IDCANCEL), L"Delete product port \"D\"?");
             }),
        S_OK);
    ComRef<IDispatch> connected;
    EXPECT_TRUE(FAILED(removed.as<ICapeUnitPort>()->get_connectedObject(connected.put())));
    EXPECT_EQ(directions({L"A", L"B", L"D"}), "-io");
    EXPECT_EQ(unit.status(), CAPE_NOT_VALIDATED);
}

} // namespace
} // namespace solvane
