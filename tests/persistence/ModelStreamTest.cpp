// A unit in a host's stream: the container byte for byte, and the state of a unit after a failure.

#include "ModelFileTest.h"
#include "com/Text.h"

#include <functional>

namespace solvane {
namespace {

using ModelStream = ModelFileTest;

constexpr wchar_t readError[] = L"read error | read error | Load | IPersistStream";

const std::vector<Entry> model{
    {"unit.xml",
     "<UnitOperation><feed name=\"F\"/><parameter name=\"p\" mode=\"input\" type=\"real\" value=\"1.5\"/>"
     "<report name=\"R\">text</report><file name=\"data.bin\"/></UnitOperation>"},
    {"calc.m", "disp(1);\r\n"},
    {"data.bin", std::string("\0\x1A\xFF binary", 10)},
};

TEST_F(ModelStream, restoresAUnitAsSaved) {
    ASSERT_EQ(load(model), S_OK);
    HostStream stream;
    ASSERT_EQ(unit.as<IPersistStream>()->Save(&stream, TRUE), S_OK);
    const std::vector<Entry> entries = entriesOf(stream.container(), temporary.path());
    ASSERT_EQ(entries.size(), 3U);
    EXPECT_EQ(entries[0].first, "unit.xml");
    EXPECT_EQ(entries[1], model[1]);
    EXPECT_EQ(entries[2], model[2]);
    std::uint32_t size = 0;
    std::memcpy(&size, stream.bytes.data(), sizeof size);
    EXPECT_EQ(size, stream.container().size());
    EXPECT_TRUE(stream.bytes.ends_with("Solvane Unit Operation File"));
    ULARGE_INTEGER sizeMax{};
    ASSERT_EQ(unit.as<IPersistStream>()->GetSizeMax(&sizeMax), S_OK);
    EXPECT_EQ(sizeMax.QuadPart, stream.bytes.size());

    const HostedUnit other(module);
    ASSERT_EQ(other.as<IPersistStream>()->Load(&stream), S_OK);
    EXPECT_EQ(other.parameter(L"p").real(), 1.5);
    EXPECT_EQ(other.report(L"R"), L"text");
    EXPECT_EQ(readFile(matlab.workingFolder() + L"data.bin"), model[2].second);
}

TEST_F(ModelStream, savesWithoutChangingTheUnit) {
    EXPECT_EQ(unit.as<IPersistStream>()->IsDirty(), S_FALSE);
    ASSERT_EQ(load(model), S_OK);
    unit.as<ICapeUnitReport>()->put_selectedReport(Bstr(L"R").get());
    const std::vector<std::wstring> files = namesIn(matlab.workingFolder());
    EXPECT_FALSE(saved().empty());
    EXPECT_EQ(namesIn(matlab.workingFolder()), files);
    EXPECT_EQ(unit.report(L"R"), L"text");

    // Once changed, a unit stays dirty: another host may not have its latest state.
    ASSERT_EQ(unit.setParameter(L"p", Variant(2.0)), S_OK);
    EXPECT_FALSE(saved().empty());
    EXPECT_EQ(unit.as<IPersistStream>()->IsDirty(), S_OK);
}

// However a model is loaded, nothing of the former model remains.
TEST_F(ModelStream, replacesFilesScriptAndValidityOnLoad) {
    struct Way {
        std::function<HRESULT(const std::string& script)> load;
        const wchar_t* selectedReport; ///< afterwards; a bag does not store it
    };
    const Way ways[] = {
        {[&](const std::string& script) {
             return load({{"unit.xml", "<UnitOperation/>"}, {"calc.m", script}});
         },
         L""},
        {[&](const std::string& script) {
             ModelBag bag;
             return unit.load(bag.script(script));
         },
         L"R"},
    };
    const std::wstring file = matlab.workingFolder() + L"data.bin";
    for (const Way& way : ways) {
        ASSERT_EQ(load(model), S_OK);
        SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_READONLY);
        EXPECT_EQ(unit.as<ICapeUnitReport>()->put_selectedReport(Bstr(L"R").get()), S_OK);
        ASSERT_EQ(way.load("1;"), S_OK);
        EXPECT_EQ(readFile(file), "?");
        Bstr selected;
        EXPECT_EQ(unit.as<ICapeUnitReport>()->get_selectedReport(selected.put()), S_OK);
        EXPECT_EQ(selected.view(), way.selectedReport);
        EXPECT_EQ(unit.calculate(), S_OK);
        ASSERT_EQ(way.load("2;"), S_OK);
        EXPECT_EQ(unit.status(), CAPE_NOT_VALIDATED);
        EXPECT_EQ(unit.calculate(), S_OK);
        EXPECT_TRUE(readFile(matlab.workingFolder() + L"unitCalc.m").ends_with("2;"));
    }
}

TEST_F(ModelStream, isNotTouchedByATerminatedUnit) {
    ASSERT_EQ(load(model), S_OK);
    ASSERT_EQ(unit.terminate(), S_OK);
    HostStream stream("container");
    ModelBag bag;
    ULARGE_INTEGER size{};
    const auto streams = unit.as<IPersistStream>();
    const auto bags = unit.as<IPersistPropertyBag>();
    const struct {
        HRESULT result;
        std::wstring call;
        std::wstring error = L"";
    } cases[] = {
        {bags->Save(&bag, TRUE, TRUE), L"Save | IPersistPropertyBag", unit.error()},
        {bags->Load(&bag, nullptr), L"Load | IPersistPropertyBag", unit.error()},
        {streams->Save(&stream, TRUE), L"Save | IPersistStream", unit.error()},
        {streams->Load(&stream), L"Load | IPersistStream", unit.error()},
        {streams->GetSizeMax(&size), L"GetSizeMax | IPersistStream", unit.error()},
    };
    const std::wstring text = L"Terminate has been called on unit operation | ";
    for (const auto& row : cases) {
        EXPECT_EQ(row.result, capeFailure);
        EXPECT_EQ(row.error, text + text + row.call);
    }
    EXPECT_TRUE(bag.written.empty());
    EXPECT_EQ(stream.calls, 0);
}

TEST_F(ModelStream, reportsAFailingStream) {
    const std::string container = zipOf(model, temporary.path());
    using enum HostStream::Fault;
    for (const auto fault : {failure, falseResult, shortCount})
        for (const int call : {1, 2}) {
            SCOPED_TRACE(call);
            HostStream stream(container);
            stream.fault = fault;
            stream.faultyCall = call;
            EXPECT_EQ(unit.as<IPersistStream>()->Load(&stream), capeFailure);
            EXPECT_EQ(unit.error(), readError);
            ASSERT_EQ(load(container), S_OK);
            HostStream target;
            target.fault = fault;
            target.faultyCall = call;
            EXPECT_EQ(unit.as<IPersistStream>()->Save(&target, TRUE), capeFailure);
            EXPECT_EQ(unit.error(), L"write error | write error | Save | IPersistStream");
        }
    for (const char* cut : {"", "\1\0", "\xFF\xFF\xFF\x07 only this"}) {
        HostStream stream;
        stream.bytes = cut;
        EXPECT_EQ(unit.as<IPersistStream>()->Load(&stream), capeFailure);
        EXPECT_EQ(unit.error(), readError);
    }
    HostStream huge;
    huge.bytes = "\xFF\xFF\xFF\x7F only this";
    EXPECT_EQ(unit.as<IPersistStream>()->Load(&huge), sizeof(void*) == 8 ? capeFailure : E_OUTOFMEMORY);
}

// A load empties the unit before it opens the file; on failure it reports the reason and leaves nothing.
TEST_F(ModelStream, leavesAnEmptyUsableUnitAfterAFailedLoad) {
    const std::string document = model[0].second;
    const struct {
        std::string container;
        std::wstring text;
    } cases[] = {
        {"", L"Failed to open SVM file as ZIP file"},
        {"no zip at all", L"Failed to open SVM file as ZIP file"},
        {zipOf(model, temporary.path()).substr(0, 200), L"Failed to open SVM file as ZIP file"},
        {zipOf({model[0]}, temporary.path()), L"File \"calc.m\" not present in zipped document"},
        {zipOf({model[1]}, temporary.path()), L"File \"unit.xml\" not present in zipped document"},
        {zipOf({model[1], {"unit.xml", std::string("<\0\0\0?\0\0\0", 8)}}, temporary.path()),
         L"Parse error in xml data file, line 1: encoding not supported USC4 little endian"},
        {zipOf({model[1], {"unit.xml", ""}}, temporary.path()), L"Parse error in xml data file, line 1: "},
        {zipOf({model[1], {"unit.xml", "<UnitOperation><file name=\"data.bin\"/><"}}, temporary.path()),
         L"Parse error in xml data file, line 1: "},
        {zipOf({model[0], model[1]}, temporary.path()), L"File \"data.bin\" not present in zipped document"},
    };
    const std::vector<std::wstring> before = namesIn(matlab.workingFolder());
    for (const auto& row : cases) {
        SCOPED_TRACE(narrow(row.text));
        ASSERT_EQ(load(model), S_OK);
        EXPECT_EQ(load(row.container), capeFailure);
        EXPECT_TRUE(failure().starts_with(row.text)) << narrow(failure());
        EXPECT_EQ(unit.output(), L"");
        const std::vector<std::wstring> after = namesIn(matlab.workingFolder());
        for (const wchar_t* name : {L"unit.xml", L"_unitOperationModel_.svm"})
            EXPECT_EQ(std::ranges::count(after, name), 0);
        if (&row != &std::end(cases)[-1]) {
            LONG count = -1;
            EXPECT_EQ(unit.as<ICapeCollection>()->Count(&count), S_OK);
            EXPECT_EQ(count, 0);
        }
        EXPECT_NE(saved(), "") << narrow(failure());
    }
    ASSERT_EQ(load(model), S_OK);
    EXPECT_EQ(unit.parameter(L"p").real(), 1.5);
}

// Each row damages one stored byte, so that only the checksum can reveal it.
TEST_F(ModelStream, rejectsAWrongChecksum) {
    std::string container = zipOf(model, temporary.path());
    constexpr std::size_t checksum = 14; // in an entry's local header, and in the directory
    const std::size_t directory = container.find("PK\1\2");
    container[container.find("PK\3\4") + checksum] ^= 1;
    container[directory + checksum + 2] ^= 1;
    EXPECT_EQ(load(container), capeFailure);
    EXPECT_EQ(failure(), L"Failed to read \"unit.xml\" in zipped document: read error in zip file");
}

// A truncated entry has no checksum: the unit could take half a script for a whole one.
TEST_F(ModelStream, rejectsATruncatedEntryAndLeavesNoPiece) {
    std::string container = zipOf(model, temporary.path());
    ++container[container.rfind("PK\3\4") + 22]; // the file's size, in its local header and in the directory
    ++container[container.rfind("PK\1\2") + 24];
    EXPECT_EQ(load(container), capeFailure);
    EXPECT_EQ(failure(), L"Failed to read \"data.bin\" in zipped document: read error in zip file");
    EXPECT_EQ(readFile(matlab.workingFolder() + L"data.bin"), "?");
}

// The unit could not save a model with such a file.
TEST_F(ModelStream, rejectsAFileWhosePathIsTooLong) {
    for (const bool isTooLong : {false, true}) {
        const std::string name(MAX_PATH - matlab.workingFolder().size() + (isTooLong ? 0 : -1), 'n');
        const HRESULT loaded =
            load({{"unit.xml", "<UnitOperation><file name=\"" + name + "\"/></UnitOperation>"},
                  {"calc.m", "1;"},
                  {name, "1"}});
        if (isTooLong) {
            EXPECT_EQ(narrow(failure()), "Failed to read \"" + name +
                                             "\" in zipped document: failed to open file in temporary "
                                             "working folder");
        } else {
            EXPECT_EQ(loaded, S_OK);
        }
        EXPECT_NE(saved(), "");
    }
}

TEST_F(ModelStream, namesWhatCannotBeSaved) {
    const struct {
        std::wstring file;
        bool isDeleted;
        std::wstring text;
    } cases[] = {
        {L"calc.m", false, L"Failed to add \"calc.m\" to zip: file has zero size"},
        {L"data.bin", true, L"Failed to add \"data.bin\" to zip: unable to re-open file"},
    };
    for (const auto& row : cases) {
        ASSERT_EQ(load(model), S_OK);
        const std::wstring path = matlab.workingFolder() + row.file;
        writeFile(path, "");
        if (row.isDeleted)
            DeleteFileW(path.c_str());
        EXPECT_EQ(saved(), "");
        EXPECT_EQ(unit.error(), row.text + L" | " + row.text + L" | Save | IPersistStream");
        ULARGE_INTEGER size{};
        EXPECT_EQ(unit.as<IPersistStream>()->GetSizeMax(&size), capeFailure);
        EXPECT_EQ(unit.error(), row.text + L" | " + row.text + L" | Save | IPersistStream");
        const std::vector<std::wstring> left = namesIn(matlab.workingFolder());
        for (const wchar_t* name : {L"unit.xml", L"_unitOperationModel_.svm"})
            EXPECT_EQ(std::ranges::count(left, name), 0);
    }
}

} // namespace
} // namespace solvane
