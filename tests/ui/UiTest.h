#pragma once

#include "HostTest.h"
#include "HostedUnit.h"
#include "WindowDriver.h"
#include "resources/ResourceIds.h"

namespace solvane {

/// A host with one unit, whose window a user works in, and a scripted Matlab behind it.
class UiTest : public HostTest {
protected:
    HRESULT edit(const WindowDriver::Actions& actions) { return WindowDriver::edit(unit, actions); }
    /// On the page of that label.
    HRESULT edit(const std::wstring& tab, const WindowDriver::Actions& actions) {
        return edit([&](WindowDriver& user) {
            user.pickTab(tab);
            actions(user);
        });
    }
    /// Through the button below the pages, and its dialogs.
    static void saveModel(WindowDriver& user, const std::wstring& file) {
        user.press(L"&Save model");
        user.enterFile(L"Save model file:", file);
    }
    static void loadModel(WindowDriver& user, const std::wstring& file) {
        user.press(L"&Load model");
        user.answer(L"Load model:");
        user.enterFile(L"Open model file:", file);
    }
    /// Presses a button, which asks for one line of text.
    static void enter(WindowDriver& user, const wchar_t* button, const wchar_t* title,
                      const std::wstring& text, int field = IDC_INPUT_TEXT) {
        user.press(button);
        user.await(title);
        user.type(field, text);
        user.press(L"OK");
    }
    static void focusOn(HWND control) {
        SendMessageW(GetParent(control), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(control), TRUE);
    }
    HRESULT load(ModelBag& model) { return unit.load(model); }

    HostedUnit unit{module};
};

} // namespace solvane
