// Models that a stranger made to cause harm.

#include "ModelFileTest.h"
#include "com/Text.h"

#include <chrono>
#include <filesystem>

namespace solvane {
namespace {

using HostileModel = ModelFileTest;

/// With U+3E3E, whose bytes are those of two '>', for each byte FF.
std::string inUtf16(const std::string& text) {
    std::string units;
    for (const char c : text)
        units.append(c == '\xFF' ? std::string(">>") : std::string{c, '\0'});
    return units;
}

TEST_F(HostileModel, neitherWritesNorReadsFilesOfTheUserOrTheUnit) {
    const char* const names[] = {"..\\evil.txt",   "../evil.txt", "sub/../../evil.txt",
                                 "\\evil.txt",     "/evil.txt",   "C:\\evil.txt",
                                 "C:evil.txt",     "calc.m:evil", "..",
                                 "evil.txt.",      "evil.txt ",   "CON",
                                 "nul.txt",        "com1",        "LPT9.x.y",
                                 "aux .txt",       "a*b",         "",
                                 "RUNUNIT.m",      "initRun.m",   "runUnit.oct",
                                 "initRun.mexw64", "unit.xml",    "_unitOperationModel_.svm"};
    writeFile(temporary.path() + L"evil.txt", "the user's");
    const std::vector<std::wstring> outside = namesIn(temporary.path());
    const std::string runScript = readFile(matlab.workingFolder() + L"runUnit.m");
    for (const std::string name : names) {
        SCOPED_TRACE(name);
        const std::string document = "<UnitOperation><file name=\"" + name + "\"/></UnitOperation>";
        EXPECT_EQ(load({{"unit.xml", document}, {"calc.m", "1;"}, {name, "evil"}}), capeFailure);
        const std::wstring begin = L"Failed to read \"" + widen(name) + L"\" in zipped document: the name ";
        EXPECT_TRUE(failure().starts_with(begin)) << narrow(failure());
        EXPECT_EQ(savedEntries().size(), 2U); // the description and the script
        ModelBag bag;
        bag.script("1;").file(name, "evil");
        if (!name.empty()) {
            EXPECT_EQ(unit.load(bag), capeFailure);
            EXPECT_TRUE(unit.errorDescription().starts_with(L"Failed to restore \"")) << narrow(unit.error());
        }
        EXPECT_EQ(namesIn(temporary.path()), outside);
        EXPECT_EQ(readFile(temporary.path() + L"evil.txt"), "the user's");
        EXPECT_EQ(readFile(matlab.workingFolder() + L"runUnit.m"), runScript);
        for (const std::wstring& left : namesIn(matlab.workingFolder()))
            EXPECT_EQ(left.find(L"evil"), std::wstring::npos) << narrow(left);
    }
    EXPECT_EQ(readFile(L"C:\\evil.txt"), "?");
    EXPECT_EQ(readFile(L"evil.txt"), "?");
    for (const std::string name : {"evil.txt", "..evil", "con2.txt", "common", ".x", "a b (1).mat"}) {
        const std::string document = "<UnitOperation><file name=\"" + name + "\"/></UnitOperation>";
        EXPECT_EQ(load({{"unit.xml", document}, {"calc.m", "1;"}, {name, "good"}}), S_OK) << name;
        EXPECT_EQ(readFile(matlab.workingFolder() + widen(name)), "good");
    }
}

TEST_F(HostileModel, doesNotReachALongNamesFileByItsShortName) {
    const std::wstring path = matlab.workingFolder() + L"_the unit's own file_.svm";
    writeFile(path, "own");
    std::wstring shortPath(MAX_PATH, L'\0');
    shortPath.resize(GetShortPathNameW(path.c_str(), shortPath.data(), MAX_PATH));
    const std::string name = narrow(shortPath.substr(shortPath.rfind(L'\\') + 1));
    if (name.find('~') == std::string::npos)
        GTEST_SKIP() << "there are no short names";
    const std::string document = "<UnitOperation><file name=\"" + name + "\"/></UnitOperation>";
    EXPECT_EQ(load({{"unit.xml", document}, {"calc.m", "1;"}, {name, "evil"}}), capeFailure);
    EXPECT_EQ(failure(), L"Failed to read \"" + widen(name) +
                             L"\" in zipped document: the name is the short form of another file's");
    ModelBag bag;
    EXPECT_EQ(unit.load(bag.script("1;").file(name, "evil")), capeFailure);
    EXPECT_EQ(readFile(path), "own");
}

// Short documents that would expand to gigabytes, in each possible form.
TEST_F(HostileModel, doesNotExpandDeclarations) {
    const auto bomb = [](const std::string& mark, const std::string& body) {
        std::string type = "<!DOCTYPE UnitOperation [<!ENTITY " + mark + " e0 \"0123456789\">";
        for (int i = 1; i < 12; ++i) {
            const std::string inner = (mark.empty() ? "&e" : "&#37;e") + std::to_string(i - 1) + ";";
            type += "<!ENTITY " + mark + " e" + std::to_string(i) + " \"";
            for (int k = 0; k < 10; ++k)
                type += inner;
            type += "\">";
        }
        return type + body;
    };
    const std::string documents[] = {
        bomb("", "]><UnitOperation><report name=\"R\">&e11;</report></UnitOperation>"),
        bomb("", "]><UnitOperation><feed name=\"&e11;\"/></UnitOperation>"),
        bomb("%", "%e11;]><UnitOperation/>"),
        "<!DOCTYPE UnitOperation [<!ENTITY f SYSTEM \"file:///C:/windows/win.ini\">]><UnitOperation>"
        "<report name=\"R\">&f;</report></UnitOperation>",
        "<!DOCTYPE UnitOperation [<!ENTITY % f SYSTEM \"http://127.0.0.1:9/x.dtd\"> %f;]><UnitOperation/>",
        "<!DOCTYPE UnitOperation SYSTEM '>' [<!ATTLIST feed name CDATA \"F\">]><UnitOperation/>",
        "\xFF\xFE" + inUtf16("<!DOCTYPE \xFF [<!ELEMENT a ANY>]><UnitOperation/>"),
        "<?xml version='1.0' encoding='UTF-16LE'" +
            inUtf16("?><!DOCTYPE a [<!ELEMENT a ANY>]><UnitOperation/>"),
        "<!DOC&#1;TYPE UnitOperation [<!ELEMENT a ANY>]><UnitOperation/>",
        "<!-- <!DOCTYPE \"--><!DOCTYPE UnitOperation [<!ELEMENT a ANY>]><!-- \" --><UnitOperation/>",
    };
    for (const std::string& document : documents) {
        const auto start = std::chrono::steady_clock::now();
        EXPECT_EQ(load({{"unit.xml", document}, {"calc.m", "1;"}}), capeFailure) << document;
        EXPECT_EQ(failure(),
                  L"The document type in xml data file has declarations; a model must not have any");
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5)) << document;
    }
    EXPECT_EQ(load({{"unit.xml", "<!DOCTYPE UnitOperation><UnitOperation/>"}, {"calc.m", "1;"}}), S_OK);
}

TEST_F(HostileModel, isRejectedForAnEndlessDocument) {
    const auto repeated = [](int count, const std::string& text) {
        std::string all;
        for (int i = 0; i < count; ++i)
            all += text + (text.ends_with('a') ? std::to_string(i) + "=\"\"" : "");
        return all;
    };
    const struct {
        std::string elements;
        std::wstring text;
    } cases[] = {
        {"<feed" + repeated(80000, " a") + "/>", L"More attributes of one element in xml data file"},
        {"<feed x='>'" + repeated(80000, " a") + "/>", L"More attributes of one element in xml data file"},
        {repeated(1000000, "<feed name=\"F\"/>"), L"More elements in xml data file"},
        {repeated(1000000, "<!---->"), L"More elements in xml data file"},
        {"<feed name=\"" + repeated(1000000, "&x;") + "\"/>",
         L"Too many unknown references in xml data file"},
        {repeated(1001, "<file name=\"calc.m\"/>"), L"More files in xml data file"},
        {std::string(51'000'000, ' '), L"The xml data file is longer than a model's can be"},
    };
    for (const auto& row : cases) {
        const auto start = std::chrono::steady_clock::now();
        EXPECT_EQ(loadElements(row.elements), capeFailure);
        EXPECT_TRUE(failure().starts_with(row.text)) << narrow(failure());
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
    }
    // A report may contain many texts that look like attributes.
    EXPECT_EQ(loadElements("<report name=\"R\">" + repeated(100, "x = '1' ") + "</report>"), S_OK);
}

TEST_F(HostileModel, isStoppedAtAnEndlessEntry) {
    const std::string document =
        "<UnitOperation><file name=\"large\"/><file name=\"larger\"/></UnitOperation>";
    const std::string large(160U << 20, '\0');
    EXPECT_EQ(load({{"unit.xml", document}, {"calc.m", "1;"}, {"large", large}, {"larger", large}}),
              capeFailure);
    EXPECT_EQ(failure(),
              L"Failed to read \"larger\" in zipped document: the model unpacks to more than a model "
              L"can hold");
}

TEST_F(HostileModel, isNotSavedIfItUnpacksToTooMuch) {
    ModelBag model;
    ASSERT_EQ(unit.load(model.script("1;").file("large", "x")), S_OK);
    std::filesystem::resize_file(matlab.workingFolder() + L"large", 257U << 20);
    EXPECT_EQ(saved(), "");
    EXPECT_EQ(failure(), L"Failed to complete zip file: the model unpacks to more than a model can hold");
}

} // namespace
} // namespace solvane
