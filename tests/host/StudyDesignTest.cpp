// The points of a study: what users write, and the cases that come of it.
#include "cases/NumberText.h"
#include "cases/UnitOfMeasure.h"
#include "studies/Design.h"
#include "studies/Variation.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>

namespace solvane::host {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

/// Two feeds, the second by mass, and a unit with a parameter of each kind.
class Studies : public testing::Test {
protected:
    Studies() {
        flowsheet.compounds = {findCompound("methane"), findCompound("ethane"), findCompound("propane")};
        flowsheet.feeds = {
            {.name = "A", .temperature = 300, .pressure = 1e5, .flow = 3, .composition = {0.5, 0.3, 0.2}},
            {.name = "B",
             .temperature = 300,
             .vaporFraction = 0.5,
             .flow = 2,
             .composition = {0.5, 0.5, 0},
             .flowUnit = "t/h"}};
        parameters = {
            {{.name = "P", .dimensionality = parseUnit("Pa")->exponents},
             {.name = "n", .kind = ParameterKind::integer, .minimum = 1, .maximum = 50},
             {.name = "on", .kind = ParameterKind::boolean},
             {.name = "how", .kind = ParameterKind::text, .options = {"co", "counter"}, .restricted = true},
             {.name = "duty", .isInput = false}}};
        flowsheet.units = {{.parameters = {{"p", 5.0}}}};
    }

    bool make(std::vector<std::string> axes, Arrangement arrangement = Arrangement::grid,
              std::size_t count = 0, std::uint64_t seed = 1) {
        design = {};
        return makeDesign(variablesOf(flowsheet, parameters), {std::move(axes), arrangement, count, seed},
                          design, error);
    }
    std::vector<std::string> column(std::size_t axis) const {
        std::vector<std::string> texts;
        for (const Point& point : design.points)
            texts.push_back(point[axis]);
        return texts;
    }
    /// The first point's case; the error if there is none.
    bool varied() { return vary(flowsheet, design.axes, design.points.at(0), variation, error); }

    Case flowsheet;
    UnitParameters parameters;
    Design design;
    Variation variation;
    std::string error;
};

TEST_F(Studies, readRangesAndLists) {
    const struct {
        const char* axis;
        std::vector<std::string> points;
        const char* unit;
    } rows[] = {
        {"P=2e5:3e5:3", {"2e+05", "250000", "3e+05"}, "Pa"},
        {"p=2 bar:2.3 bar:4", {"2", "2.1", "2.1999999999999997", "2.3"}, "bar"},
        {"P=1 bar:100 bar:3:log", {"1", "10", "100"}, "bar"},
        {"P=7 bar:0.1 bar:2:log", {"7", "0.1"}, "bar"},
        {"A.temperature=20 degC, 30 degC", {"20", "30"}, "degC"},
        {"n=3:1:3", {"3", "2", "1"}, ""},
        {"on=true,false", {"true", "false"}, ""},
        {"how=counter", {"counter"}, ""},
        {"B.flow=1 kg/s", {"1"}, "kg/s"},
        {"A.x(Propane)=0.1", {"0.1"}, ""},
    };
    for (const auto& row : rows) {
        ASSERT_TRUE(make({row.axis})) << row.axis << error;
        EXPECT_EQ(column(0), row.points) << row.axis;
        EXPECT_EQ(design.axes[0].unit, row.unit) << row.axis;
    }
}

TEST_F(Studies, rejectWhatHasNoSense) {
    const struct {
        std::vector<std::string> axes;
        const char* message;
    } rows[] = {
        {{"Q=1"},
         "the variable \"Q\" is unknown; variables: P, n, on, how, A.temperature, A.pressure, A.flow, "
         "A.x(methane), "},
        {{"duty=1"}, "unknown"},            // an output
        {{"A.vaporFraction=1"}, "unknown"}, // not one of its two conditions
        {{"P"}, "not of the form"},
        {{"P=1:2"}, "needs a count"},
        {{"P=1:2:1"}, "whole number from 2"},
        {{"P=1:2:3:4"}, "FIRST:LAST:COUNT"},
        {{"P=5:5:3"}, "same value"},
        {{"P=0:5:3:log"}, "above 0"},
        {{"P=1 bar:2 K:3"}, "another unit"},
        {{"P=1 K"}, "wrong dimension"},
        {{"P=high"}, "not a number"},
        {{"P=inf"}, "not a number"},
        {{"n=1:4:3"}, "2.5 is not a whole number"},
        {{"n=51"}, "above the maximum"},
        {{"on=yes"}, "neither true nor false"},
        {{"how=cross"}, "not one of the options"},
        {{"A.temperature=0"}, "above 0"},
        {{"A.x(methane)=0.7", "A.x(ethane)=0.4"}, "sum to 1.1, above 1"},
        {{"B.x(methane)=0.2", "B.x(ethane)=0.2"}, "no other compound"},
        {{"P=1", "p=2"}, "given twice"},
    };
    for (const auto& row : rows) {
        EXPECT_FALSE(make(row.axes) && varied()) << row.axes[0];
        EXPECT_THAT(error, HasSubstr(row.message));
    }
    EXPECT_FALSE(make({"P=1:3:3", "n=1,2"}, Arrangement::zip));
    EXPECT_THAT(error, HasSubstr("\"P\" has 3, \"n\" has 2"));
    for (const char* axis : {"P=1,2", "P=1:3:3"}) {
        EXPECT_FALSE(make({axis}, Arrangement::random, 5));
        EXPECT_THAT(error, HasSubstr("a range FIRST:LAST without a count"));
    }
}

TEST_F(Studies, combineValues) {
    ASSERT_TRUE(make({"P=1,2", "n=1:3:3"})) << error;
    EXPECT_EQ(column(0), (std::vector<std::string>{"1", "1", "1", "2", "2", "2"}));
    EXPECT_EQ(column(1), (std::vector<std::string>{"1", "2", "3", "1", "2", "3"}));
    ASSERT_TRUE(make({"P=1,2,5", "n=1:3:3"}, Arrangement::zip)) << error;
    EXPECT_THAT(design.points, ElementsAre(Point{"1", "1"}, Point{"2", "2"}, Point{"5", "3"}));

    ASSERT_TRUE(readDesign(variablesOf(flowsheet, parameters), "P (bar),n,how\r\n1.5,2,co\r\n3,4,counter\r\n",
                           design = {}, error))
        << error;
    EXPECT_EQ(design.axes[0].unit, "bar");
    EXPECT_THAT(design.points, ElementsAre(Point{"1.5", "2", "co"}, Point{"3", "4", "counter"}));
    for (const char* csv : {"P\n", "P,n\n1\n", "P,Q\n1,2\n", "P (K)\n1\n"})
        EXPECT_FALSE(readDesign(variablesOf(flowsheet, parameters), csv, design = {}, error)) << csv;
}

// The expected fractions come from another implementation of the generator.
TEST_F(Studies, drawTheSameRandomPointsOnEveryMachine) {
    ASSERT_TRUE(make({"P=0:1"}, Arrangement::random, 3, 7)) << error;
    EXPECT_EQ(column(0),
              (std::vector<std::string>{"0.754385304152858", "0.9493012028926442", "0.11741428103451801"}));
}

TEST_F(Studies, spreadLatinPointsOverAllParts) {
    ASSERT_TRUE(make({"P=1:10000:log", "n=1:50", "A.temperature=300:400"}, Arrangement::latin, 10)) << error;
    for (const std::size_t axis : {0u, 2u}) {
        std::vector<int> parts;
        for (const std::string& text : column(axis))
            parts.push_back(static_cast<int>(axis == 0 ? std::log10(std::stod(text)) * 2.5
                                                       : (std::stod(text) - 300) / 10));
        std::ranges::sort(parts);
        EXPECT_THAT(parts, ElementsAre(0, 1, 2, 3, 4, 5, 6, 7, 8, 9));
    }
    EXPECT_TRUE(varied()) << error; // the whole numbers are such
    const auto former = design.points;
    ASSERT_TRUE(make({"P=1:10000:log", "n=1:50", "A.temperature=300:400"}, Arrangement::latin, 10, 2));
    EXPECT_NE(design.points, former);
}

TEST_F(Studies, changeFeedsAndParameters) {
    ASSERT_TRUE(make({"P=2 bar", "on=true", "A.x(methane)=0.8", "A.flow=3.6 kmol/h", "B.x(propane)=0.5"}) &&
                varied())
        << error;
    ASSERT_EQ(variation.parameters[0].size(), 2u);
    EXPECT_EQ(variation.parameters[0][0].value, ParameterValue(2e5)); // instead of the case's
    EXPECT_EQ(variation.parameters[0][1].value, ParameterValue(true));
    EXPECT_EQ(variation.feeds[0].flow, 1);
    EXPECT_THAT(variation.feeds[0].composition,
                ElementsAre(0.8, testing::DoubleEq(0.12), testing::DoubleEq(0.08)));
    EXPECT_THAT(variation.feeds[1].composition, ElementsAre(0.25, 0.25, 0.5));
    const auto mass = [&](const FeedStream& feed) {
        return feed.flow * molarMass(flowsheet.compounds, feed.composition);
    };
    EXPECT_DOUBLE_EQ(mass(variation.feeds[1]), mass(flowsheet.feeds[1]));
    ASSERT_TRUE(make({"A.flow=3.6 t/h", "A.x(methane)=1"}) && varied()) << error;
    EXPECT_DOUBLE_EQ(mass(variation.feeds[0]), 1);
}

TEST_F(Studies, sendEveryValueToAWorkerExactly) {
    ASSERT_TRUE(
        make({"P=0.1", "n=3", "on=false", "how=co", "A.temperature=300.00000000000006", "B.flow=1e-310"}) &&
        varied())
        << error;
    Case received = flowsheet;
    applyLine(variationLine(variation), received);
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_EQ(received.units[0].parameters.at(i).value, variation.parameters[0][i].value);
    for (std::size_t i = 0; i < 2; ++i) {
        EXPECT_EQ(received.feeds[i].temperature, variation.feeds[i].temperature);
        EXPECT_EQ(received.feeds[i].flow, variation.feeds[i].flow);
        EXPECT_EQ(received.feeds[i].composition, variation.feeds[i].composition);
    }
}

} // namespace

} // namespace solvane::host
