// Kills the engine's processes while a unit uses them: the unit reports it, and continues with a new engine.

#include "Drum.h"
#include "Folders.h"
#include "Leftovers.h"
#include "Processes.h"
#include "Progress.h"
#include "Segments.h"
#include "flowsheet/SimulationContext.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <functional>
#include <memory>
#include <random>
#include <thread>

namespace solvane::soak {

namespace {

constexpr double temperature = 255; // K

/// When the engine dies: in this phase, after a random delay of up to that many milliseconds.
enum class Moment { start, changeOfFolder, script, command, betweenRuns };
struct MomentRow {
    Moment moment;
    const char* name;
    int longestDelay;
};
constexpr std::array moments = {
    MomentRow{Moment::start, "during the start", 600},
    MomentRow{Moment::changeOfFolder, "at the change of folder", 4},
    MomentRow{Moment::script, "in the script", 300},
    MomentRow{Moment::command, "in a command", 0},
    MomentRow{Moment::betweenRuns, "between runs", 0},
};

// Some 400 ms of commands, and one that the host answers by killing.
constexpr char longScript[] = R"(
logMessage('now');
stop = time() + 0.4;
while time() < stop, assert(getFeedCount(), 1); end
)";

/// The unit's engine: its server and its Octave.
class Engine {
public:
    explicit Engine(std::wstring mark) : mark_(std::move(mark)) { markDescendants(mark_); }

    /// Kills one of the two as soon as it runs.
    void kill(bool isServer) const {
        comesTrue([&] {
            const auto servers = isServer ? engineServersOf(GetCurrentProcessId()) : std::vector<DWORD>();
            const auto octaves = isServer ? std::vector<unsigned>() : octavesWith(mark_);
            for (const DWORD server : servers)
                killProcess(server);
            for (const unsigned octave : octaves)
                killOctave(octave);
            return !servers.empty() || !octaves.empty();
        });
    }

    /// Whether at most this many servers and Octaves are left within ten seconds.
    bool isLeftWith(std::size_t count) const {
        return comesTrue([&] {
            return engineServersOf(GetCurrentProcessId()).size() <= count &&
                   octavesWith(mark_).size() <= count;
        });
    }

private:
    std::wstring mark_;
};

/// Whether the text names what failed and adds a reason.
bool isClear(const std::string& error) {
    constexpr std::array beginnings = {
        "Failed to create Matlab application: ", "Failed to add to MATLAB path: ",
        "Failed to change MATLAB working directory: ", "Failed to calculate: "};
    return std::ranges::any_of(beginnings, [&](std::string_view beginning) {
        return error.starts_with(beginning) && error.size() > beginning.size();
    });
}

class EngineKills {
public:
    EngineKills(const Effort& effort, const Figures& figures)
        : effort_(effort), figures_(figures), random_(effort.seed) {}

    void run() {
        if (!startDrum())
            return;
        const int kills = effort_.of(20, 200);
        Progress progress("kills of the engine", kills);
        for (int i = 0; i < kills; ++i) {
            const MomentRow& row = moments[static_cast<std::size_t>(i) % moments.size()];
            const bool isServer = i / static_cast<int>(moments.size()) % 2 == 0;
            kill(row, isServer);
            progress.at(i + 1);
        }
        drum_.reset();
        left_ += engine_.isLeftWith(0) ? 0 : 1;
        figures_.put("kills of the engine", kills);
        figures_.put("runs and starts that failed", failed_);
        figures_.put("failures without a clear error", unclear_);
        figures_.put("next runs that failed or gave different streams", next_);
        figures_.put("processes left after ten seconds", left_);
        figures_.put("temporary folders left", double(workingFoldersIn(temporary_.path())));
    }

private:
    bool startDrum() {
        drum_.reset();
        drum_ = std::make_unique<Drum>(module_, 0, longScript);
        const auto context = host::SimulationContext::create([this](std::string_view) { onCommand_(); });
        std::string error = drum_->startError();
        if (error.empty() &&
            SUCCEEDED(drum_->unit().as<ICapeUtilities>()->put_simulationContext(context.get())) &&
            drum_->calculate(temperature, error)) {
            if (expected_.empty())
                expected_ = drum_->products();
            return drum_->products() == expected_;
        }
        std::printf("  no unit: %s\n", error.c_str());
        return false;
    }

    void kill(const MomentRow& row, bool isServer) {
        const char* victim = isServer ? "server" : "Octave";
        const auto killLater = [&] {
            return std::thread([this, isServer, delay = delayWithin(row)] {
                Sleep(delay);
                engine_.kill(isServer);
            });
        };
        std::string error;
        bool isDone = false;
        if (row.moment == Moment::start) {
            drum_.reset();
            std::thread killer = killLater();
            drum_ = std::make_unique<Drum>(module_, 0, longScript);
            killer.join();
            error = drum_->startError();
            isDone = error.empty() && drum_->calculate(temperature, error);
        } else if (row.moment == Moment::command) {
            onCommand_ = [&] { engine_.kill(isServer); };
            isDone = drum_->calculate(temperature, error);
            onCommand_ = [] {};
        } else {
            std::thread killer = killLater();
            if (row.moment == Moment::betweenRuns)
                killer.join();
            isDone = drum_->calculate(temperature, error);
            if (killer.joinable())
                killer.join();
        }
        judge(row, victim, isDone, error);
    }

    void judge(const MomentRow& row, const char* victim, bool isDone, const std::string& error) {
        failed_ += isDone ? 0 : 1;
        if (!isDone)
            std::printf("  %s killed %s: %s\n", victim, row.name, error.c_str());
        if (!isDone && !isClear(error))
            ++unclear_;
        // A unit that failed to start stays so; the next one starts.
        std::string nextError;
        const bool goesOn = row.moment == Moment::start
                                ? startDrum()
                                : drum_->calculate(temperature, nextError) && drum_->products() == expected_;
        if (!goesOn) {
            ++next_;
            std::printf("  the next run: %s\n", nextError.empty() ? "different streams" : nextError.c_str());
        }
        if (!engine_.isLeftWith(1)) {
            ++left_;
            std::printf("  the killed engine still runs\n");
        }
    }

    DWORD delayWithin(const MomentRow& row) {
        return static_cast<DWORD>(std::uniform_int_distribution(0, row.longestDelay)(random_));
    }

    const Effort& effort_;
    const Figures& figures_;
    std::mt19937 random_;
    const TemporaryFolder temporary_;
    const UnitModule module_;
    const Engine engine_{L"engine-" + std::to_wstring(GetCurrentProcessId())};
    std::unique_ptr<Drum> drum_;
    std::function<void()> onCommand_ = [] {};
    std::string expected_;
    int failed_ = 0, unclear_ = 0, next_ = 0, left_ = 0;
};

} // namespace

void soakEngineKills(const Effort& effort, const Figures& figures) {
    EngineKills(effort, figures).run();
}

} // namespace solvane::soak
