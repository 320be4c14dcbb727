// What the eye and the keyboard find: nothing is cut, nothing overlaps, and the Tab key leads through all.

#include "UiTest.h"
#include "com/Text.h"

#include <commctrl.h>

#include <algorithm>
#include <stdexcept>

namespace solvane {
namespace {

using Ids = std::vector<int>;

class Appearance : public UiTest {
protected:
    Appearance() {
        ModelBag model;
        model.script("F = getFeedProp(1, 'totalFlow');\n").reports({L"Balance"}).file("half.m", "1");
        model.feeds({L"Feed", L"Recycle of solvent"}).products({L"Product"});
        model.parameter(L"temperature", L"real", Variant(350.5))
            .with(L"temperature", L"minimum", Variant(250.0));
        model.with(L"temperature", L"dimensionality", VariantArray::of(std::vector<double>{0, 0, 0, 0, 1}));
        model.parameter(L"stages", L"int", Variant(LONG{12})).parameter(L"adiabatic", L"bool", Variant(true));
        model.parameter(L"solvent", L"string", Variant(std::wstring_view(L"water")));
        model.with(L"solvent", L"options", VariantArray::of(std::vector<std::wstring>{L"water", L"toluene"}));
        EXPECT_EQ(load(model), S_OK);
    }

    static RECT placeOf(HWND control) {
        RECT place{};
        GetWindowRect(control, &place);
        return place;
    }
    static LONG styleOf(HWND control) { return GetWindowLongW(control, GWL_STYLE); }
    static bool isFrame(HWND control) {
        return classOf(control) == L"Button" && (styleOf(control) & BS_TYPEMASK) == BS_GROUPBOX;
    }

    /// The room that the control's own text takes; none for a control whose text is the user's.
    static SIZE textSize(HWND control) {
        const std::wstring name = classOf(control);
        if (name != L"Button" && name != L"Static")
            return {};
        const HDC device = GetDC(control);
        const HGDIOBJ former =
            SelectObject(device, reinterpret_cast<HFONT>(SendMessageW(control, WM_GETFONT, 0, 0)));
        RECT text{};
        DrawTextW(device, textOf(control).c_str(), -1, &text, DT_CALCRECT | DT_SINGLELINE);
        SelectObject(device, former);
        ReleaseDC(control, device);
        const bool hasMark = name == L"Button" && (styleOf(control) & BS_TYPEMASK) == BS_AUTOCHECKBOX;
        return {text.right + (hasMark ? 2 * GetSystemMetrics(SM_CXEDGE) + text.bottom : 0), text.bottom};
    }

    /// Without what stands within a list, or in a drop-down list: that is the system's. Line numbers are not
    /// laid out as text.
    static std::vector<HWND> shownIn(const WindowDriver& user) {
        std::vector<HWND> shown = user.shown();
        std::erase_if(shown, [](HWND child) {
            const std::wstring parent = classOf(GetParent(child));
            return (parent != L"#32770" && parent != WC_TABCONTROLW) || classOf(child) == UPDOWN_CLASSW ||
                   GetDlgCtrlID(child) == IDC_MATLAB_LINES;
        });
        return shown;
    }

    static void expectInPlace(const WindowDriver& user) {
        const std::vector<HWND> shown = shownIn(user);
        for (const HWND child : shown) {
            SCOPED_TRACE(testing::Message() << GetDlgCtrlID(child));
            const RECT place = placeOf(child);
            const SIZE size{place.right - place.left, place.bottom - place.top};
            const SIZE text = textSize(child);
            EXPECT_LE(text.cx, size.cx) << "cut at its right";
            EXPECT_LE(text.cy, size.cy) << "cut at its bottom";
            const RECT window = placeOf(GetParent(child));
            EXPECT_TRUE(place.left >= window.left && place.right <= window.right && place.top >= window.top &&
                        place.bottom <= window.bottom)
                << "leaves its window";
            for (const HWND other : shown) {
                if (other == child || GetParent(other) != GetParent(child) || isFrame(child) ||
                    isFrame(other))
                    continue;
                RECT common{};
                const RECT otherPlace = placeOf(other);
                EXPECT_FALSE(IntersectRect(&common, &place, &otherPlace)) << GetDlgCtrlID(other);
            }
        }
    }

    /// Letters that two of the shown buttons share.
    static std::wstring sharedLetters(const WindowDriver& user) {
        std::wstring all, shared;
        for (const HWND button : shownIn(user)) {
            const std::wstring text = classOf(button) == L"Button" ? textOf(button) : L"";
            const std::size_t mark = text.find(L'&');
            if (mark == text.npos)
                continue;
            const wchar_t letter = static_cast<wchar_t>(towlower(text[mark + 1]));
            (all.find(letter) == all.npos ? all : shared) += letter;
        }
        return shared;
    }

    /// Where the Tab key leads to on a page, and the letters that two of its buttons share.
    struct Page {
        std::wstring label;
        Ids order;
        std::wstring sharedLetters = L"";
        bool keepsTabKey = false; ///< the script's text does
    };
    static Page pageOf(const std::wstring& label) {
        const Page pages[] = {
            {L"Ports",
             {IDC_PORT_FEEDS, IDC_PORT_ADD_FEED, IDC_PORT_PRODUCTS, IDC_PORT_ADD_PRODUCT,
              IDC_PORT_REMOVE_PRODUCT}},
            {L"Parameters", {IDC_PARAMETER_LIST, IDC_PARAMETER_ADD}},
            {L"Reports", {IDC_REPORT_LIST, IDC_REPORT_TEXT, IDC_REPORT_ADD}},
            {L"Matlab", {IDC_MATLAB_LEVEL, IDC_MATLAB_SCRIPT}, L"", true},
            {L"Additional files", {IDC_FILES_LIST, IDC_FILES_BROWSE, IDC_FILES_NEW}, L"r"},
            {L"About",
             {IDC_ABOUT_CODE, IDC_ABOUT_TYPE, IDC_ABOUT_VERSION, IDC_ABOUT_MATLAB, IDC_ABOUT_LICENCE}},
        };
        const auto page = std::ranges::find(pages, label, &Page::label);
        if (page == std::end(pages))
            throw std::runtime_error("AppearanceTest.cpp describes no page \"" + narrow(label) + '"');
        return *page;
    }

    /// What has the focus, one Tab after the other, until the first is there again.
    static Ids walk(WindowDriver& user) {
        Ids result;
        const HWND first = user.focus();
        do {
            HWND control = user.focus();
            if (classOf(GetParent(control)) == L"ComboBox") // the field within
                control = GetParent(control);
            result.push_back(GetDlgCtrlID(control));
            user.key(VK_TAB);
        } while (user.focus() != first && result.size() < 20);
        return result;
    }
};

TEST_F(Appearance, fitsEveryTabInSmallAndLargeWindows) {
    edit([](WindowDriver& user) {
        RECT smallest{};
        for (const std::wstring& label : user.entries(IDC_EDIT_TABS)) {
            SCOPED_TRACE(testing::Message() << "the tab " << label);
            const Page page = pageOf(label);
            user.pickTab(label);
            user.resize(10, 10);
            smallest = placeOf(user.here());
            expectInPlace(user);
            user.resize(smallest.right - smallest.left + 300, smallest.bottom - smallest.top + 200);
            expectInPlace(user);
            EXPECT_GT(placeOf(user.button(L"&Close")).top, smallest.bottom);
            EXPECT_EQ(sharedLetters(user), page.sharedLetters);
            if (page.keepsTabKey)
                continue;
            if (label == L"Ports")
                user.selectRow(IDC_PORT_PRODUCTS, 0);
            Ids all = page.order;
            all.insert(all.end(), {IDC_EDIT_SAVE, IDC_EDIT_LOAD, IDC_EDIT_HELP, IDCANCEL});
            focusOn(user.control(all.front()));
            EXPECT_EQ(walk(user), all);
        }
        user.pickTab(L"Ports");
    });
}

TEST_F(Appearance, fitsEveryDialog) {
    const Ids numbers{IDC_PARAMETER_MODE, IDC_PARAMETER_VALUE, IDC_PARAMETER_DEFAULT, IDC_PARAMETER_MINIMUM,
                      IDC_PARAMETER_MAXIMUM};
    Ids real = numbers;
    for (const int exponent : {0, 1, 2, 4, 5, 3, 6, 7}) // down the one column, then down the other
        real.push_back(IDC_PARAMETER_EXPONENT + exponent);
    real.push_back(IDC_PARAMETER_DIFFERENCE);
    const struct {
        int row;
        const wchar_t* button;
        const wchar_t* title;
        Ids order;
    } dialogs[] = {
        {-1, L"&Add", L"Add parameter:", {IDC_PARAMETER_NAME, IDC_PARAMETER_TYPE}},
        {0, L"&Edit", L"Real parameter \"temperature\":", real},
        {1, L"&Edit", L"Integer parameter \"stages\":", numbers},
        {2,
         L"&Edit",
         L"Boolean parameter \"adiabatic\":",

         {IDC_PARAMETER_MODE, IDC_PARAMETER_VALUE, IDC_PARAMETER_DEFAULT}},
        {3,
         L"&Edit",
         L"String parameter \"solvent\":",

         {IDC_PARAMETER_MODE, IDC_PARAMETER_VALUE, IDC_PARAMETER_DEFAULT, IDC_PARAMETER_OPTIONS,
          IDC_PARAMETER_OPTION_ADD, IDC_PARAMETER_EXCLUSIVE}},
        {3, L"Re&name", L"Rename parameter:", {IDC_INPUT_TEXT}},
    };
    edit(L"Parameters", [&](WindowDriver& user) {
        for (const auto& dialog : dialogs) {
            SCOPED_TRACE(testing::Message() << "the dialog " << dialog.title);
            if (dialog.row >= 0)
                user.selectRow(IDC_PARAMETER_LIST, dialog.row);
            user.press(dialog.button);
            user.await(dialog.title);
            expectInPlace(user);
            EXPECT_EQ(sharedLetters(user), L"");
            Ids all = dialog.order;
            all.insert(all.end(), {IDOK, IDCANCEL});
            // An editor opens on the value.
            if (const auto value = std::ranges::find(all, IDC_PARAMETER_VALUE); value != all.end())
                std::ranges::rotate(all, value);
            EXPECT_EQ(walk(user), all);
            user.key(VK_ESCAPE);
        }
    });
}

TEST_F(Appearance, placesAQuestionWithinItsWindow) {
    edit(L"Parameters", [](WindowDriver& user) {
        user.selectRow(IDC_PARAMETER_LIST, 3);
        user.press(L"&Edit");
        user.await(L"String parameter \"solvent\":");
        const RECT parent = placeOf(user.here());
        user.press(L"&Add");
        user.await(L"Enter option:");
        const RECT place = placeOf(user.here());
        RECT common{};
        IntersectRect(&common, &place, &parent);
        EXPECT_TRUE(EqualRect(&common, &place));
    });
}

TEST_F(Appearance, keepsColumnsThatTheUserWidened) {
    edit(L"Parameters", [](WindowDriver& user) {
        const auto list = user.control(IDC_PARAMETER_LIST);
        const auto width = [&](int column) { return ListView_GetColumnWidth(list, column); };
        const int last = 7;
        ListView_SetColumnWidth(list, 0, 177);
        const int before = width(last);
        const RECT window = placeOf(user.here());
        user.resize(window.right - window.left + 300, window.bottom - window.top);
        EXPECT_EQ(width(0), 177);
        EXPECT_GT(width(last), before); // it takes the room that is left
        ListView_SetColumnWidth(list, last, 66);
        user.resize(window.right - window.left, window.bottom - window.top);
        EXPECT_EQ(width(last), 66);
        user.pickTab(L"Ports");
    });
}

TEST_F(Appearance, reachesTabsByKeyboard) {
    edit([](WindowDriver& user) {
        const auto tabKey = [&](const std::vector<int>& held) {
            user.holding(held, [&] { user.key(VK_TAB); });
            return GetDlgCtrlID(user.focus());
        };
        const std::vector<std::wstring> labels = user.entries(IDC_EDIT_TABS);
        for (std::size_t i = 1; i <= labels.size(); ++i) {
            if (i % 2 == 0)
                focusOn(user.button(L"&Close")); // beneath the pages
            EXPECT_EQ(tabKey({VK_CONTROL}), pageOf(labels[i % labels.size()]).order.front());
        }
        EXPECT_EQ(tabKey({VK_CONTROL, VK_SHIFT}), pageOf(labels.back()).order.front());
        user.pickTab(L"Matlab");
        focusOn(user.control(IDC_MATLAB_LEVEL));
        EXPECT_EQ(tabKey({}), IDC_MATLAB_SCRIPT);
        EXPECT_EQ(tabKey({VK_CONTROL}), IDC_MATLAB_SCRIPT); // which keeps its keys
        focusOn(user.control(IDC_MATLAB_TABS));
        EXPECT_EQ(tabKey({VK_CONTROL}), IDC_MATLAB_OUTPUT);
        EXPECT_EQ(tabKey({VK_CONTROL}), IDC_MATLAB_SCRIPT);
        user.pickTab(L"Reports"); // the mouse leaves the focus on the tab
        EXPECT_EQ(tabKey({}), IDC_REPORT_LIST);
        for (const wchar_t* clicked : {L"Ports", L"Reports", L"About", L"Ports"}) {
            tabKey({VK_CONTROL});
            user.pickTab(clicked); // the row takes clicks still
        }
    });
}

} // namespace
} // namespace solvane
