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
    static void focusOn(HWND control) {
        SendMessageW(GetParent(control), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(control), TRUE);
    }
    HRESULT load(ModelBag& model) { return unit.load(model); }

    HostedUnit unit{module};
};

} // namespace solvane
