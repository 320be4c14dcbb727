// Models that a stranger made to do harm.

#include "ModelFileTest.h"
#include "com/Text.h"

#include <chrono>

namespace solvane {
namespace {

using HostileModel = ModelFileTest;

TEST_F(HostileModel, nothingIsWrittenOutsideTheWorkingFolder) {
    const char* const names[] = {
        "..\\evil.txt", "../evil.txt", "sub/../../evil.txt",
        "\\evil.txt",   "/evil.txt",   "C:\\evil.txt",
        "C:evil.txt",   "calc.m:evil", "..",
        "evil.txt.",    "evil.txt ",   "CON",
        "nul.txt",      "com1",        "LPT9.x.y",
        "aux .txt",     "a*b",         "",
    };
    const std::vector<std::wstring> outside = namesIn(temporary.path());
    for (const std::string name : names) {
        SCOPED_TRACE(name);
        const std::string document = "<UnitOperation><file name=\"" + name + "\"/></UnitOperation>";
        EXPECT_EQ(load({{"unit.xml", document}, {"calc.m", "1;"}, {name, "evil"}}), capeFailure);
        const std::wstring begin = L"Failed to read \"" + widen(name) + L"\" in zipped document: the name ";
        EXPECT_TRUE(failure().starts_with(begin)) << narrow(failure());
        ModelBag bag;
        bag.script("1;").file(name, "evil");
        if (!name.empty()) {
            EXPECT_EQ(unit.load(bag), capeFailure);
            EXPECT_TRUE(unit.errorDescription().starts_with(L"Failed to restore \"")) << narrow(unit.error());
        }
        EXPECT_EQ(namesIn(temporary.path()), outside);
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

// A document of a few lines that would expand to gigabytes, in the ways in which one can be written.
TEST_F(HostileModel, entitiesDoNotExplode) {
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
        std::string("\xFF\xFE<\0!\0E\0N\0T\0I\0T\0Y\0", 18),
    };
    for (const std::string& document : documents) {
        const auto start = std::chrono::steady_clock::now();
        EXPECT_EQ(load({{"unit.xml", document}, {"calc.m", "1;"}}), capeFailure) << document;
        EXPECT_EQ(failure(), L"Entities are declared in xml data file; a model has none");
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5)) << document;
    }
    EXPECT_EQ(load({{"unit.xml", "<!DOCTYPE UnitOperation><UnitOperation/>"}, {"calc.m", "1;"}}), S_OK);
}

TEST_F(HostileModel, anEntryThatUnpacksWithoutEndIsStopped) {
    const std::string document =
        "<UnitOperation><file name=\"large\"/><file name=\"larger\"/></UnitOperation>";
    const std::string large(160U << 20, '\0');
    EXPECT_EQ(load({{"unit.xml", document}, {"calc.m", "1;"}, {"large", large}, {"larger", large}}),
              capeFailure);
    EXPECT_EQ(failure(),
              L"Failed to read \"larger\" in zipped document: the model unpacks to more than a model "
              L"can hold");
}

} // namespace
} // namespace solvane
