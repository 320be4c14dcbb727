// What a run and the doctor report on a machine that lacks something, and that no files remain.
#include "Folders.h"
#include "MatlabRegistration.h"
#include "Program.h"
#include "cases/FilePath.h"
#include "com/Text.h"

#include <gmock/gmock.h>

#include <functional>
#include <memory>

namespace solvane::host {

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

/// Changes an environment variable of this process and of those that it starts, for its lifetime.
class Setting {
public:
    Setting(const wchar_t* name, const std::wstring& value) : name_(name), former_(32767, L'\0') {
        former_.resize(GetEnvironmentVariableW(name, former_.data(), static_cast<DWORD>(former_.size())));
        SetEnvironmentVariableW(name, value.c_str());
    }
    ~Setting() { SetEnvironmentVariableW(name_, former_.empty() ? nullptr : former_.c_str()); }
    Setting(const Setting&) = delete;
    Setting& operator=(const Setting&) = delete;

private:
    const wchar_t* name_;
    std::wstring former_;
};

/// Removes a file of the product for its lifetime. If a test crashes, the build makes the file anew.
class MissingFile {
public:
    explicit MissingFile(const std::string& name)
        : path_(filePath(SOLVANE_BIN "/" + name)), away_(path_.wstring() + L".away") {
        rename(path_, away_);
    }
    ~MissingFile() { rename(away_, path_); }
    MissingFile(const MissingFile&) = delete;
    MissingFile& operator=(const MissingFile&) = delete;

private:
    std::filesystem::path path_;
    std::filesystem::path away_;
};

using Breakage = std::shared_ptr<void>; ///< repaired at its end

Breakage breakMatlab(const std::function<void(MatlabRegistration&)>& act) {
    auto registration = std::make_shared<MatlabRegistration>();
    act(*registration);
    return registration;
}

const std::wstring hostProgram = builtFile(L"SolvaneHost.exe");

class FirstContact : public testing::Test {
protected:
    /// A case whose script reads a file of the model.
    FirstContact() {
        solvane::writeFile(folder.path() + L"gain.txt", "0.5");
        writeCase(L"case.json", R"({"reports": ["R"], "files": ["gain.txt"], "script": [
            "F = getFeedProp(1, 'totalFlow');", "setReport('R', pwd);",
            "setProduct(1, F*load('gain.txt'), 1, 'temperature', 300, 'pressure', 1e5);"]})");
        writeCase(L"saved.json", R"("model.svm")");
    }

    void writeCase(const wchar_t* name, const std::string& model) {
        solvane::writeFile(folder.path() + name,
                           R"({"compounds": ["methane"], "feeds": [{"name": "F", "temperature": 300,
            "pressure": 1e5, "flow": 2, "composition": {"methane": 1}}], "products": ["P"], "model": )" +
                               model + "}");
    }

    Outcome host(const std::wstring& command, const wchar_t* file = L"", const std::wstring& options = L"") {
        return Program(hostProgram + L" " + command + L" \"" + folder.path() + file + L"\" " + options)
            .wait();
    }
    static Outcome doctor() { return Program(hostProgram + L" doctor").wait(); }

    /// Whether scripts run in a GNU Octave for Windows: the doctor prints "GNU Octave 7.3.0 in C:\Octave".
    static bool isOctaveOnWindows() {
        static const bool isOnWindows =
            testing::Matches(testing::ContainsRegex("GNU Octave \\S+ in \\w:"))(doctor().printed);
        return isOnWindows;
    }

    /// What units left in a temporary folder, except the gateway's folder. An engine ends a moment after its
    /// client and takes its folder with it. But under Wine it ends at once with its client, while a Windows
    /// Octave still keeps the folder, which a later engine then removes.
    static std::vector<std::wstring> leftIn(const std::wstring& place) {
        const auto isEngines = [](const std::wstring& name) { return name.starts_with(L"SolvaneOctave"); };
        std::vector<std::wstring> names = namesIn(place);
        const bool staysForAWhile = isOctaveOnWindows();
        for (int tries = 0; tries < 50 && !staysForAWhile && std::ranges::any_of(names, isEngines); ++tries) {
            Sleep(100);
            names = namesIn(place);
        }
        if (staysForAWhile)
            std::erase_if(names, isEngines);
        std::erase_if(names, [](const std::wstring& name) { return name.starts_with(L"SolvaneUnitMEX"); });
        return names;
    }

    TemporaryFolder folder;
};

TEST_F(FirstContact, passesOnAHealthyMachine) {
    const Outcome outcome = doctor();
    EXPECT_EQ(outcome.exitCode, 0u) << outcome.printed;
    EXPECT_THAT(outcome.printed,
                AllOf(HasSubstr("engine start          right    GNU Octave "), HasSubstr("\nrun "),
                      HasSubstr("\nAll is right.\n"), Not(HasSubstr("skipped"))));
}

// For users called O'Brien or Müller.
TEST_F(FirstContact, worksWithTemporaryFoldersOfAnyName) {
    for (const wchar_t* name : {L"with blanks", L"O'Brien", L"two ''", L"Müller"}) {
        const std::wstring place = folder.path() + name + L"\\";
        CreateDirectoryW(place.c_str(), nullptr);
        const Setting temporary(L"TMP", place);
        const Outcome saved = host(L"save", L"case.json", L"-o \"" + folder.path() + L"model.svm\"");
        EXPECT_EQ(saved.exitCode, 0u) << saved.printed;
        const Outcome run = host(L"run", L"saved.json");
        EXPECT_EQ(run.exitCode, 0u);
        EXPECT_THAT(run.printed, HasSubstr("mol/s     2.0000   1.0000"));
        EXPECT_EQ(leftIn(place), std::vector<std::wstring>()) << narrow(name);
    }
}

TEST_F(FirstContact, explainsWhatIsBroken) {
    const std::string notInstalled = "; Matlab not installed?";
    const struct {
        std::function<Breakage()> arrange;
        std::string run;    // what a run says
        std::string step;   // the doctor's first step that is wrong,
        std::string fault;  // what is wrong with it,
        std::string remedy; // and what to do
    } cases[] = {
        {[] {
             return breakMatlab([](MatlabRegistration& matlab) {
                 matlab.removeClass();
                 matlab.removeCurrentVersion();
             });
         },
         "Unable to determine current version of Matlab.Application" + notInstalled, "engine class",
         "No Matlab.Application is registered", "OctaveAutomationServer /RegServer"},
        {[] { return breakMatlab([](MatlabRegistration& matlab) { matlab.removeClass(); }); },
         "Failed to get CLSDID for Matlab.Application" + notInstalled, "engine class",
         "its key CLSID is missing", "matlab /regserver"},
        {[] {
             return breakMatlab(
                 [](MatlabRegistration& matlab) { matlab.setServer(L"C:\\gone\\matlab.exe"); });
         },
         "Failed to create Matlab application: ", "engine class",
         "C:\\gone\\matlab.exe, which does not exist", "matlab /regserver"},
        {[] { return std::make_shared<Setting>(L"SOLVANE_OCTAVE", L"/no/such/octave"); },
         "There is no file /no/such/octave, the path of Octave in", "engine start",
         "There is no file /no/such/octave", "Install GNU Octave"},
        {[] {
             const std::string system = isOctaveOnWindows() ? "windows" : "linux";
             return std::make_shared<MissingFile>("octave/" + system + "/CapeOpenUnitMex.mex");
         },
         "'CapeOpenUnitMex' undefined", "engine files", "CapeOpenUnitMex.mex is missing",
         "unit's files into their folder"},
        {[] { return std::make_shared<MissingFile>("setProduct.m"); }, "'setProduct' undefined",
         "engine files", "setProduct.m is missing", "unit's files into their folder"},
        {[] { return std::make_shared<MissingFile>("SolvaneUnitOperation.dll"); }, "cannot be created",
         "unit class", "SolvaneUnitOperation.dll does not exist", "regsvr32"},
        {[this] { return std::make_shared<Setting>(L"TMP", folder.path() + L"gone\\"); },
         "Failed to create a temporary working directory", "temporary folder", "gone\\ does not exist",
         "TMP"},
        {[this] {
             CreateDirectoryW((folder.path() + L"Ελένη").c_str(), nullptr);
             return std::make_shared<Setting>(L"TMP", folder.path() + L"Ελένη\\");
         },
         "Failed to create a temporary working directory", "temporary folder",
         "letters that Windows' code page", "TMP"},
    };
    const std::vector<std::wstring> before = leftIn(folder.path());
    for (const auto& row : cases) {
        const Breakage broken = row.arrange();
        const Outcome run = host(L"run", L"case.json");
        EXPECT_EQ(run.exitCode, 1u) << run.printed;
        EXPECT_THAT(run.printed, HasSubstr(row.run));
        // A script that ran to its end apparently had all that it needs of the machine.
        const bool hasRun = run.printed.find("Calculate failed at ") != std::string::npos;
        EXPECT_NE(run.printed.find("\"SolvaneHost doctor\" shows") != std::string::npos, hasRun)
            << run.printed;

        const Outcome found = doctor();
        EXPECT_EQ(found.exitCode, 1u);
        std::string step = row.step;
        step.resize(22, ' ');
        const std::size_t wrong = found.printed.find("WRONG");
        ASSERT_NE(wrong, std::string::npos) << found.printed;
        EXPECT_EQ(found.printed.substr(wrong - step.size(), step.size()), step) << found.printed;
        EXPECT_THAT(found.printed.substr(wrong),
                    AllOf(HasSubstr(row.fault), HasSubstr("to do    "), HasSubstr(row.remedy),
                          HasSubstr("skipped  needs the step")));
        EXPECT_EQ(found.printed.find("WRONG", wrong + 1), std::string::npos) << "one cause, one complaint";
    }
    std::vector<std::wstring> after = leftIn(folder.path());
    std::erase(after, L"Ελένη");
    EXPECT_EQ(after, before);
}

} // namespace

} // namespace solvane::host
