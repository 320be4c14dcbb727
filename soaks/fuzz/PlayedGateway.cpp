#include "PlayedGateway.h"

#include "Check.h"
#include "gateway/Transport.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <optional>

extern "C" void mexFunction(int, mxArray* outputs[], int, const mxArray* arguments[]);

namespace {

struct Play {
    std::string block;
    std::vector<std::string> requests{};
    mxArray* compounds = nullptr;
    mxArray* phases = nullptr;
    int locks = 0;
    std::string error{};
};
Play play;

class PlayedTransport final : public solvane::gateway::Transport {
public:
    std::size_t capacity() const override { return std::numeric_limits<std::size_t>::max(); }
    bool exchange(std::string_view request, std::size_t wanted, std::string& reply, std::string&) override {
        play.requests.emplace_back(request);
        reply = play.block.substr(0, wanted);
        return true;
    }
    bool read(std::size_t offset, std::size_t count, std::string& bytes, std::string&) override {
        bytes += play.block.substr(std::min(offset, play.block.size()), count);
        return true;
    }
};

} // namespace

extern "C" {

void mexLock() {
    ++play.locks;
}
void mexUnlock() {
    --play.locks;
}
mxArray* mexGetVariable(const char*, const char* name) {
    return name == std::string_view("nComp") ? play.compounds : play.phases;
}
int mexCallMATLAB(int, mxArray**, int count, mxArray** arguments, const char* function) {
    check(function == std::string_view("error") && count == 2);
    play.error = arguments[1]->characters;
    return 1;
}
/// Matlab's.
void mexErrMsgTxt(const char*) {
    check(false);
}
}

namespace solvane {

const bool gateway::staysLoaded = false;

std::unique_ptr<gateway::Transport> gateway::openTransport(const std::string&, std::string&) {
    return std::make_unique<PlayedTransport>();
}

namespace soak {

PlayedGateway::PlayedGateway(std::size_t compounds, const std::vector<std::string>& phases,
                             std::string block) {
    play = {.block = std::move(block)};
    play.compounds = numbers(1, 1, {static_cast<double>(compounds)});
    play.phases = keep({.kind = ArrayKind::cell, .rows = 1, .columns = phases.size()});
    for (const std::string& phase : phases)
        play.phases->cells.push_back(text(phase));
    call(0, {numbers(1, 1, {1}), text("{unit}")});
    check(play.error.empty() && play.locks == 1);
}

PlayedGateway::~PlayedGateway() {
    call(0, {numbers(1, 1, {2})});
    check(play.error.empty() && play.locks == 0);
    standInArrays().clear();
}

std::vector<const mxArray*> PlayedGateway::call(int outputs, const std::vector<const mxArray*>& arguments) {
    play.error.clear();
    std::vector<mxArray*> results(std::max<std::size_t>(1, static_cast<std::size_t>(outputs)));
    std::vector<const mxArray*> given = arguments;
    mexFunction(outputs, results.data(), static_cast<int>(given.size()), given.data());
    if (!play.error.empty())
        return {};
    return {results.begin(), results.begin() + outputs};
}

const std::string& PlayedGateway::error() const {
    return play.error;
}

const std::vector<std::string>& PlayedGateway::requests() const {
    return play.requests;
}

mxArray* numbers(std::size_t rows, std::size_t columns, std::vector<double> values) {
    mxArray* array = keep({.rows = rows, .columns = columns});
    array->numbers = std::move(values);
    return array;
}

mxArray* text(std::string_view characters) {
    return keep({.kind = ArrayKind::text,
                 .rows = characters.empty() ? 0u : 1u,
                 .columns = characters.size(),
                 .characters = std::string(characters)});
}

} // namespace soak

} // namespace solvane
