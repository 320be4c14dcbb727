#include "UnitTest.h"

namespace solvane {
namespace {

TEST_F(UnitTest, listsMatlabsOutputFirstAndFindsReportsInAnyCase) {
    model.reports({L"Balance", L"Profile"});
    model.values[L"report \\ Balance"] = text(L"closed");
    loadModel();
    const auto reports = unit.as<ICapeUnitReport>();
    VariantArray names;
    std::string error;
    ASSERT_EQ(reports->get_reports(names.put()), S_OK);
    ASSERT_TRUE(readVariantArray(names, VT_BSTR, error)) << error;
    EXPECT_EQ(names.lowerBound(), 0);
    EXPECT_EQ(names.texts(), (std::vector<std::wstring>{L"Matlab Output", L"Balance", L"Profile"}));

    EXPECT_EQ(reports->put_selectedReport(Bstr(L"BALANCE").get()), S_OK);
    Bstr selected;
    EXPECT_EQ(reports->get_selectedReport(selected.put()), S_OK);
    EXPECT_EQ(selected.view(), L"BALANCE");
    EXPECT_EQ(reports->put_selectedReport(Bstr(L"Missing").get()), capeFailure);
    EXPECT_EQ(
        unit.error(),
        L"Invalid report name | Invalid report name: no such report | put_selectedReport | ICapeUnitReport");
    for (int i = 0; i < 2; ++i) { // producing a report does not change it
        Bstr message(L"of an earlier call");
        BSTR produced = message.release();
        EXPECT_EQ(reports->ProduceReport(&produced), S_OK);
        EXPECT_EQ(viewOf(produced), L"closed");
        SysFreeString(produced);
    }
}

} // namespace
} // namespace solvane
