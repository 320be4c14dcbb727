// Recycles of a mixer and a splitter, with the registered unit and its engine.
#include "com/Apartment.h"
#include "flowsheet/Flowsheet.h"

#include <gtest/gtest.h>

namespace solvane::host {

namespace {

constexpr char mixer[] = R"(
flows = 0;
for feed = 1:getFeedCount; flows = flows + getFeedProp(feed, 'flow'); end
if sum(flows) > getParameter('most'); error('it floods'); end
setProduct(1, sum(flows), flows/sum(flows), 'temperature', 300, 'pressure', 1e5);
)";

constexpr char splitter[] = R"(
flow = getFeedProp(1, 'totalFlow');
last = getProductCount;
back = getParameter('back');
for product = 1:last
    share = back/(last - 1);
    if product == last; share = 1 - back; end
    setProduct(product, share*flow, getFeedProp(1, 'fraction'), 'temperature', 290, 'pressure', 1e5);
end
)";

class Recycles : public testing::Test {
protected:
    Recycles() {
        const auto model = [](const char* script, const char* parameter, double value) {
            UnitModel result;
            result.parameters = {{.name = parameter, .value = value}};
            result.script.bytes = script;
            return result;
        };
        flowsheet.compounds = {findCompound("methane"), findCompound("propane")};
        flowsheet.isFlowsheet = true;
        flowsheet.convergence.tolerance = 1e-11;
        flowsheet.feeds = {
            {.name = "in", .temperature = 300, .pressure = 1e5, .flow = 3, .composition = {0.25, 0.75}}};
        flowsheet.units = {
            {.name = "Mixer",
             .model = model(mixer, "most", 1e3),
             .feeds = {{"in", "in"}},
             .products = {{"mixed", "mixed"}}},
            {.name = "Splitter", .model = model(splitter, "back", 0), .feeds = {{"f", "mixed"}}}};
        addTear("back 1");
    }

    void addTear(const std::string& name) {
        FeedStream& guess = flowsheet.tears.emplace_back(flowsheet.feeds[0]);
        guess.name = name;
        guess.flow = 0;
        flowsheet.units[0].feeds.push_back({name, name});
        std::vector<PortConnection>& products = flowsheet.units[1].products;
        if (!products.empty())
            products.pop_back();
        products.push_back({name, name});
        products.push_back({"out", "out"});
    }

    bool run(FixedPointMethod method, double back) {
        flowsheet.convergence.method = method;
        flowsheet.units[1].parameters = {{"back", back}};
        return runCase(flowsheet, [](std::string_view, std::string_view) {}, results, error);
    }

    double flow(const char* name) const {
        const auto found = std::ranges::find(results.streams, name, &StreamResult::name);
        return found == results.streams.end() ? -1 : found->totalFlow;
    }

    const Apartment apartment{COINIT_APARTMENTTHREADED};
    Case flowsheet;
    RunResults results;
    std::string error;
};

TEST_F(Recycles, convergeByEachMethod) {
    for (const char* added : {"", "back 2"}) {
        if (*added)
            addTear(added);
        for (const FixedPointMethodName& method : fixedPointMethods) {
            ASSERT_TRUE(run(method.method, 0.2)) << method.name << ": " << error;
            EXPECT_NEAR(flow("mixed"), 3 / 0.8, 1e-9) << method.name;
            EXPECT_NEAR(flow("out"), 3, 1e-9) << method.name;
            EXPECT_NEAR(results.balances.at(0).moles.in, 3 / 0.8, 1e-9) << method.name;
            EXPECT_EQ(results.balances.size(), 2u);
            ASSERT_TRUE(results.convergence && results.convergence->converged);
            EXPECT_EQ(results.convergence->method, method.name);
            EXPECT_LE(results.convergence->iterations.size(),
                      method.method == FixedPointMethod::direct ? 20u : 8u);
        }
    }
}

TEST_F(Recycles, saySoIfTheyDoNotConverge) {
    flowsheet.convergence.limit = 4;
    EXPECT_FALSE(run(FixedPointMethod::wegstein, 1));
    EXPECT_TRUE(error.starts_with("The recycle does not converge: after 4 iterations the flow of propane of "
                                  "the stream \"back 1\" still changes by "))
        << error;
    EXPECT_EQ(results.streams.size(), 4u);
    ASSERT_TRUE(results.convergence);
    EXPECT_FALSE(results.convergence->converged);
    EXPECT_EQ(results.convergence->iterations.size(), 4u);

    flowsheet.units[0].parameters = {{"most", 8.0}};
    EXPECT_FALSE(run(FixedPointMethod::direct, 1));
    EXPECT_TRUE(error.starts_with("Unit \"Mixer\": In iteration 3: Calculate failed: it floods")) << error;
    EXPECT_EQ(results.convergence->iterations.size(), 2u);
}

} // namespace

} // namespace solvane::host
