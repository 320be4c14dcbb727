// The whole road: the unit, the engine that is registered as Matlab, the gateway in it, real scripts, and
// the sample host's materials.

#include "DiagnosticContext.h"
#include "HostedUnit.h"
#include "ModelBag.h"
#include "UnitModule.h"
#include "com/Module.h"
#include "com/Text.h"
#include "materials/Material.h"

#include <gmock/gmock.h>

namespace solvane {

namespace {

using host::Generation;
using host::Place;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

// The materials are objects of this program.
ComModule thisProgram;

constexpr auto capeFailure = static_cast<HRESULT>(0x80040501);

const std::vector<double>& feedComposition() {
    static const std::vector<double> composition{0.5, 0.3, 0.2};
    return composition;
}
constexpr double feedFlow = 100;        // mol/s
constexpr double feedTemperature = 300; // K
constexpr double feedPressure = 2e6;    // Pa

std::shared_ptr<const host::PropertyPackage> propertyPackage() {
    std::vector<const host::Compound*> compounds;
    for (const char* name : {"methane", "propane", "n-pentane"})
        compounds.push_back(host::findCompound(name));
    return std::make_shared<const host::PropertyPackage>(compounds);
}

/// A stream of the host and the material that shows it.
struct Stream {
    explicit Stream(Generation generation)
        : state(std::make_shared<host::StreamState>(propertyPackage())),
          material(host::createMaterial(generation, state, L"stream")) {}

    double value(const host::StreamProperty& property) const {
        host::Failure failure;
        std::vector<double> values;
        if (!state->get(Place::overall, property, values, failure))
            state->calculate(Place::overall, property, failure);
        EXPECT_TRUE(state->get(Place::overall, property, values, failure)) << narrow(failure.text);
        return values.empty() ? 0 : values.front();
    }
    std::vector<double> fractions() const {
        host::Failure failure;
        std::vector<double> values;
        state->get(Place::overall, host::fractionProperty, values, failure);
        return values;
    }
    double enthalpyFlow() const { return value(host::totalFlowProperty) * value(host::enthalpyProperty); }

    std::shared_ptr<host::StreamState> state;
    ComRef<IDispatch> material;
};

void flashFeed(Stream& feed) {
    host::Failure failure;
    auto& state = *feed.state;
    const auto set = [&](const host::StreamProperty& property, std::span<const double> values) {
        ASSERT_TRUE(state.set(Place::overall, property, values, failure)) << narrow(failure.text);
    };
    set(host::totalFlowProperty, std::span(&feedFlow, 1));
    set(host::fractionProperty, feedComposition());
    set(host::temperatureProperty, std::span(&feedTemperature, 1));
    set(host::pressureProperty, std::span(&feedPressure, 1));
    ASSERT_TRUE(state.flash({&host::temperatureProperty, Place::overall},
                            {&host::pressureProperty, Place::overall}, failure))
        << narrow(failure.text);
}

class OctaveRun : public testing::Test {
protected:
    OctaveRun() { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
    ~OctaveRun() override { CoUninitialize(); }

    static HostedUnit createUnit(const UnitModule& module, ModelBag& bag) {
        const HostedUnit unit(module);
        EXPECT_EQ(unit.as<ICapeUtilities>()->Initialize(), S_OK) << narrow(unit.errorDescription());
        EXPECT_EQ(unit.load(bag), S_OK);
        return unit;
    }
    HostedUnit createUnit(ModelBag& bag) const { return createUnit(module, bag); }

    /// Gives the unit another script.
    static void rewrite(const HostedUnit& unit, ModelBag& bag, const std::string& script) {
        ModelBag another;
        another.values = bag.values;
        another.script(script);
        EXPECT_EQ(unit.load(another), S_OK);
    }

    const UnitModule module;
};

class OctaveFlash : public OctaveRun, public testing::WithParamInterface<Generation> {};

INSTANTIATE_TEST_SUITE_P(Generations, OctaveFlash, testing::Values(Generation::v11, Generation::v10),
                         [](const auto& row) { return row.param == Generation::v11 ? "v11" : "v10"; });

constexpr char drumScript[] = R"(
T = getParameter('temperature'); P = getFeedProp(1, 'pressure');
flow = getFeedProp(1, 'totalFlow'); X = getFeedProp(1, 'fraction');
[phases, fractions, Y] = flashEquilibrium(X, 'temperature', T, 'pressure', P);
vapor = strcmpi(phases, 'vapor');
setProduct(1, flow*fractions(vapor), Y(:,vapor), 'temperature', T, 'pressure', P);
setProduct(2, flow*fractions(~vapor), Y(:,~vapor), 'pressure', P, 'temperature', T);
out = flashProperty(X, 'temperature', T, 'pressure', P, 'enthalpy');
in = flashProperty(X, 'temperature', getFeedProp(1, 'temperature'), 'pressure', P, 'enthalpy');
setParameter('duty', scaled(flow*(out - in)));
setParameter('done', true);
setReport('Facts', sprintf('%s %d %d %s|%s', getUnitName(), getFeedCount(), getProductCount(), ...
          getPropertyUnit('enthalpy'), strtrim(fileread('note.txt'))));
logMessage('drum calculated');
fprintf('%d compounds, first %s\n', nComp, compNames{1});
)";

TEST_P(OctaveFlash, aDrumIsCalculatedFromFeedToProducts) {
    ModelBag bag;
    bag.feeds({L"Feed"})
        .products({L"Vapor", L"Liquid"})
        .reports({L"Facts"})
        .parameter(L"temperature", L"real", Variant(260.0))
        .parameter(L"duty", L"real", Variant(0.0))
        .parameter(L"done", L"bool", Variant(false))
        .file("scaled.m", "function y = scaled(x)\ny = x/1000;\n")
        .file("note.txt", "from a file")
        .script(drumScript);
    DiagnosticContext context;
    const HostedUnit unit = createUnit(bag);
    unit.as<ICapeIdentification>()->put_ComponentName(Bstr(L"D-101").get());
    ASSERT_EQ(unit.as<ICapeUtilities>()->put_simulationContext(&context), S_OK);
    Stream feed(GetParam()), vapor(GetParam()), liquid(GetParam());
    flashFeed(feed);
    ASSERT_EQ(unit.connect(L"Feed", feed.material.get()), S_OK);
    ASSERT_EQ(unit.connect(L"Vapor", vapor.material.get()), S_OK);
    ASSERT_EQ(unit.connect(L"Liquid", liquid.material.get()), S_OK);

    ASSERT_EQ(unit.calculate(), S_OK) << narrow(unit.errorDescription());

    const double vaporFlow = vapor.value(host::totalFlowProperty);
    const double liquidFlow = liquid.value(host::totalFlowProperty);
    EXPECT_GT(vaporFlow, 0);
    EXPECT_GT(liquidFlow, 0);
    EXPECT_NEAR(vaporFlow + liquidFlow, feedFlow, 1e-6);
    for (std::size_t i = 0; i < feedComposition().size(); ++i)
        EXPECT_NEAR(vaporFlow * vapor.fractions()[i] + liquidFlow * liquid.fractions()[i],
                    feedFlow * feedComposition()[i], 1e-6);
    EXPECT_GT(vapor.fractions()[0], liquid.fractions()[0]); // methane
    EXPECT_DOUBLE_EQ(vapor.value(host::temperatureProperty), 260);
    EXPECT_DOUBLE_EQ(liquid.value(host::pressureProperty), feedPressure);
    // The script's balance, in kW, is the streams'.
    const double duty = vapor.enthalpyFlow() + liquid.enthalpyFlow() - feed.enthalpyFlow();
    EXPECT_NEAR(unit.parameter(L"duty").real(), duty / 1000, std::abs(duty) * 1e-8);
    EXPECT_LT(duty, 0);
    EXPECT_EQ(unit.parameter(L"done").boolean(), VARIANT_TRUE);

    const std::wstring facts = unit.report(L"Facts");
    EXPECT_THAT(narrow(facts), StartsWith("D-101 1 2 "));
    EXPECT_THAT(narrow(facts), EndsWith("|from a file"));
    EXPECT_EQ(context.lines, std::vector<std::wstring>{L"drum calculated"});
    EXPECT_EQ(unit.output(), L"MATLAB output:\n3 compounds, first methane\nMATLAB done\n");
    unit.as<ICapeUtilities>()->put_simulationContext(nullptr);
}

TEST_F(OctaveRun, errorsOfAScriptReachTheHost) {
    ModelBag bag;
    const HostedUnit unit = createUnit(bag.script(""));
    const struct {
        const char* script;
        const char* error;
    } cases[] = {
        {"x = 1;\ny = nosuchthing + x;\n", "'nosuchthing' undefined near line 4"},
        {"error(\"two\\n  lines\");\n", "two, lines"},
        {"getParameter('Duty');\n", "Invalid parameter name: Duty"},
        {"getFeedProp(1, 'temperature');\n", "port number out of range for getFeedProp"},
        {"getCompoundConstant('molecularWeight');\n", "No calculation material available"},
        {"x = [1 2\ny = );\n", "parse error"},
    };
    for (const auto& row : cases) {
        rewrite(unit, bag, row.script);
        EXPECT_EQ(unit.calculate(), capeFailure) << row.script;
        EXPECT_THAT(narrow(unit.errorDescription()), HasSubstr(row.error)) << row.script;
        EXPECT_THAT(narrow(unit.errorDescription()), Not(HasSubstr("\n")));
        EXPECT_THAT(narrow(unit.output()), StartsWith("MATLAB output:\n"));
    }
    rewrite(unit, bag, "try; getParameter('Duty'); catch; disp('caught'); end\n");
    EXPECT_EQ(unit.calculate(), S_OK);
    EXPECT_EQ(unit.output(), L"MATLAB output:\ncaught\nMATLAB done\n");
}

TEST_F(OctaveRun, variablesOfARunDoNotReachTheNext) {
    ModelBag bag;
    const HostedUnit unit = createUnit(bag.script("evalin('base', 'left = 1;');\n"));
    ASSERT_EQ(unit.calculate(), S_OK);
    rewrite(unit, bag, "disp(evalin('base', 'exist(''left'')'));\n");
    ASSERT_EQ(unit.calculate(), S_OK);
    EXPECT_EQ(unit.output(), L"MATLAB output:\n0\nMATLAB done\n");
}

TEST_F(OctaveRun, echoShowsTheScriptsLinesAndNotWhatItCalls) {
    ModelBag bag;
    bag.values[L"info level"] = Variant(LONG{1});
    bag.file("helper.m", "function helper\ninside = 1;\n");
    const HostedUnit unit =
        createUnit(bag.script("answer = nComp + AGGSTATE_SOLID;\nhelper\nerror('stop')\n"));
    EXPECT_EQ(unit.calculate(), capeFailure);
    EXPECT_THAT(narrow(unit.output()), HasSubstr("answer = nComp + AGGSTATE_SOLID;"));
    EXPECT_THAT(narrow(unit.output()), Not(HasSubstr("inside")));
    EXPECT_THAT(narrow(unit.output()), HasSubstr("Evaluation error: stop\nMATLAB done\n"));
    bag.values[L"info level"] = Variant(LONG{0});
    rewrite(unit, bag, "helper\n");
    ASSERT_EQ(unit.calculate(), S_OK);
    EXPECT_EQ(unit.output(), L"MATLAB output:\nMATLAB done\n");
}

// Octave tells a changed file by its time in seconds, and these change more often.
TEST_F(OctaveRun, aRunTakesTheFilesOfItsModel) {
    const HostedUnit unit(module);
    ASSERT_EQ(unit.as<ICapeUtilities>()->Initialize(), S_OK);
    for (int k = 1; k <= 8; ++k) {
        const std::string number = std::to_string(k);
        ModelBag bag;
        bag.file("same.m", "function same\ndisp(" + number + "0)\n")
            .file("extra" + number + ".m", "disp('new file')\n")
            .script("disp(" + number + ")\nsame\nextra" + number + "\n");
        ASSERT_EQ(unit.load(bag), S_OK);
        EXPECT_EQ(unit.calculate(), S_OK) << narrow(unit.errorDescription());
        EXPECT_EQ(narrow(unit.output()),
                  "MATLAB output:\n" + number + "\n" + number + "0\nnew file\nMATLAB done\n");
    }
}

// Each has an Octave, a working folder and a channel of its own.
TEST_F(OctaveRun, unitsOfOneProcessDoNotMeet) {
    ModelBag bag1, bag2;
    const HostedUnit first = createUnit(bag1.script("x = getParameter('a'); setParameter('a', x + 1);\n")
                                            .parameter(L"a", L"real", Variant(1.0)));
    const HostedUnit second = createUnit(
        bag2.script("setParameter('a', 10*getParameter('a'));\n").parameter(L"a", L"real", Variant(1.0)));
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(first.calculate(), S_OK) << narrow(first.errorDescription());
        EXPECT_EQ(second.calculate(), S_OK) << narrow(second.errorDescription());
    }
    EXPECT_EQ(first.parameter(L"a").real(), 4);
    EXPECT_EQ(second.parameter(L"a").real(), 1000);
}

} // namespace

} // namespace solvane
