#include "UnitTest.h"

namespace solvane {
namespace {

class Validation : public UnitTest {
protected:
    void loadPorts(std::vector<std::wstring> feeds, std::vector<std::wstring> products) {
        model.feeds(feeds).products(products);
        loadModel();
    }

    static FakeStream streamOf(std::vector<std::wstring> compounds) {
        FakeStream stream = makeFakeStream(compounds.size());
        stream.compounds = std::move(compounds);
        return stream;
    }
};

constexpr wchar_t different[] = L"Materials connected to all ports must have identical compound lists";

TEST_F(Validation, namesTheFirstUnconnectedPortFeedsFirst) {
    loadPorts({L"Feed 1"}, {L"Product 1"});
    EXPECT_EQ(unit.status(), CAPE_NOT_VALIDATED);
    EXPECT_EQ(unit.validate(), L"Feed port \"Feed 1\" is not connected");
    EXPECT_EQ(unit.status(), CAPE_INVALID);
    const auto material = FakeMaterial11::create();
    unit.connect(L"Feed 1", material->dispatch());
    EXPECT_EQ(unit.status(), CAPE_NOT_VALIDATED);
    EXPECT_EQ(unit.validate(), L"Product port \"Product 1\" is not connected");
    unit.connect(L"Product 1", material->dispatch());
    EXPECT_EQ(unit.validate(), L"");
    EXPECT_EQ(unit.status(), CAPE_VALID);
    unit.disconnect(L"Product 1");
    EXPECT_EQ(unit.status(), CAPE_NOT_VALIDATED);
}

TEST_F(Validation, comparesCompoundsInOrderIgnoringCaseAcrossGenerations) {
    loadPorts({L"Feed 1", L"Feed 2"}, {L"Product 1"});
    const auto feed = FakeMaterial11::create(streamOf({L"A", L"B"}));
    for (const wchar_t* port : {L"Feed 1", L"Feed 2"})
        unit.connect(port, feed->dispatch());
    struct Row {
        std::vector<std::wstring> compounds;
        const wchar_t* message;
    };
    for (const Row& row : {Row{{L"a", L"b"}, L""}, Row{{L"B", L"A"}, different}, Row{{L"A"}, different},
                           Row{{L"A", L"B", L"C"}, different}}) {
        const auto product = FakeMaterial10::create(streamOf(row.compounds));
        unit.connect(L"Product 1", product->dispatch());
        EXPECT_EQ(unit.validate(), row.message);
    }
}

TEST_F(Validation, rejectsMaterialsWithoutCompounds) {
    loadPorts({L"Feed 1"}, {});
    const auto feed = FakeMaterial10::create(streamOf({}));
    unit.connect(L"Feed 1", feed->dispatch());
    EXPECT_EQ(unit.validate(), L"Materials connected to ports do not expose compounds");
}

TEST_F(Validation, reportsAnUnreadableCompoundListOfAPort) {
    loadPorts({L"Feed 1"}, {L"Product 1"});
    const auto feed = FakeMaterial11::create();
    unit.connect(L"Feed 1", feed->dispatch());
    const auto failing = FakeMaterial10::create();
    failing->record->add({.call = "ComponentIds",
                          .result = static_cast<HRESULT>(0x80040508),
                          .text = L"the package is closed",
                          .value = {}});
    unit.connect(L"Product 1", failing->dispatch());
    EXPECT_EQ(unit.validate(),
              L"Failed to get list of compounds from material connected to port: the package is closed");
}

// The outcome of tests that saw the former connections does not hold for the new ones.
TEST_F(Validation, hasToBeRepeatedAfterAConnectionThatChangedMeanwhile) {
    loadPorts({L"Feed 1"}, {L"Product 1"});
    const auto feed = FakeMaterial11::create();
    const auto product = FakeMaterial10::create();
    unit.connect(L"Feed 1", feed->dispatch());
    unit.connect(L"Product 1", product->dispatch());
    product->record->onCall = [&](const std::string&) { unit.disconnect(L"Feed 1"); };
    unit.validate();
    EXPECT_EQ(unit.status(), CAPE_NOT_VALIDATED);
    EXPECT_EQ(unit.validate(), L"Feed port \"Feed 1\" is not connected");
}

TEST_F(Validation, stopsTheCalculationOfAnInvalidUnit) {
    loadPorts({L"Feed 1"}, {});
    unit.as<ICapeUnitReport>()->put_selectedReport(Bstr(L"none").get());
    EXPECT_EQ(unit.calculate(), capeFailure);
    // Validate reports the reason; this text is the object's last failure.
    const std::wstring text = L"Unit is not valid: Invalid report name: no such report";
    EXPECT_EQ(unit.error(), L"Unit is not valid | " + text + L" | Calculate | ICapeUnitReport");
    EXPECT_EQ(unit.output(), text + L"\r\n");
}

TEST_F(Validation, rejectsNullArgumentsWithoutAText) {
    VARIANT_BOOL isValid = VARIANT_TRUE;
    Bstr message;
    const auto capeUnit = unit.as<ICapeUnit>();
    EXPECT_EQ(capeUnit->Validate(nullptr, &isValid), E_POINTER);
    EXPECT_EQ(capeUnit->Validate(message.put(), nullptr), E_POINTER);
    EXPECT_EQ(capeUnit->get_ValStatus(nullptr), E_POINTER);
    EXPECT_EQ(capeUnit->get_ports(nullptr), E_POINTER);
    EXPECT_EQ(unit.error(), L" |  |  | ");
    ASSERT_EQ(unit.terminate(), S_OK); // these methods do not report it
    EXPECT_EQ(capeUnit->get_ports(nullptr), E_POINTER);
    EXPECT_EQ(capeUnit->get_ValStatus(nullptr), E_POINTER);
    EXPECT_EQ(unit.error(), L" |  |  | ");
}

} // namespace
} // namespace solvane
