// A model's description, read into a unit and written again.

#include "ModelFileTest.h"
#include "com/Text.h"

namespace solvane {
namespace {

using ModelDocument = ModelFileTest;

constexpr char emptyOutput[] = "<report name=\"Matlab Output\"></report>\n";

struct Row {
    const char* read;
    const char* written;  ///< empty: as read
    const char* warnings; ///< without line ends, each before a "|"
    const char* level = "0";
};

// One unit reads them all, to show that nothing of one model remains in the next.
TEST_F(ModelDocument, readsContentAndReportsItsFaults) {
    const char* const none = "\n"; // is written
    const Row rows[] = {
        // a valid model is restored, in the order of the writer
        {"<report name=\"Balance\">a&lt;b&#xA;c&#x9;&quot;&apos;&amp;&gt;</report>\n<feed name=\"F &amp; 1\" "
         "/>\n"
         "<feed name=\"F2\" />\n<product name=\"P\" />\n"
         "<parameter name=\"area\" mode=\"input\" type=\"real\" value=\"12.5\" min=\"-1e+20\" max=\"20\" "
         "def=\"1.5e-07\" uom=\"2,0,-1.5\" />\n"
         "<parameter name=\"duty\" mode=\"output\" type=\"real\" value=\"nan\" />\n"
         "<parameter name=\"stages\" mode=\"input\" type=\"int\" value=\"-7\" min=\"-10\" max=\"50\" "
         "def=\"5\" />\n"
         "<parameter name=\"adiabatic\" mode=\"input\" type=\"bool\" value=\"TRUE\" def=\"FALSE\" />\n"
         "<parameter name=\"note\" mode=\"output\" type=\"string\" value=\"\" />\n"
         "<parameter name=\"method\" mode=\"input\" type=\"string\" value=\"fast\" def=\"exact\" "
         "restricted=\"TRUE\" >\n <option value=\"fast\"/>\n <option value=\"ex&apos;act\"/>\n</parameter>\n",
         "", ""},
        // numbers
        {"<parameter name=\"p\" mode=\"input\" type=\"real\" value=\"0.1234567\" min=\" +3x\" max=\"1e999\" "
         "/>\n",
         "<parameter name=\"p\" mode=\"input\" type=\"real\" value=\"0.123457\" min=\"3\" max=\"inf\" />\n",
         ""},
        {"<parameter name=\"p\" mode=\"input\" type=\"real\" value=\"0x10\" min=\"-0X1.8p1\" />\n",
         "<parameter name=\"p\" mode=\"input\" type=\"real\" value=\"16\" min=\"-3\" />\n", ""},
        {"<parameter name=\"p\" mode=\"input\" type=\"real\" value=\"x\" min=\"\" max=\",\" def=\"-\" />\n",
         "<parameter name=\"p\" mode=\"input\" type=\"real\" value=\"0\" />\n",
         "Parameter has invalid value|Parameter has invalid minimum value|Parameter has invalid maximum "
         "value|Parameter has invalid default value|"},
        {"<parameter name=\"p\" mode=\"input\" type=\"int\" value=\"99999999999\" min=\"1.9\" />\n",
         "<parameter name=\"p\" mode=\"input\" type=\"int\" value=\"0\" min=\"1\" />\n",
         "Parameter has invalid value|"},
        // dimensionality: a bad number before a comma counts as 0, after the last one it does not count
        {"<parameter name=\"p\" mode=\"input\" type=\"real\" value=\"1\" uom=\"1,x,0\" />\n",
         "<parameter name=\"p\" mode=\"input\" type=\"real\" value=\"1\" uom=\"1,0,0\" />\n",
         "Parameter has invalid dimensionality|"},
        {"<parameter name=\"p\" mode=\"input\" type=\"real\" value=\"1\" uom=\"1,x\" />\n"
         "<parameter name=\"q\" mode=\"input\" type=\"real\" value=\"1\" uom=\"\" />\n",
         "<parameter name=\"p\" mode=\"input\" type=\"real\" value=\"1\" uom=\"1\" />\n"
         "<parameter name=\"q\" mode=\"input\" type=\"real\" value=\"1\" />\n",
         ""},
        // incomplete parameters; only exact words count
        {"<parameter mode=\"input\" type=\"real\" value=\"1\" />\n<parameter name=\"a\" mode=\"input\" "
         "value=\"1\" />\n"
         "<parameter name=\"b\" mode=\"input\" type=\"Real\" value=\"1\" />\n"
         "<parameter name=\"c\" type=\"real\" />\n<parameter name=\"d\" mode=\"OUTPUT\" type=\"bool\" "
         "value=\"true\" />\n"
         "<parameter name=\"e\" mode=\"input\" type=\"string\" restricted=\"true\" />\n",
         "<parameter name=\"c\" mode=\"input\" type=\"real\" value=\"0\" />\n"
         "<parameter name=\"d\" mode=\"input\" type=\"bool\" value=\"FALSE\" />\n"
         "<parameter name=\"e\" mode=\"input\" type=\"string\" value=\"\" />\n",
         "Parameter is missing name|Parameter is missing type|Parameter has unknown type|Parameter is "
         "missing "
         "mode|Parameter is missing value|Parameter is missing value|"},
        // options and end tags in the wrong place
        {"<parameter name=\"p\" mode=\"input\" type=\"real\" value=\"1\"><option value=\"x\"/></parameter>\n"
         "<parameter name=\"q\" mode=\"input\" type=\"string\" value=\"\"><option/></parameter><option "
         "value=\"y\"/>\n"
         "<feed name=\"F\"></feed>\n<text>lost</text>\n",
         "<feed name=\"F\" />\n<parameter name=\"p\" mode=\"input\" type=\"real\" value=\"1\" />\n"
         "<parameter name=\"q\" mode=\"input\" type=\"string\" value=\"\" />\n",
         "Unexpected option node|Unexpected parameter close tag|option node missing value|Unexpected option "
         "node|Unexpected parameter close tag: feed|Unknown node type in file: text|Unexpected parameter "
         "close "
         "tag: text|"},
        // the head
        {"<docInfo version=\"1\" infoLevel=\"3\" />\n", none, "", "3"},
        {"<docInfo infoLevel=\"-1\" />\n", none, "", "-1"},
        {"<docInfo version=\"2\" infoLevel=\"2\" />\n", none,
         "File was stored with newer version of Solvane unit operation; not all saved elements may be "
         "recovered|Invalid value for info level|"},
        {"<docInfo version=\"-1\" />\n", none,
         "File was stored with newer version of Solvane unit operation; not all saved elements may be "
         "recovered|"},
        {"<docInfo version=\"one\" infoLevel=\"x\" />\n", none,
         "Invalid format for file version|Invalid format for info level|"},
        // missing names
        {"<report>text</report>\n<feed />\n<product />\n<file />\n",
         "<report name=\"Unnamed\">text</report>\n",
         "Report is missing name|Feed port is missing name|Product port is missing name|External file is "
         "missing "
         "name|"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.read);
        boxes.clear();
        ASSERT_EQ(loadElements(row.read), S_OK) << testing::PrintToString(unit.error());
        std::string warnings;
        for (const std::string& box : boxes)
            warnings += box;
        std::string expected = row.warnings;
        for (std::size_t end; (end = expected.find('|')) != std::string::npos;)
            expected.replace(end, 1, "\r\n");
        EXPECT_EQ(warnings, expected.empty() ? "" : "Solvane Unit Operation: " + expected);
        const std::string written = row.written == none ? "" : *row.written ? row.written : row.read;
        const std::string information =
            std::string("<docInfo version=\"1\" infoLevel=\"") + row.level + "\" />\n";
        EXPECT_EQ(savedEntries().at(0).second, unitDocument(information + emptyOutput + written));
    }
}

// The reader takes UTF-8 for bytes of the code page, and the writer writes non-ASCII characters as
// references.
TEST_F(ModelDocument, writesTextBeyondAsciiAsReferencesThatReadAsSeveralCharacters) {
    ModelBag model;
    model.script("1;").feeds({L"\u00E9\x08\U0001F600"});
    ASSERT_EQ(unit.load(model), S_OK);
    const std::string written = savedEntries().at(0).second;
    EXPECT_NE(written.find("<feed name=\"&#xE9;&#xD83D;&#xDE00;\" />"), std::string::npos) << written;

    // Only characters that a document cannot contain are lost.
    ASSERT_EQ(load(saved()), S_OK) << narrow(failure());
    EXPECT_NE(savedEntries().at(0).second.find("<feed name=\"&#xC3;&#xA9;\" />"), std::string::npos);
    ASSERT_EQ(
        loadElements("<report name=\"R\">a&#x1B;&#0;b&#xD83D;&#xDE00;c</report>\n<feed name=\"F\" />\n"),
        S_OK);
    EXPECT_EQ(unit.report(L"R"), L"abc");

    ASSERT_EQ(loadElements("<report name=\"matlab output\">&#xE9;</report>\n"), S_OK);
    EXPECT_EQ(unit.output(), widen("\xC3\xA9", CP_THREAD_ACP));
}

// A box with all of them would be higher than the screen.
TEST_F(ModelDocument, countsWarningsBeyondWhatABoxShows) {
    std::string elements;
    for (int i = 0; i < 20000; ++i)
        elements += "<feed/>";
    ASSERT_EQ(loadElements(elements), S_OK);
    ASSERT_EQ(boxes.size(), 1U);
    EXPECT_LT(boxes[0].size(), 2100U);
    EXPECT_TRUE(boxes[0].ends_with("name\r\nand 19926 more\r\n")) << boxes[0];
}

TEST_F(ModelDocument, roundTripsFilesWithNamesBeyondAscii) {
    ModelBag model;
    model.script("1;").file("caf\xE9 \x80.txt", "data");
    ASSERT_EQ(unit.load(model), S_OK);
    const std::string container = saved();
    unit = HostedUnit(module);
    ASSERT_EQ(load(container), S_OK) << narrow(failure());
    EXPECT_EQ(savedEntries().at(2), (Entry{"caf\xE9 \x80.txt", "data"}));
}

// The XML library alone would reject it, and lose a run of blanks.
TEST_F(ModelDocument, roundTripsAReportOfManyMegabytes) {
    std::wstring output(11'000'000, L'x');
    output[2'000'000] = L'<';
    std::fill(output.begin() + 2'000'002, output.begin() + 5'000'000, L'\n');
    std::fill(output.begin() + 6'500'000, output.begin() + 9'000'000, L' ');
    std::fill(output.begin() + 10'000'000, output.end(), L' ');
    ModelBag model;
    model.script("1;");
    model.reports({L"Long"}).values[L"report \\ Long"] = Variant(std::wstring_view(output));
    ASSERT_EQ(unit.load(model), S_OK);
    ASSERT_EQ(load(saved()), S_OK) << narrow(failure());
    EXPECT_TRUE(unit.report(L"Long") == output);
}

TEST_F(ModelDocument, doesNotSaveTextThatCannotBeReadAgain) {
    const struct {
        std::size_t characters;
        std::size_t options;
        std::wstring text;
    } cases[] = {
        {9'800'000, 2, L""},
        {11'000'000, 2,
         L"texts of 11000058 bytes, of which a model file takes 9900000, in <parameter name=\"p\""},
        {1, 100'000, L"a model file takes 100000 ports, parameters, options, reports and files"},
    };
    for (const auto& row : cases) {
        const std::wstring value(row.characters, L'x');
        ModelBag model;
        model.script("1;").parameter(L"p", L"string", Variant(std::wstring_view(value)));
        model.with(L"p", L"options", VariantArray::of(std::vector<std::wstring>(row.options, L"o")));
        ASSERT_EQ(unit.load(model), S_OK);
        const std::string container = saved();
        if (row.text.empty()) {
            ASSERT_EQ(load(container), S_OK) << narrow(failure());
            EXPECT_TRUE(unit.parameter(L"p").text() == value);
        } else {
            EXPECT_EQ(container, "");
            EXPECT_TRUE(failure().starts_with(L"Failed to write temporary data file: " + row.text))
                << narrow(failure());
        }
    }
}

TEST_F(ModelDocument, failsWithTheLineOfTheLastParseError) {
    EXPECT_EQ(loadElements("<feed name=\"F\" />\n<feed name=\"G\" / >\n"), capeFailure);
    EXPECT_TRUE(failure().starts_with(L"Parse error in xml data file, line ")) << narrow(failure());
    EXPECT_TRUE(boxes.empty());
}

} // namespace
} // namespace solvane
