// Very many commands to one unit, from a gateway that is simulated here: each reply is compared whole.

#include "Drum.h"
#include "Folders.h"
#include "GatewayClient.h"
#include "MatlabStandIn.h"
#include "ProcessGrowth.h"
#include "Progress.h"
#include "Segments.h"

#include <cstdio>
#include <cstring>
#include <optional>

namespace solvane::soak {

namespace {

constexpr int commandsOfARun = 20000;
constexpr std::size_t compounds = 5;

struct Question {
    Wire request;
    bool isRefused = false;
};

Wire composed(Wire wire, int shift) {
    // Some composition; its sum is 1.
    for (std::size_t i = 0; i < compounds; ++i)
        wire << double(1 + (i + static_cast<std::size_t>(shift)) % compounds) / 15;
    return wire;
}

/// Every kind of command, including some that fail.
std::vector<Question> makeQuestions() {
    std::vector<Question> questions{
        {request(CommandCode::getUnitName)},     // getUnitName
        {request(CommandCode::getFeedCount)},    // getFeedCount
        {request(CommandCode::getProductCount)}, // getProductCount
        {request(CommandCode::logMessage) << "a line for nobody"},
        {request(CommandCode::getCompoundConstant) << "molecularWeight"},
        {request(CommandCode::getCompoundConstant) << "casRegistryNumber"},
        {request(CommandCode::getCompoundConstant) << "nonsense", true},
        {request(CommandCode::getPDependentProperty) << 1e5 << "boilingPointTemperature"},
        {request(CommandCode::getPropertyUnit) << "enthalpy.Dtemperature"},
        {request(CommandCode::getPropertyUnit) << "nonsense", true},
        {request(CommandCode::getFeedEquilibrium) << 1},
        {request(CommandCode::getFeedEquilibrium) << 2, true},
        {request(CommandCode::getParameter) << "nonsense", true},
        {request(CommandCode::setReport) << "nonsense", true},
        {request(CommandCode{99}), true},
    };
    for (const char* property : {"temperature", "pressure", "totalFlow", "flow", "fraction", "enthalpy"})
        questions.push_back({request(CommandCode::getFeedProp) << 1 << property});
    questions.push_back({request(CommandCode::getFeedProp) << 7 << "temperature", true});
    for (int i = 0; i < 10; ++i) {
        const double temperature = 240 + 10 * i;
        const double pressure = 2e6;
        questions.push_back({request(CommandCode::getTDependentProperty) << temperature << "vaporPressure"});
        questions.push_back({composed(request(CommandCode::flashEquilibrium), i)
                             << temperature << pressure << "temperature"
                             << "pressure"});
        questions.push_back({composed(request(CommandCode::flashProperty), i)
                             << temperature << pressure << "temperature"
                             << "pressure"
                             << "enthalpy"});
        questions.push_back(
            {composed(request(CommandCode::getSinglePhaseProperty) << temperature << pressure, i)
             << "fugacityCoefficient"
             << "Vapor"});
        questions.push_back(
            {composed(composed(request(CommandCode::getTwoPhaseProperty) << temperature << pressure, i),
                      i + 1)
             << "kvalue"
             << "Vapor"
             << "Liquid"});
    }
    return questions;
}

/// Asks the questions again and again, and sets and gets a parameter in between.
class Examination {
public:
    void ask(GatewayClient& gateway, int count) {
        for (int i = 0; i < count; i += 2) {
            askNext(gateway);
            i % 4 == 0 ? set(gateway) : get(gateway);
        }
    }

    int wrong() const { return wrong_; }
    bool isWhole() const { return next_ > questions_.size(); }

private:
    void askNext(GatewayClient& gateway) {
        const std::size_t place = next_++ % questions_.size();
        const Question& question = questions_[place];
        const std::string block = gateway.call(question.request);
        if (next_ <= questions_.size()) { // the first time
            answers_.push_back(block);
            std::uint32_t status = 0;
            std::memcpy(&status, block.data(), sizeof status);
            judge((status == 1) == question.isRefused, "answered at first");
        } else {
            judge(block == answers_[place], "repeated");
        }
    }
    void set(GatewayClient& gateway) {
        const Wire command = request(CommandCode::setParameter) << "duty" << ValueTag::real << ++value_;
        judge(gateway.call(command).starts_with(succeeded().bytes()), "setParameter");
    }
    void get(GatewayClient& gateway) {
        judge(gateway.call(request(CommandCode::getParameter) << "duty")
                  .starts_with((succeeded() << ValueTag::real << value_).bytes()),
              "getParameter");
    }
    void judge(bool isRight, const char* what) {
        if (!isRight && ++wrong_ < 20)
            std::printf("  wrong answer at question %zu of %zu, %s\n", next_ % questions_.size(),
                        questions_.size(), what);
    }

    const std::vector<Question> questions_ = makeQuestions();
    std::vector<std::string> answers_;
    std::size_t next_ = 0;
    double value_ = 0;
    int wrong_ = 0;
};

} // namespace

void soakCommands(const Effort& effort, const Figures& figures) {
    const int runs = std::max(3, effort.of(100000, 1000000) / commandsOfARun);
    const TemporaryFolder temporary;
    MatlabStandIn matlab;
    const UnitModule module;
    Drum drum(module);
    Examination examination;
    Progress progress("commands", runs * commandsOfARun);
    matlab.onRun = [&](const std::wstring& folder) {
        GatewayClient gateway(folder);
        examination.ask(gateway, commandsOfARun);
        for (const int product : {1, 2}) {
            const Wire command = composed(request(CommandCode::setProduct) << product << 10.0, product)
                                 << 250.0 << 2e6 << "temperature"
                                 << "pressure";
            gateway.expect(command, succeeded());
        }
        return printed(L"MATLAB output:\nMATLAB done\n");
    };
    int failedRuns = 0;
    std::optional<Growth> growth;
    std::size_t files = 0;
    for (int run = 0; run < runs; ++run) {
        std::string error;
        if (!drum.calculate(250, error)) {
            ++failedRuns;
            std::printf("  run %d: %s\n", run, error.c_str());
        }
        if (run == 0) {
            growth.emplace("host", GetCurrentProcessId());
            files = namesIn(temporary.path()).size();
        }
        matlab.forgetCalls();
        progress.at((run + 1) * commandsOfARun);
    }
    figures.put("commands of a simulated gateway", double(runs) * commandsOfARun);
    figures.put("wrong answers", examination.wrong() + (examination.isWhole() ? 0 : 1));
    figures.put("failed runs", failedRuns);
    growth->put(figures);
    figures.put("temporary files gained", double(namesIn(temporary.path()).size()) - double(files));
}

} // namespace solvane::soak
