// The Parameters tab and the editors of parameters.

#include "SimulatorWindow.h"
#include "UiTest.h"

namespace solvane {
namespace {

using Row = std::vector<std::wstring>;
using Rows = std::vector<Row>;

class ParameterTab : public UiTest {
protected:
    HRESULT editParameters(const WindowDriver::Actions& actions) { return edit(L"Parameters", actions); }
    /// Up to the editor of the new parameter.
    static void add(WindowDriver& user, const std::wstring& name, const wchar_t* type) {
        user.press(L"&Add");
        user.await(L"Add parameter:");
        user.type(IDC_PARAMETER_NAME, name);
        user.choose(IDC_PARAMETER_TYPE, type);
        user.press(L"OK");
    }
    static void open(WindowDriver& user, int row, const wchar_t* title) {
        user.selectRow(IDC_PARAMETER_LIST, row);
        user.press(L"&Edit");
        user.await(title);
    }
    /// Types into fields, presses OK and gives the complaint.
    static std::wstring refused(WindowDriver& user,
                                std::initializer_list<std::pair<int, const wchar_t*>> fields) {
        for (const auto& [id, text] : fields)
            user.type(id, text);
        user.press(L"OK");
        return user.answer(L"Error:");
    }
    Row row(const wchar_t* name, int number) {
        Row cells;
        editParameters(
            [&](WindowDriver& user) { cells = user.rows(IDC_PARAMETER_LIST)[static_cast<size_t>(number)]; });
        EXPECT_EQ(cells[0], name);
        return cells;
    }
    /// The static text before a field.
    static std::wstring labelOf(HWND field) {
        wchar_t text[32] = L"";
        GetWindowTextW(GetWindow(field, GW_HWNDPREV), text, 32);
        return text;
    }
    ModelBag model;
};

TEST_F(ParameterTab, mayRemoveParametersWhileTheHostSaves) {
    model.script("1;");
    for (const wchar_t* name : {L"a", L"b", L"c"})
        model.parameter(name, L"real", Variant(1.0));
    ASSERT_EQ(load(model), S_OK);
    const Handle removed(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    ModelBag saved;
    const HANDLE event = removed.get();
    saved.onWrite = [&] { // serves messages as soon as the unit writes the first value
        while (saved.value(L"parameter types").type() != VT_EMPTY &&
               MsgWaitForMultipleObjects(1, &event, FALSE, 5000, QS_ALLINPUT) != WAIT_OBJECT_0) {
            MSG message;
            while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
                DispatchMessageW(&message);
        }
    };
    SimulatorWindow host;
    host.onPaint = [&] { EXPECT_EQ(unit.as<IPersistPropertyBag>()->Save(&saved, TRUE, TRUE), S_OK); };
    editParameters([&](WindowDriver& user) {
        host.post(WM_PAINT);
        for (int count = 0; count < 3; ++count) {
            user.selectRow(IDC_PARAMETER_LIST, 0);
            user.press(L"&Remove");
            user.answer(L"Remove parameter:");
        }
        SetEvent(removed.get());
    });
    for (const wchar_t* name : {L"a", L"b", L"c"})
        EXPECT_EQ(saved.value(std::wstring(name) + L" \\ value").real(), 1.0);
}

TEST_F(ParameterTab, addsParametersOfAllTypes) {
    unit.validate();
    EXPECT_NE(unit.status(), CAPE_NOT_VALIDATED);
    const HRESULT edited = editParameters([&](WindowDriver& user) {
        for (const wchar_t* button : {L"&Remove", L"&Edit", L"Re&name"})
            EXPECT_FALSE(user.isEnabled(button));
        user.press(L"&Add");
        EXPECT_EQ(user.entries(IDC_PARAMETER_TYPE), (Row{L"Real", L"Integer", L"Boolean", L"String"}));
        user.press(L"OK");
        EXPECT_EQ(user.answer(L"Add parameter:"), L"Please specify a name");
        user.press(L"Cancel");
        add(user, L"dropped", L"Real");
        user.await(L"Real parameter \"dropped\":");
        user.press(L"Cancel");
        EXPECT_TRUE(user.rows(IDC_PARAMETER_LIST).empty());
        EXPECT_NE(unit.status(), CAPE_NOT_VALIDATED);

        add(user, L"Flow", L"Real");
        user.type(IDC_PARAMETER_VALUE, L"1.5");
        user.press(L"OK");
        EXPECT_EQ(unit.status(), CAPE_NOT_VALIDATED);
        add(user, L"FLOW", L"Integer");
        EXPECT_EQ(user.answer(L"Add parameter:"),
                  L"The specified name is already used for another parameter");
        user.await(L"Integer parameter \"\":");
        user.type(IDC_PARAMETER_VALUE, L"12abc");
        user.press(L"OK");
        add(user, L"switch", L"Boolean");
        user.await(L"Boolean parameter \"switch\":");
        user.choose(IDC_PARAMETER_MODE, L"Output");
        user.press(L"OK");
        add(user, L"text", L"String");
        user.await(L"String parameter \"text\":");
        user.press(L"OK");
        EXPECT_EQ(user.rows(IDC_PARAMETER_LIST),
                  (Rows{{L"Flow", L"Real", L"Input", L"1.5", L"", L"", L"", L""},
                        {L"", L"Integer", L"Input", L"12", L"", L"", L"", L""},
                        {L"switch", L"Boolean", L"Output", L"False", L"", L"", L"", L""},
                        {L"text", L"String", L"Input", L"", L"", L"", L"", L""}}));
        EXPECT_EQ(user.selectedRow(IDC_PARAMETER_LIST), 3);
    });
    EXPECT_EQ(edited, S_OK);
}

TEST_F(ParameterTab, renamesAndRemovesParameters) {
    model.script("1;").parameter(L"a", L"real", Variant(1.0)).parameter(L"b", L"int", Variant(LONG{2}));
    ASSERT_EQ(load(model), S_OK);
    unit.validate();
    const CapeValidationStatus before = unit.status();
    const auto rename = [](WindowDriver& user, const wchar_t* name) {
        enter(user, L"Re&name", L"Rename parameter:", name);
    };
    const auto names = [](WindowDriver& user) {
        Row result;
        for (const Row& cells : user.rows(IDC_PARAMETER_LIST))
            result.push_back(cells[0]);
        return result;
    };
    EXPECT_EQ(editParameters([&](WindowDriver& user) {
                  user.selectRow(IDC_PARAMETER_LIST, 1);
                  rename(user, L"A");
                  EXPECT_EQ(user.answer(L"Rename parameter:"),
                            L"The specified name is already used for another parameter");
                  user.press(L"&Remove");
                  user.await(L"Remove parameter:");
                  EXPECT_EQ(GetDlgCtrlID(user.focus()), IDCANCEL); // what Enter does
                  EXPECT_EQ(user.answer(L"Remove parameter:", IDCANCEL), L"Remove parameter \"b\"?");
                  EXPECT_EQ(names(user), (Row{L"a", L"b"}));
              }),
              S_FALSE);
    EXPECT_EQ(editParameters([&](WindowDriver& user) {
                  user.selectRow(IDC_PARAMETER_LIST, 1);
                  rename(user, L"B"); // its own name in another case
                  EXPECT_EQ(names(user), (Row{L"a", L"B"}));
                  EXPECT_EQ(user.selectedRow(IDC_PARAMETER_LIST), 1);
              }),
              S_OK);
    EXPECT_EQ(editParameters([&](WindowDriver& user) {
                  user.selectRow(IDC_PARAMETER_LIST, 0);
                  user.press(L"&Remove");
                  user.answer(L"Remove parameter:");
                  EXPECT_EQ(names(user), Row{L"B"});
                  EXPECT_FALSE(user.isEnabled(L"&Remove"));
                  EXPECT_EQ(user.focus(), user.control(IDC_PARAMETER_LIST)) << "a disabled button is dead";
              }),
              S_OK);
    EXPECT_EQ(unit.status(), before);
}

TEST_F(ParameterTab, editsARealParameter) {
    const VariantArray acceleration = VariantArray::of(std::vector<double>{1, 0, -2});
    model.script("1;").parameter(L"x", L"real", Variant(0.25)).with(L"x", L"minimum", Variant(0.1));
    model.with(L"x", L"dimensionality", acceleration);
    ASSERT_EQ(load(model), S_OK);
    EXPECT_EQ(editParameters([&](WindowDriver& user) {
                  user.doubleClick(IDC_PARAMETER_LIST, 0);
                  user.await(L"Real parameter \"x\":");
                  EXPECT_EQ(user.text(IDC_PARAMETER_VALUE), L"0.25");
                  EXPECT_EQ(user.text(IDC_PARAMETER_MINIMUM), L"0.1");
                  EXPECT_EQ(user.text(IDC_PARAMETER_UNIT), L"Unit of measure: m / s2");
                  int field = IDC_PARAMETER_EXPONENT;
                  for (const wchar_t* label : {L"Meter:", L"Kilogram:", L"Second:", L"Ampere:", L"Kelvin:",
                                               L"Moles:", L"Candela:", L"Radians:"})
                      EXPECT_EQ(labelOf(user.control(field++)), label);
                  EXPECT_EQ(refused(user, {{IDC_PARAMETER_VALUE, L"0.05"}}), L"Value below minimum value");
                  user.type(IDC_PARAMETER_VALUE, L"7");
                  user.choose(IDC_PARAMETER_MODE, L"Output");
                  user.press(L"Cancel");
                  EXPECT_EQ(user.rows(IDC_PARAMETER_LIST)[0][3], L"0.25");
              }),
              S_FALSE);
    EXPECT_EQ(row(L"x", 0)[2], L"Input");
    editParameters([&](WindowDriver& user) {
        open(user, 0, L"Real parameter \"x\":");
        EXPECT_EQ(refused(user, {{IDC_PARAMETER_VALUE, L"abc"}}),
                  L"You must supply a valid current value for the parameter");
        user.type(IDC_PARAMETER_VALUE, L"3");
        user.type(IDC_PARAMETER_DEFAULT, L"2");
        user.type(IDC_PARAMETER_MINIMUM, L"");
        user.type(IDC_PARAMETER_MAXIMUM, L"4");
        user.type(IDC_PARAMETER_EXPONENT, L"");
        user.type(IDC_PARAMETER_EXPONENT + 2, L"");
        EXPECT_EQ(user.text(IDC_PARAMETER_UNIT), L"");
        user.type(IDC_PARAMETER_EXPONENT + 4, L"1");
        user.press(L"This parameter indicates a difference / delta value");
        user.press(L"OK");
        EXPECT_EQ(user.rows(IDC_PARAMETER_LIST),
                  (Rows{{L"x", L"Real", L"Input", L"3", L"2", L"", L"4", L"K"}}));
        EXPECT_EQ(user.selectedRow(IDC_PARAMETER_LIST), 0);
        open(user, 0, L"Real parameter \"x\":");
        EXPECT_EQ(IsDlgButtonChecked(user.here(), IDC_PARAMETER_DIFFERENCE), UINT{BST_CHECKED});
    });
}

TEST_F(ParameterTab, showsABooleanDefaultAsTheCurrentValue) {
    model.script("1;").parameter(L"b", L"bool", Variant(true)).with(L"b", L"default", Variant(false));
    ASSERT_EQ(load(model), S_OK);
    EXPECT_EQ(row(L"b", 0)[4], L"False");
    editParameters([&](WindowDriver& user) {
        open(user, 0, L"Boolean parameter \"b\":");
        EXPECT_EQ(user.text(IDC_PARAMETER_DEFAULT), L"True");
        user.choose(IDC_PARAMETER_VALUE, L"False");
        user.press(L"OK");
        EXPECT_EQ(user.rows(IDC_PARAMETER_LIST)[0][3], L"False");
        EXPECT_EQ(user.rows(IDC_PARAMETER_LIST)[0][4], L"True");
        open(user, 0, L"Boolean parameter \"b\":");
        user.choose(IDC_PARAMETER_DEFAULT, L"<none>");
        user.press(L"OK");
        EXPECT_EQ(user.rows(IDC_PARAMETER_LIST)[0][4], L"");
    });
}

TEST_F(ParameterTab, editsAnOptionParameter) {
    const std::vector<std::wstring> options{L"b", L"a"};
    model.script("1;").parameter(L"s", L"string", Variant(std::wstring_view(L"a")));
    model.with(L"s", L"options", VariantArray::of(options));
    ASSERT_EQ(load(model), S_OK);
    const auto addOption = [](WindowDriver& user, const wchar_t* option) {
        enter(user, L"&Add", L"Enter option:", option);
    };
    editParameters([&](WindowDriver& user) {
        open(user, 0, L"String parameter \"s\":");
        EXPECT_EQ(user.entries(IDC_PARAMETER_OPTIONS), options);
        EXPECT_EQ(user.entries(IDC_PARAMETER_VALUE), (Row{L"a", L"b"}));
        EXPECT_FALSE(user.isEnabled(L"&Remove"));
        addOption(user, L"a");
        EXPECT_EQ(user.answer(L"Add option:"), L"The specified value is already in the list.");
        addOption(user, L"A");
        EXPECT_EQ(user.entries(IDC_PARAMETER_OPTIONS), (Row{L"b", L"a", L"A"}));
        EXPECT_EQ(user.entries(IDC_PARAMETER_DEFAULT).size(), 3U);
        EXPECT_EQ(user.text(IDC_PARAMETER_VALUE), L"a");
        user.press(L"List of options is exclusive (value must be in list)");
        EXPECT_EQ(refused(user, {{IDC_PARAMETER_VALUE, L"B"}}),
                  L"Current value is not in the option list, and the list is exclusive");
        EXPECT_EQ(refused(user, {{IDC_PARAMETER_VALUE, L"b"}, {IDC_PARAMETER_DEFAULT, L"c"}}),
                  L"Default value is not in the option list, and the list is exclusive");
        user.type(IDC_PARAMETER_DEFAULT, L"");
        user.press(L"&Remove"); // the last, which was selected
        user.press(L"OK");
        EXPECT_EQ(user.rows(IDC_PARAMETER_LIST)[0][3], L"b");
        open(user, 0, L"String parameter \"s\":");
        EXPECT_EQ(user.entries(IDC_PARAMETER_OPTIONS), options);
        for (const int row : {0, 0}) {
            SendMessageW(user.control(IDC_PARAMETER_OPTIONS), LB_SETCURSEL, static_cast<WPARAM>(row), 0);
            SendMessageW(user.here(), WM_COMMAND, MAKEWPARAM(IDC_PARAMETER_OPTIONS, LBN_SELCHANGE), 0);
            user.press(L"&Remove");
        }
        EXPECT_EQ(user.text(IDC_PARAMETER_VALUE), L"b");
        EXPECT_EQ(refused(user, {}), L"Option list cannot be empty if it is exclusive");
    });
}

} // namespace
} // namespace solvane
