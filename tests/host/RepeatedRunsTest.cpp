// A flowsheet that runs again gives what a new one gives, with the registered unit and its engine.
#include "com/Apartment.h"
#include "com/Module.h"
#include "flowsheet/Flowsheet.h"
#include "flowsheet/ModelStream.h"
#include "results/ResultsJson.h"

#include <gtest/gtest.h>

namespace solvane::host {

namespace {

ComModule module;

/// Leaves what could reach the next run: a persistent variable, a changed file, an output and a report that
/// only some runs set.
constexpr char script[] = R"(
persistent count
if isempty(count); count = 0; end
count = count + 1;
gain = load('gain.txt');
fid = fopen('gain.txt', 'w'); fprintf(fid, '%g', gain/2); fclose(fid);
T = getParameter('T');
if T > 450; builtin('exit'); end
if T > 400; error('too hot'); end
if T > 350; setParameter('hot', count); setReport('R', 'hot'); end
F = getFeedProp(1, 'totalFlow');
setProduct(1, F*gain, getFeedProp(1, 'fraction'), 'temperature', T, 'pressure', getFeedProp(1, 'pressure'));
)";

Case madeCase() {
    UnitModel model;
    model.parameters = {{.name = "T", .value = 310.0}, {.name = "hot", .isInput = false}};
    model.reports = {"R"};
    model.script.bytes = script;
    model.files = {{.name = "gain.txt", .bytes = "0.5"}};
    Case flowsheet;
    flowsheet.compounds = {findCompound("methane"), findCompound("propane")};
    flowsheet.feeds = {
        {.name = "in", .temperature = 300, .pressure = 1e5, .flow = 3, .composition = {0.25, 0.75}}};
    flowsheet.units = {{.model = model, .feeds = {{"in", "in"}}, .products = {{"out", "out"}}}};
    return flowsheet;
}

Case withModelFile(Case flowsheet) {
    UnitSession session(flowsheet.units[0], flowsheet.profile);
    ModelFile file{.name = "model.svm"};
    std::string error;
    EXPECT_TRUE(session.start([](std::string_view) {}, error) &&
                saveModelFile(session.unit(), file.bytes, error))
        << error;
    flowsheet.units[0].model = file;
    return flowsheet;
}

void ignore(std::string_view, std::string_view) {}

TEST(RepeatedRuns, equalFirstRunsOfNewFlowsheets) {
    const Apartment apartment(COINIT_APARTMENTTHREADED);
    for (const Case& flowsheet : {madeCase(), withModelFile(madeCase())}) {
        Flowsheet repeated(flowsheet, ignore);
        std::vector<Case> points(7, flowsheet);
        points[1].units[0].parameters = {{"T", 380.0}};
        points[2].units[0].parameters = {{"T", 420.0}}; // the script fails
        points[3].feeds[0].temperature = 250;
        points[4].feeds[0].temperature = 1e6;           // the feed fails
        points[5].units[0].parameters = {{"T", 460.0}}; // the engine ends
        for (std::size_t i = 0; i < points.size(); ++i) {
            RunResults again, fresh;
            std::string error, freshError;
            EXPECT_EQ(repeated.run(points[i], again, error), runCase(points[i], ignore, fresh, freshError));
            EXPECT_EQ(error, freshError);
            EXPECT_EQ(again.failure.has_value(), i == 2 || i == 4 || i == 5) << error;
            EXPECT_EQ(resultsJson(again), resultsJson(fresh)) << "point " << i;
        }
    }
}

} // namespace

} // namespace solvane::host
