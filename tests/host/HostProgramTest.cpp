// The program's command line: exit codes, and what goes to which stream.
#include "CaseFolder.h"

#include "com/Handle.h"
#include "com/Text.h"

#include <gtest/gtest.h>

namespace solvane::host {

namespace {

constexpr DWORD longestRun = 60'000; // ms

class HostProgram : public testing::Test {
protected:
    struct Outcome {
        DWORD exitCode = 0;
        std::string output;
        std::string errors;
    };

    /// Runs SolvaneHost with these arguments.
    Outcome run(const std::string& arguments) {
        Outcome outcome;
        // Names of their own: services that the program starts may keep its streams open.
        const std::string number = std::to_string(++runs_);
        const std::string outputPath = folder.write("output" + number, "");
        const std::string errorPath = folder.write("errors" + number, "");
        {
            const FileHandle output = writable(outputPath), errors = writable(errorPath);
            STARTUPINFOW startup{};
            startup.cb = sizeof startup;
            startup.dwFlags = STARTF_USESTDHANDLES;
            startup.hStdOutput = output.get();
            startup.hStdError = errors.get();
            const auto program = filePath(SOLVANE_BIN "/SolvaneHost.exe").wstring();
            std::wstring command = L"\"" + program + L"\" " + widen(arguments, CP_UTF8);
            PROCESS_INFORMATION information{};
            EXPECT_TRUE(CreateProcessW(program.c_str(), command.data(), nullptr, nullptr, TRUE, 0, nullptr,
                                       nullptr, &startup, &information));
            const Handle process(information.hProcess), thread(information.hThread);
            EXPECT_EQ(WaitForSingleObject(process.get(), longestRun), WAIT_OBJECT_0);
            GetExitCodeProcess(process.get(), &outcome.exitCode);
        }
        std::string error;
        EXPECT_TRUE(readFile(filePath(outputPath), outcome.output, error)) << error;
        EXPECT_TRUE(readFile(filePath(errorPath), outcome.errors, error)) << error;
        return outcome;
    }

    CaseFolder folder;

private:
    int runs_ = 0;

    static FileHandle writable(const std::string& path) {
        SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
        return FileHandle(CreateFileW(filePath(path).c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherited,
                                      OPEN_EXISTING, 0, nullptr));
    }
};

TEST_F(HostProgram, tellsUsageFromFailure) {
    const std::string good = folder.write("good.json", R"({
        "unit": { "progId": "No.Such.Unit" }, "compounds": ["methane"],
        "feeds": [ { "name": "in", "temperature": 300, "pressure": 1e5, "flow": 1,
                     "composition": { "methane": 1 } } ],
        "products": [] })");
    const std::string bad = folder.write("bad.json", "{}");
    struct Row {
        std::string arguments;
        DWORD exitCode;
        const char* errors;
    };
    const Row rows[] = {
        {"run \"" + good + "\"", 1, "error: No component is registered as \"No.Such.Unit\"\n"},
        {"run \"" + bad + "\"", 2, "bad.json: the key \"compounds\" is missing\n"},
        {"run /no/such/case.json", 2, "/no/such/case.json cannot be opened\n"},
        {"run", 2, "case is required"},
        {"run \"" + good + "\" --generation 1.2", 2, "--generation"},
        {"run \"" + good + "\" --profile late", 2, "--profile"},
        {"calculate", 2, "subcommand"},
    };
    for (const Row& row : rows) {
        const Outcome outcome = run(row.arguments);
        EXPECT_EQ(outcome.exitCode, row.exitCode) << row.arguments;
        EXPECT_NE(outcome.errors.find(row.errors), std::string::npos) << outcome.errors;
        EXPECT_EQ(outcome.output, "") << row.arguments;
    }
}

TEST_F(HostProgram, helps) {
    const Outcome help = run("run --help");
    EXPECT_EQ(help.exitCode, 0u);
    EXPECT_NE(help.output.find("ui-thread-and-worker: made on"), std::string::npos);
    const Outcome format = run("help-case");
    EXPECT_EQ(format.exitCode, 0u);
    EXPECT_NE(format.output.find("\"composition\""), std::string::npos) << format.output;
}

} // namespace

} // namespace solvane::host
