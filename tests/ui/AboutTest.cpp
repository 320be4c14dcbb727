// The page that tells what this module is.

#include "UiTest.h"

namespace solvane {
namespace {

using About = UiTest;

TEST_F(About, showsTheVersionsAndTheLicence) {
    edit(L"About", [](WindowDriver& user) {
        EXPECT_EQ(user.text(IDC_ABOUT_VERSION), SOLVANE_VERSION);
        EXPECT_EQ(user.text(IDC_ABOUT_MATLAB), L"Matlab.Application.9.14");
        EXPECT_NE(user.text(IDC_ABOUT_LICENCE).find(L"WITHOUT WARRANTY OF ANY KIND"), std::wstring::npos);
        for (const int field :
             {IDC_ABOUT_CODE, IDC_ABOUT_TYPE, IDC_ABOUT_VERSION, IDC_ABOUT_MATLAB, IDC_ABOUT_LICENCE})
            EXPECT_TRUE(GetWindowLongW(user.control(field), GWL_STYLE) & ES_READONLY) << field;
    });
    matlab.registration.removeCurrentVersion();
    edit(L"About", [](WindowDriver& user) { EXPECT_EQ(user.text(IDC_ABOUT_MATLAB), L"<not found>"); });
}

} // namespace
} // namespace solvane
