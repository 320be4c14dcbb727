// "SolvaneHost sweep" with the registered unit and engine.
#include "CaseFolder.h"
#include "Program.h"
#include "com/Text.h"
#include "results/CsvText.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace solvane::host {

namespace {

using testing::HasSubstr;

const std::wstring hostProgram = builtFile(L"SolvaneHost.exe");

class Sweeps : public testing::Test {
protected:
    Sweeps() { folder.write("case.json", caseText("1", "0.1")); }

    /// Fails above 1.5 bar; leaves an output unset at a small flow.
    static std::string caseText(const std::string& pressure, const std::string& flow) {
        return R"({"compounds": ["propane", "n-butane"], "feeds": [{"name": "F", "temperature": 300, "pressure": ")" +
               pressure + R"( bar", "flow": )" + flow +
               R"(, "composition": {"propane": 0.3, "n-butane": 0.7}}], "products": ["P"], "model": {
            "parameters": [{"name": "gain", "kind": "real", "mode": "input", "value": 0.7, "default": 0.7},
                           {"name": "duty", "kind": "real", "mode": "output", "dimensionality": "W"}],
            "script": ["F = getFeedProp(1, 'totalFlow'); p = getFeedProp(1, 'pressure');",
                "if p > 1.5e5; error('too much pressure'); end",
                "if F > 1; setParameter('duty', F/3); end",
                "setProduct(1, F*getParameter('gain'), getFeedProp(1, 'fraction'), 'temperature', 250,",
                "  'pressure', p/7);"]}})";
    }

    Outcome host(const std::wstring& command, const std::wstring& options = L"") {
        return Program(hostProgram + L" " + command + L" \"" + folder.path() + L"case.json\" " + options)
            .wait();
    }
    /// Five of the six points succeed; the last fails.
    Outcome sweep(const wchar_t* csv, const std::wstring& options = L"") {
        return host(L"sweep", L"--vary \"F.flow=0.1:3.3:3\" --vary \"F.pressure=1 bar,1.3 bar\" " + options +
                                  L" --csv \"" + folder.path() + csv + L"\"");
    }
    std::string bytes(const wchar_t* name) const { return solvane::readFile(folder.path() + name); }

    CaseFolder folder;
};

std::string cellOf(const std::vector<std::vector<std::string>>& table, std::size_t row,
                   const std::string& title) {
    const auto found = std::ranges::find(table.at(0), title);
    return found == table[0].end() ? "no column " + title
                                   : table.at(row).at(static_cast<std::size_t>(found - table[0].begin()));
}

TEST_F(Sweeps, giveEachPointTheValuesOfARun) {
    const Outcome one = sweep(L"one.csv", L"--jobs 1 --json \"" + folder.path() + L"one.json\"");
    EXPECT_EQ(one.exitCode, 0u) << one.printed;
    EXPECT_THAT(one.printed, testing::ContainsRegex("6 of 6 points, 0 failed, \\d.* per second\n"));
    EXPECT_THAT(bytes(L"one.json"), HasSubstr("\"unit\": \"bar\",\n   \"varied\": true"));
    EXPECT_EQ(sweep(L"two.csv", L"--jobs 2").exitCode, 0u);
    EXPECT_EQ(bytes(L"two.csv"), bytes(L"one.csv"));

    const auto table = readCsv(bytes(L"one.csv"));
    ASSERT_EQ(table.size(), 7u);
    for (const std::size_t row : {1u, 4u, 6u}) {
        folder.write("case.json",
                     caseText(cellOf(table, row, "F.pressure (bar)"), cellOf(table, row, "F.flow (mol/s)")));
        const std::wstring run = folder.path() + L"run";
        EXPECT_EQ(host(L"run", L"--csv \"" + run + L".csv\" --json \"" + run + L".json\"").exitCode, 0u);
        const auto streams = readCsv(bytes(L"run.csv"));
        for (const char* title : {"temperature (K)", "pressure (bar)", "flow (mol/s)"})
            EXPECT_EQ(cellOf(table, row, std::string("P.") + title), cellOf(streams, 2, title));
        EXPECT_EQ(cellOf(table, row, "P.vaporFraction"), cellOf(streams, 2, "vapour fraction"));
        EXPECT_EQ(cellOf(table, row, "F.x(propane)"), cellOf(streams, 1, "x propane"));
        const std::string duty = cellOf(table, row, "duty (kW)");
        EXPECT_EQ(duty.empty(), row == 1) << "no value of an earlier point";
        EXPECT_THAT(bytes(L"run.json"), HasSubstr(duty.empty() ? "\"duty\": null" : "\"duty\": "));
    }
}

TEST_F(Sweeps, goOnAfterFailedPointsAndAfterTheirOwnEnd) {
    const std::wstring all = L"--vary \"F.pressure=1 bar,1.6 bar,1.25 bar,2 bar,1.5 bar\" --jobs 1 --csv \"" +
                             folder.path() + L"t.csv\" ";
    const Outcome first = host(L"sweep", all);
    EXPECT_EQ(first.exitCode, 1u) << first.printed;
    EXPECT_THAT(first.printed, HasSubstr("5 of 5 points, 2 failed"));
    const std::string table = bytes(L"t.csv");
    EXPECT_THAT(table, HasSubstr("failed,script:2:15: too much pressure\r\n"));

    // The study was killed in its third line. What it had is kept, also if it is not what comes of it now.
    std::string cut = table.substr(0, table.find("\r\n3,") + 9);
    cut.replace(cut.find(",ok,"), 4, ",ok,of old");
    folder.write("t.csv", cut);
    const Outcome rest = host(L"sweep", all + L"--resume");
    EXPECT_THAT(rest.printed, HasSubstr("3 of 3 points, 1 failed"));
    EXPECT_EQ(rest.exitCode, 1u);
    std::string resumed = bytes(L"t.csv");
    const std::size_t old = resumed.find("of old");
    ASSERT_NE(old, std::string::npos) << resumed;
    EXPECT_EQ(resumed.erase(old, 6), table);

    // A script that has been mended; the points that failed are calculated again.
    std::string mended = caseText("1", "0.1");
    mended.replace(mended.find("1.5e5"), 5, "1.9e5");
    folder.write("case.json", mended);
    EXPECT_THAT(host(L"sweep", all + L"--resume").printed, HasSubstr("0 of 0 points, 0 failed"));
    EXPECT_THAT(host(L"sweep", all + L"--resume --retry").printed, HasSubstr("2 of 2 points, 1 failed"));
    const auto rows = readCsv(bytes(L"t.csv"));
    ASSERT_EQ(rows.size(), 6u);
    for (std::size_t i = 1; i < rows.size(); ++i)
        EXPECT_EQ(rows[i][0], std::to_string(i));
    EXPECT_EQ(rows[1].back(), "of old");
    const Outcome other = host(L"sweep", L"--vary F.flow=1,2 --resume --csv \"" + folder.path() + L"t.csv\"");
    EXPECT_EQ(other.exitCode, 2u);
    EXPECT_THAT(other.printed, HasSubstr("another study"));
}

TEST_F(Sweeps, fallIntoShards) {
    EXPECT_EQ(sweep(L"whole.csv").exitCode, 0u);
    EXPECT_EQ(sweep(L"part 1.csv", L"--shard 1/2 --jobs 1").exitCode, 0u);
    EXPECT_EQ(sweep(L"part 2.csv", L"--shard 2/2 --jobs 1").exitCode, 0u);
    const Outcome merged = Program(hostProgram + L" sweep merge \"" + folder.path() + L"merged.csv\" \"" +
                                   folder.path() + L"part*.csv\"")
                               .wait();
    EXPECT_EQ(merged.exitCode, 0u) << merged.printed;
    EXPECT_EQ(bytes(L"merged.csv"), bytes(L"whole.csv"));
}

TEST_F(Sweeps, areDrawnByGnuplot) {
    const std::wstring picture = L"--plot \"" + folder.path() + L"t.svg\" ";
    const Outcome drawn = sweep(L"t.csv", picture + L"--plot-of P.temperature --plot-script");
    if (drawn.printed.find("gnuplot was not found") != std::string::npos)
        GTEST_SKIP() << drawn.printed;
    EXPECT_EQ(drawn.exitCode, 0u) << drawn.printed;
    for (const char* text : {"<?xml", "P.temperature (K)", "F.flow (mol/s)", "F.pressure (bar)", "</svg>"})
        EXPECT_THAT(bytes(L"t.svg"), HasSubstr(text));
    EXPECT_THAT(bytes(L"t.svg.gp"), HasSubstr("plot $line1"));
}

TEST_F(Sweeps, rejectBadUsageBeforeAnythingRuns) {
    const struct {
        const wchar_t* options;
        const char* message;
    } rows[] = {
        {L"--vary Q=1", "variables: gain, F.temperature, F.pressure, F.flow"},
        {L"--vary gain=1 --shard 3/2", "--shard: expected PART/COUNT"},
        {L"--vary gain=1 --zip --latin 3", "--zip"},
        {L"--vary gain=1 --resume", "--csv"},
        {L"", "--vary or --design is required"},
        {L"--design none.csv", "none.csv does not exist"},
    };
    for (const auto& row : rows) {
        const Outcome outcome = host(L"sweep", row.options);
        EXPECT_EQ(outcome.exitCode, 2u) << row.message;
        EXPECT_THAT(outcome.printed, HasSubstr(row.message));
        EXPECT_THAT(outcome.printed, testing::Not(HasSubstr("point,points"))) << "a table";
    }
}

} // namespace

} // namespace solvane::host
