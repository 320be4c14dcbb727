// The table of a study: rows in order, an earlier study's rows, the parts of several shards.
#include "studies/StudyTable.h"
#include "cases/UnitOfMeasure.h"
#include "studies/ProgressText.h"
#include "studies/StudyPlot.h"

#include <gmock/gmock.h>

#include <nlohmann/json.hpp>

namespace solvane::host {

namespace {

using testing::HasSubstr;
using Json = nlohmann::ordered_json;

class StudyTables : public testing::Test {
protected:
    StudyTables() {
        flowsheet.compounds = {findCompound("methane")};
        flowsheet.feeds = {
            {.name = "A, B", .temperature = 300, .pressure = 1e5, .flow = 3, .composition = {1}}};
        flowsheet.units = {{.name = "Pump", .products = {{"out", "C"}}}};
        parameters = {{{.name = "P"},
                       {.name = "duty", .isInput = false, .dimensionality = parseUnit("W")->exponents},
                       {.name = "note", .kind = ParameterKind::text, .isInput = false}}};
        std::string error;
        EXPECT_TRUE(makeDesign(variablesOf(flowsheet, parameters), {.axes = {"P=1,2,3", "A, B.flow=5"}},
                               design, error))
            << error;
        table.emplace(flowsheet, parameters, design, TableUnits());
    }

    static Json results(const char* note) {
        const Json stream{{"temperature", 300.5},
                          {"pressure", 1e5},
                          {"totalFlow", 0.1},
                          {"vaporFraction", nullptr},
                          {"fraction", {{"methane", 1.0}}}};
        Json feed = stream, product = stream;
        feed["name"] = "A, B";
        product["name"] = "C";
        return {{"ok", true},
                {"streams", {feed, product}},
                {"parameters", {{"P", 2.0}, {"duty", 1500.0}, {"note", note}}}};
    }
    std::string wholeTable() const {
        return table->heading() + table->line(0, results("x")) + table->line(1, failure()) +
               table->line(2, results("y"));
    }
    static Json failure() { return {{"error", {{"unit", "Pump"}, {"message", "too\r\nhot"}}}}; }

    Case flowsheet;
    UnitParameters parameters;
    Design design;
    std::optional<StudyTable> table;
};

TEST_F(StudyTables, showWhatWasVariedAndWhatCameOfIt) {
    EXPECT_EQ(table->heading(),
              "point,points,P,\"A, B.flow (mol/s)\",duty (kW),note,\"A, B.temperature (K)\","
              "\"A, B.pressure (bar)\",\"A, B.vaporFraction\",\"A, B.x(methane)\",C.temperature (K),"
              "C.pressure (bar),C.flow (mol/s),C.vaporFraction,C.x(methane),status,message\r\n");
    EXPECT_EQ(table->line(1, results("say \"a\nb\"")),
              "2,3,2,5,1.5,\"say \"\"a b\"\"\",300.5,1,,1,300.5,1,0.1,,1,ok,\r\n");
    EXPECT_EQ(table->line(2, failure()), "3,3,3,5,,,,,,,,,,,,failed,too hot\r\n");
    EXPECT_TRUE(hasFailed(table->line(2, failure())));
    Json inScript = failure();
    inScript["error"]["script"] = {{"file", "pump.m"}, {"line", 3}, {"message", "'x' undefined"}};
    EXPECT_EQ(table->line(2, inScript), "3,3,3,5,,,,,,,,,,,,failed,pump.m:3: 'x' undefined\r\n");
    EXPECT_FALSE(hasFailed(table->line(1, results("failed"))));

    const Json json = Json::parse(tableJson(table->columns(), wholeTable()));
    EXPECT_EQ(json["columns"][4], Json({{"name", "duty"}, {"unit", "kW"}}));
    EXPECT_EQ(json["columns"].size(), json["rows"][1].size());
    EXPECT_EQ(json["rows"][0][4], 1.5);
    EXPECT_EQ(json["rows"][1][4], nullptr);
    EXPECT_EQ(json["rows"][1].back(), "too hot");
}

TEST_F(StudyTables, keepTheRowsOfAnEarlierStudy) {
    const std::string whole = wholeTable();
    std::map<std::size_t, std::string> lines;
    std::string error;
    ASSERT_TRUE(table->readLines("", lines, error));
    EXPECT_TRUE(lines.empty());
    ASSERT_TRUE(table->readLines(whole.substr(0, whole.size() - 1), lines, error)) << error;
    EXPECT_EQ(lines.size(), 2u) << "the last line is not complete";
    EXPECT_EQ(lines[1], table->line(1, failure()));

    const std::string heading = table->heading();
    for (const std::string& other :
         {"x" + heading, heading + "1,4,1,5" + whole.substr(heading.size() + 7),
          heading + "4,3,1,5" + whole.substr(heading.size() + 7),
          heading + "1,3,1,6" + whole.substr(heading.size() + 7), heading + "1,3,1,5\r\n"})
        EXPECT_FALSE(table->readLines(other, lines, error)) << other;
    EXPECT_THAT(error, HasSubstr("another study"));
}

TEST_F(StudyTables, mergeShards) {
    const std::string heading = table->heading();
    const std::string first = table->line(0, results("x")), second = table->line(1, failure()),
                      third = table->line(2, results("y"));
    std::string merged, error;
    ASSERT_TRUE(mergeTables({heading + second, heading, heading + first + third}, merged, error)) << error;
    EXPECT_EQ(merged, wholeTable());
    const struct {
        std::vector<std::string> tables;
        const char* message;
    } rows[] = {
        {{heading + first, heading + third}, "the point 2 of 3 is missing"},
        {{heading + first + second, heading + second + third}, "the point 2 is there twice"},
        {{heading + first, "point,points,Q\r\n2,3,1\r\n"}, "columns differ"},
        {{heading + first, heading + "2,4" + second.substr(3)}, "counts of points differ"},
        {{heading}, "no points"},
        {{"stream,flow\r\n"}, "not the table of a study"},
    };
    for (const auto& row : rows) {
        EXPECT_FALSE(mergeTables(row.tables, merged, error)) << row.message;
        EXPECT_THAT(error, HasSubstr(row.message));
    }
}

TEST_F(StudyTables, areWrittenInTheOrderOfPoints) {
    std::string written;
    bool canWrite = true;
    const auto write = [&](std::size_t point, const std::string& line) {
        written += std::to_string(point) + line;
        return canWrite;
    };
    StudyRows rows({2, 4, 6}, write);
    EXPECT_EQ(rows.next(), 2u);
    EXPECT_EQ(rows.next(), 4u);
    rows.put(4, "b,failed,");
    EXPECT_EQ(written, "");
    rows.put(2, "a");
    EXPECT_EQ(written, "2a4b,failed,");
    EXPECT_EQ(rows.progress().failed, 1u);
    EXPECT_EQ(rows.next(), 6u);
    EXPECT_EQ(rows.next(), std::nullopt);
    EXPECT_FALSE(rows.waitFor(std::chrono::milliseconds(1)));
    canWrite = false;
    rows.put(6, "c");
    EXPECT_TRUE(rows.waitFor(std::chrono::milliseconds(1)));
    EXPECT_FALSE(rows.isComplete());

    StudyRows stopped({0, 1}, write);
    stopped.stop();
    EXPECT_EQ(stopped.next(), std::nullopt);
}

TEST_F(StudyTables, arePlottedInTheShapeOfTheDesign) {
    const struct {
        std::vector<std::string> axes;
        std::vector<const char*> parts; // of the script, for the first point failed and the last 7.5 kW
    } rows[] = {
        {{"P=3,1,2"},
         {"set xlabel 'P'\nset ylabel 'duty (kW)'\n", "EOD\n1 7.5\n2 7.5\nEOD",
          "using 1:2 with linespoints"}},
        {{"P=1:100:3:log", "A, B.flow=5,6"},
         {"set logscale x", "title 'A, B.flow (mol/s)'", "$line1 << EOD\n10 7.5\n100 7.5\nEOD",
          "title '5', $line2", "title '6'"}},
        {{"P=1,2,3,4,5,6,7,8,9", "A, B.flow=1:9:9"},
         {"set ylabel 'A, B.flow (mol/s)'\nset cblabel 'duty (kW)'", "EOD\n1 1 NaN\n1 2 7.5\n", "\n\n2 1 7.5",
          "set contour"}},
        {{"note=x,y", "P=1,2"}, {"set xlabel 'P'", "title 'x'", "$line1 << EOD\n2 7.5\nEOD"}},
    };
    parameters[0].push_back({.name = "note", .kind = ParameterKind::text});
    std::string error;
    StudyPlot plot;
    for (const auto& row : rows) {
        design = {};
        ASSERT_TRUE(makeDesign(variablesOf(flowsheet, parameters), {.axes = row.axes}, design, error))
            << error;
        const StudyTable plotted(flowsheet, parameters, design, TableUnits());
        Json good = results("x");
        good["parameters"]["duty"] = 7500.0;
        std::string csv = plotted.heading() + plotted.line(0, failure());
        for (std::size_t i = 1; i < design.points.size(); ++i)
            csv += plotted.line(i, good);
        ASSERT_TRUE(choosePlot(plotted, design, "", "a.svg", plot, error)) << error;
        const std::string script = plotScript(plotted, design, csv, plot);
        for (const char* part : row.parts)
            EXPECT_THAT(script, HasSubstr(part));
    }

    EXPECT_TRUE(choosePlot(*table, design, "c.Pressure", "a.png", plot, error));
    EXPECT_EQ(table->columns()[plot.column].name, "C.pressure");
    EXPECT_FALSE(choosePlot(*table, design, "P", "a.png", plot, error));
    EXPECT_THAT(error, HasSubstr("\"P\" is unknown; results: duty, note, A, B.temperature"));
    EXPECT_FALSE(choosePlot(*table, design, "duty", "a.pdf", plot, error));
    EXPECT_THAT(error, HasSubstr(".svg or .png"));
    design.axes.resize(1); // the text
    EXPECT_FALSE(choosePlot(*table, design, "duty", "a.svg", plot, error));
    EXPECT_THAT(error, HasSubstr("no variable"));
    design.axes.resize(3);
    EXPECT_FALSE(choosePlot(*table, design, "duty", "a.svg", plot, error));
    EXPECT_THAT(error, HasSubstr("the study has 3"));
}

TEST(ProgressTexts, sayHowLongItTakes) {
    EXPECT_EQ(progressText({.done = 0, .failed = 0, .total = 8}, 3),
              "[....................] 0 of 8 points, 0 failed");
    EXPECT_EQ(progressText({.done = 2, .failed = 1, .total = 8}, 4),
              "[#####...............] 2 of 8 points, 1 failed, 0.5 per second, 12 s left");
    EXPECT_THAT(progressText({.done = 1, .failed = 0, .total = 1001}, 1), testing::EndsWith("17 min left"));
    EXPECT_THAT(progressText({.done = 1, .failed = 0, .total = 36001}, 1), testing::EndsWith("10.0 h left"));
    EXPECT_THAT(progressText({.done = 8, .failed = 0, .total = 8}, 4), testing::EndsWith("2 per second"));
}

} // namespace

} // namespace solvane::host
