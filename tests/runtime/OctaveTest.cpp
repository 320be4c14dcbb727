// The whole road: the unit, the engine that is registered as Matlab, the gateway in it, and real scripts.

#include "DiagnosticContext.h"
#include "FakeMaterial10.h"
#include "FakeMaterial11.h"
#include "HostedUnit.h"
#include "ModelBag.h"
#include "OddVariants.h"
#include "UnitModule.h"
#include "com/Text.h"

#include <gmock/gmock.h>

namespace solvane {

namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

constexpr auto capeFailure = static_cast<HRESULT>(0x80040501);

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

// Each command once at least, on materials whose answers are known.
constexpr char everyCommand[] = R"(
T = getParameter('temperature'); P = getFeedProp(1, 'pressure');
flow = getFeedProp(1, 'totalFlow'); X = getFeedProp(1, 'fraction');
[phases, fractions, Y, Tf, Pf] = getFeedEquilibrium(1);
assert({phases, fractions, Tf, Pf}, {{'Vapor' 'Liquid'}, [0.25 0.75], 300, 101325});
[phases, fractions, Y] = flashEquilibrium(X, 'temperature', T, 'pressure', P);
assert({phases, fractions, Y}, {{'Vapor' 'Liquid'}, [0.25 0.75], [1 3; 2 2; 3 1]/6}, 1e-15);
setParameter('duty', flow*scaled(flashProperty(X, 'temperature', T, 'pressure', P, 'enthalpy')));
setProduct(1, flow*fractions(1), [0.5 0.25 0.25], 'temperature', T, 'pressure', P);
setProduct(2, flow*fractions(2), [0.25; 0.25; 0.5], 'pressure', P, 'temperature', T);

assert(getCompoundConstant('weight'), [16; NaN; 72]);
assert(getCompoundConstant('formula'), {'CH4'; ''; 'C5H12'});
assert(getTDependentProperty('vaporPressure', 300), [1; 2; 3]);
assert(getPDependentProperty('meltingTemperature.Dpressure', 1e5), [4; 5; 6]);
assert(getSinglePhaseProperty('volume', 'Vapor', 300, 1e5, X), 7);
assert(getSinglePhaseProperty('fugacity.DmolFraction', 'Liquid', 300, 1e5, X), [1 4 7; 2 5 8; 3 6 9]);
assert(getTwoPhaseProperty('kvalue', 'Vapor', 'Liquid', 300, 1e5, Y(:,1), Y(:,2)), [3; 1; 0.5]);
assert(getTwoPhaseProperty('surfaceTension.Dmoles', 'Vapor', 'Liquid', 300, 1e5, X, X), [1 4; 2 5; 3 6]);
try; getCompoundConstant('nonsense'); catch failure; disp(failure.message); end

setReport('Facts', sprintf('%s %d %d %s|%s', getUnitName(), getFeedCount(), getProductCount(), ...
          getPropertyUnit('enthalpy'), strtrim(fileread('note.txt'))));
logMessage('drum calculated');
fprintf('%d compounds, first %s\n', nComp, compNames{1});
)";

TEST_F(OctaveRun, everyCommandOnMaterialsOfBothGenerations) {
    FakeStream stream = makeFakeStream();
    const Variant none;
    stream.constants = {{L"weight", variants({Variant(16.0), none, Variant(72.0)})},
                        {L"formula", variants({Variant(L"CH4"), none, Variant(L"C5H12")})}};
    stream.results = {{L"vaporPressure", {1, 2, 3}},
                      {L"meltingTemperature.Dpressure", {4, 5, 6}},
                      {L"volume", {7}},
                      {L"fugacity.DmolFraction", {1, 2, 3, 4, 5, 6, 7, 8, 9}},
                      {L"kvalue", {3, 1, 0.5}},
                      {L"surfaceTension.Dmoles", {1, 2, 3, 4, 5, 6}}};
    for (const bool is10 : {false, true}) {
        ModelBag bag;
        bag.feeds({L"Feed"})
            .products({L"Vapor", L"Liquid"})
            .reports({L"Facts"})
            .parameter(L"temperature", L"real", Variant(260.0))
            .parameter(L"duty", L"real", Variant(0.0))
            .file("scaled.m", "function y = scaled(x)\ny = x/1000;\n")
            .file("note.txt", "from a file")
            .script(everyCommand);
        DiagnosticContext context;
        const HostedUnit unit = createUnit(bag);
        unit.as<ICapeIdentification>()->put_ComponentName(Bstr(L"D-101").get());
        ASSERT_EQ(unit.as<ICapeUtilities>()->put_simulationContext(&context), S_OK);
        const auto connect = [&](const wchar_t* port) -> FakeMaterial& {
            const auto flash = [stream](FakeStream& flashed) { flashed = stream; };
            if (is10) {
                const auto material = FakeMaterial10::create(stream);
                material->onFlash = flash;
                EXPECT_EQ(unit.connect(port, material->dispatch()), S_OK);
                return *material.get();
            }
            const auto material = FakeMaterial11::create(stream);
            material->onFlash = flash;
            EXPECT_EQ(unit.connect(port, material->dispatch()), S_OK);
            return *material.get();
        };
        connect(L"Feed");
        const CallRecord& vapor = *connect(L"Vapor").record;
        const CallRecord& liquid = *connect(L"Liquid").record;

        ASSERT_EQ(unit.calculate(), S_OK) << narrow(unit.errorDescription());

        const std::string set = is10 ? "SetProp(" : "SetOverallProp(";
        const std::string molar = is10 ? ", overall, empty, null, mole, " : ", mole, ";
        EXPECT_THAT(vapor.callsOf(set + "totalFlow" + molar + "R8[2.5])"), SizeIs(1));
        EXPECT_THAT(vapor.callsOf(set + "fraction" + molar + "R8[0.5, 0.25, 0.25])"), SizeIs(1));
        EXPECT_THAT(liquid.callsOf(set + "totalFlow" + molar + "R8[7.5])"), SizeIs(1));
        EXPECT_THAT(liquid.callsOf(set + "fraction" + molar + "R8[0.25, 0.25, 0.5])"), SizeIs(1));
        EXPECT_DOUBLE_EQ(unit.parameter(L"duty").real(), -7.75);
        EXPECT_THAT(narrow(unit.report(L"Facts")), StartsWith("D-101 1 2 "));
        EXPECT_THAT(narrow(unit.report(L"Facts")), EndsWith("|from a file"));
        EXPECT_EQ(context.lines, std::vector<std::wstring>{L"drum calculated"});
        const std::wstring lack =
            is10 ? L"getCompoundConstant: the unit gave no answer: its material does not "
                   L"give this constant for all compounds"
                 : L"Failed to get compound constant \"nonsense\": no such constant";
        EXPECT_EQ(unit.output(), L"MATLAB output:\n" + lack + L"\n3 compounds, first C1\nMATLAB done\n");
        unit.as<ICapeUtilities>()->put_simulationContext(nullptr);
    }
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
