// Under Aspen Plus, which this program is named after, a unit keeps its model in a file beside the flowsheet.

#include "BareUnit.h"
#include "ModelFileTest.h"
#include "Program.h"
#include "WindowDriver.h"
#include "com/Module.h"
#include "com/Text.h"
#include "persistence/PrivateModel.h"
#include "resources/ResourceIds.h"
#include "ui/HostWindow.h"

#include <filesystem>

namespace solvane {
namespace {

class AspenPlus : public ModelFileTest {
protected:
    AspenPlus() {
        std::filesystem::current_path(temporary.path());
        writeFile(L"B1.svm",
                  zipOf({{"unit.xml", "<UnitOperation><feed name=\"F\"/></UnitOperation>"}, {"calc.m", "1;"}},
                        temporary.path()));
    }
    ~AspenPlus() override { std::filesystem::current_path(former_); }

    static void name(const HostedUnit& unit, const wchar_t* text) {
        unit.as<ICapeIdentification>()->put_ComponentName(Bstr(text).get());
    }
    static LONG portCount(const HostedUnit& unit) {
        LONG count = -1;
        unit.as<ICapeCollection>()->Count(&count);
        return count;
    }
    static HRESULT getPorts(const HostedUnit& unit) {
        ComRef<IDispatch> ports;
        return unit.as<ICapeUnit>()->get_ports(ports.put());
    }
    static HRESULT getParameters(const HostedUnit& unit) {
        ComRef<IDispatch> parameters;
        return unit.as<ICapeUtilities>()->get_parameters(parameters.put());
    }

private:
    std::filesystem::path former_ = std::filesystem::current_path();
};

/// A unit in this program, named B1 and edited, without a thread.
class EditedUnit {
public:
    explicit EditedUnit(const std::wstring& folder, const std::string& script = "1;") {
        unit_->makeWorkingFolder(folder, "B1", script);
        unit_->componentName = L"B1";
        unit_->markChanged();
    }
    BareUnit* operator->() const { return unit_.get(); }
    BareUnit& operator*() const { return *unit_.get(); }

private:
    ComModule module_;
    ComRef<BareUnit> unit_ = BareUnit::create();
};

TEST_F(AspenPlus, loadsTheUnitsFileOnFirstUse) {
    const struct {
        const char* call;
        std::function<void(const HostedUnit&)> need;
    } cases[] = {
        {"get_ports", [](const HostedUnit& u) { EXPECT_EQ(getPorts(u), S_OK); }},
        {"get_parameters", [](const HostedUnit& u) { EXPECT_EQ(getParameters(u), S_OK); }},
        {"Calculate", [](const HostedUnit& u) { u.calculate(); }},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.call);
        const HostedUnit fresh(module);
        name(fresh, L"B1");
        EXPECT_EQ(portCount(fresh), 0);
        row.need(fresh);
        EXPECT_EQ(portCount(fresh), 1);
    }
}

TEST_F(AspenPlus, waitsWithTheFileForTheEndOfASaveOrLoad) {
    const std::function<void()> needs[] = {[&] { EXPECT_EQ(getPorts(unit), S_OK); },
                                           [&] { EXPECT_EQ(getParameters(unit), S_OK); },
                                           [&] { unit.calculate(); }};
    for (const auto& need : needs) {
        unit = HostedUnit(module);
        name(unit, L"B1");
        ModelBag model;
        model.script("1;").feeds({L"F1", L"F2"});
        for (const wchar_t* parameter : {L"P1", L"P2", L"P3"})
            model.parameter(parameter, L"real", Variant(1.0));
        model.onRead = need;
        ASSERT_EQ(unit.load(model), S_OK);
        EXPECT_EQ(portCount(unit), 2);
        ModelBag saved;
        saved.onWrite = need;
        EXPECT_EQ(unit.as<IPersistPropertyBag>()->Save(&saved, TRUE, TRUE), S_OK);
        EXPECT_EQ(saved.texts(L"feeds").size(), 2U);
        EXPECT_EQ(saved.texts(L"parameters").size(), 3U);
        need();
        EXPECT_EQ(portCount(unit), 1);
    }
}

TEST_F(AspenPlus, isRecognizedByItsOtherProgramToo) {
    const std::wstring other = builtFile(L"..\\tests\\apwin.exe");
    ASSERT_TRUE(CopyFileW(builtFile(L"..\\tests\\apmain.exe").c_str(), other.c_str(), FALSE));
    const Outcome outcome = Program(L"\"" + other + L"\" --gtest_filter=*.theFileOfTheUnitsName*").wait();
    EXPECT_EQ(outcome.exitCode, 0u) << outcome.printed;
    DeleteFileW(other.c_str());
}

TEST_F(AspenPlus, looksForTheFileOnceAndNotAfterAStream) {
    name(unit, L"B2");
    EXPECT_EQ(getPorts(unit), S_OK);
    name(unit, L"B1");
    EXPECT_EQ(getPorts(unit), S_OK);
    EXPECT_EQ(portCount(unit), 0);

    const HostedUnit streamed(module);
    HostStream stream;
    streamed.as<IPersistStream>()->Load(&stream);
    name(streamed, L"B1");
    EXPECT_EQ(getParameters(streamed), S_OK);
    EXPECT_EQ(portCount(streamed), 0);
    EXPECT_TRUE(boxes.empty());
}

TEST_F(AspenPlus, reportsAnUnreadableFileAndContinuesTheCall) {
    writeFile(L"B1.svm", "no zip");
    name(unit, L"B1");
    EXPECT_EQ(getPorts(unit), S_OK);
    EXPECT_EQ(boxes, std::vector<std::string>{
                         "AspenPlus persistence work-around: Loading private data failed; "
                         "failed to load \"" +
                         narrow(temporary.path()) + "B1.svm\": Failed to open SVM file as ZIP file"});
}

TEST_F(AspenPlus, storesAnEditedModel) {
    const EditedUnit edited(temporary.path());
    edited->componentName = L"B3";
    edited->modelEdited = false;
    edited->feedPorts.push_back(edited->CreatePort(true, L"F"));
    StorePrivateModel(*edited);
    EXPECT_EQ(readFile(L"B3.svm"), "?");
    edited->markChanged();
    StorePrivateModel(*edited);
    EXPECT_EQ(load(readFile(L"B3.svm")), S_OK);
    EXPECT_EQ(portCount(unit), 1);
}

// The file is the only copy of the model.
TEST_F(AspenPlus, keepsTheFileIfASaveFails) {
    const std::string former = readFile(L"B1.svm");
    const EditedUnit edited(temporary.path(), "");
    StorePrivateModel(*edited);
    EXPECT_EQ(boxes,
              std::vector<std::string>{"AspenPlus persistence work-around: Storing private data failed; "
                                       "failed to save \"" +
                                       narrow(temporary.path()) +
                                       "B1.svm\": Failed to add \"calc.m\" to zip: file has zero size"});
    EXPECT_TRUE(readFile(L"B1.svm") == former);
    EXPECT_EQ(readFile(L"B1.sv~"), "?");
}

TEST_F(AspenPlus, neverOverwritesAFileInUse) {
    const std::string former = readFile(L"B1.svm");
    const EditedUnit edited(temporary.path());
    {
        const FileHandle inUse(CreateFileW(L"B1.svm", GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
        LoadPrivateModel(*edited, ActivityScope(*edited, UnitActivity::loading));
        StorePrivateModel(*edited);
    }
    EXPECT_EQ(readFile(L"B1.svm"), former);
    edited->componentName = L"b1"; // the same file
    StorePrivateModel(*edited);
    EXPECT_EQ(readFile(L"B1.svm.unread1.svm"), former);
    const std::string stored = readFile(L"B1.svm");
    EXPECT_TRUE(stored.starts_with("PK") && stored != former);
    ASSERT_EQ(boxes.size(), 3U);
    EXPECT_NE(boxes[1].find("the file that could not be loaded cannot be renamed: "), std::string::npos);
    EXPECT_NE(boxes[2].find("is kept as \"" + narrow(temporary.path()) + "b1.svm.unread1.svm\""),
              std::string::npos);
}

TEST_F(AspenPlus, leavesTheFlowsheetAloneWithoutAFolder) {
    writeFile(L"unit.xml", "the user's");
    SetEnvironmentVariableW(L"TMP", L"C:\\no such folder");
    const HostedUnit stopped(module);
    SetEnvironmentVariableW(L"TMP", temporary.path().c_str());
    name(stopped, L"B1");
    EXPECT_EQ(stopped.as<ICapeUtilities>()->Edit(), capeFailure);
    EXPECT_EQ(readFile(L"unit.xml"), "the user's");
    EXPECT_EQ(readFile(L"calc.m"), "?");
}

TEST_F(AspenPlus, showsTheFilesModelInTheWindowAndStoresChanges) {
    const auto feeds = [](WindowDriver& user) { return user.rows(IDC_PORT_FEEDS).size(); };
    name(unit, L"B1");
    EXPECT_EQ(WindowDriver::edit(unit,
                                 [&](WindowDriver& user) {
                                     EXPECT_EQ(feeds(user), 1U);
                                     user.press(L"&Add");
                                     user.endLabel(IDC_PORT_FEEDS, L"G");
                                 }),
              S_OK);
    const HostedUnit next(module);
    name(next, L"B1");
    EXPECT_EQ(WindowDriver::edit(next, [&](WindowDriver& user) { EXPECT_EQ(feeds(user), 2U); }), S_FALSE);
}

TEST_F(AspenPlus, makesTheFlowsheetsWindowTheOwner) {
    const HWND other = CreateWindowW(L"STATIC", L"Aspen", WS_VISIBLE | WS_POPUP, 0, 0, 9, 9, nullptr, nullptr,
                                     nullptr, nullptr);
    const HWND flowsheet = CreateWindowW(L"STATIC", L"case.bkp - Aspen Plus V12", WS_POPUP, 0, 0, 9, 9,
                                         nullptr, nullptr, nullptr, nullptr);
    SetActiveWindow(nullptr);
    EXPECT_EQ(FindHostWindow(), nullptr);
    ShowWindow(flowsheet, SW_SHOWNOACTIVATE);
    ShowWindow(other, SW_HIDE);
    EXPECT_EQ(FindHostWindow(), flowsheet);
    DestroyWindow(flowsheet);
    DestroyWindow(other);
}

} // namespace
} // namespace solvane
