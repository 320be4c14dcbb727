#include "StudyWorkers.h"

#include "PipedProcess.h"
#include "cases/NumberText.h"
#include "com/Text.h"
#include "flowsheet/RunWatch.h"

#include <nlohmann/json.hpp>

#include <memory>

namespace solvane::host {

namespace {

/// A worker that has nothing to calculate ends its Matlab in this time.
constexpr DWORD patience = 10'000;

std::filesystem::path ownProgram() {
    std::wstring path(32767, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return path;
}

using Json = nlohmann::ordered_json;

Json failureJson(const std::string& message) {
    return {{"error", {{"message", message}}}};
}

} // namespace

/// A process of this program that answers each line with a line.
class Worker {
public:
    Worker() = default;
    ~Worker() { finish(); }
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    bool start(const WorkerOptions& options, std::string& error) {
        const std::string limit = options.limit ? " --limit " + exactNumber(*options.limit) : "";
        return process_.start(
            ownProgram(), widen("SolvaneHost serve \"" + options.casePath + "\"" + limit, CP_UTF8), error);
    }

    /// False if the process has ended.
    bool ask(const std::string& line, std::string& answer) {
        if (!process_.write(line))
            return false;
        std::size_t end;
        while ((end = received_.find('\n')) == std::string::npos)
            if (!process_.read(received_))
                return false;
        answer = received_.substr(0, end);
        received_.erase(0, end + 1);
        return true;
    }

    /// Closes the input, upon which the process ends. One that does not is ended by force.
    void finish() {
        process_.closeInput();
        if (process_ && !process_.waitForEnd(patience))
            process_.terminate();
    }

    void stopRun() { stopRunsOf(process_.id()); }
    void terminate() { process_.terminate(); }

private:
    PipedProcess process_;
    std::string received_; ///< after the last answer
};

StudyWorkers::StudyWorkers(WorkerOptions options, const Case& flowsheet, const Design& design,
                           const StudyTable& table, StudyRows& rows)
    : options_(std::move(options)), case_(flowsheet), design_(design), table_(table), rows_(rows) {}

StudyWorkers::~StudyWorkers() {
    finish();
}

void StudyWorkers::start(std::size_t count) {
    workers_.resize(count);
    for (std::unique_ptr<Worker>& worker : workers_)
        threads_.emplace_back([this, &worker] { work(worker); });
}

void StudyWorkers::finish() {
    for (std::thread& thread : threads_)
        thread.join();
    threads_.clear();
}

void StudyWorkers::stopRuns() {
    const std::lock_guard lock(mutex_);
    for (const std::unique_ptr<Worker>& worker : workers_)
        if (worker)
            worker->stopRun();
}

void StudyWorkers::terminate() {
    const std::lock_guard lock(mutex_);
    for (const std::unique_ptr<Worker>& worker : workers_)
        if (worker)
            worker->terminate();
}

std::string StudyWorkers::fault() const {
    const std::lock_guard lock(mutex_);
    return fault_;
}

void StudyWorkers::work(std::unique_ptr<Worker>& worker) {
    while (const auto point = rows_.next()) {
        if (!worker && !start(worker)) {
            rows_.stop();
            return;
        }
        Variation variation;
        std::string error, answer;
        Json results;
        if (!vary(case_, design_.axes, design_.points[*point], variation, error))
            results = failureJson(error);
        else if (worker->ask(variationLine(variation), answer))
            results = Json::parse(answer, nullptr, false);
        if (!results.is_object()) {
            results = failureJson("the process that calculated this point has ended");
            end(worker); // another calculates the next point
        }
        rows_.put(*point, table_.line(*point, results));
    }
    end(worker);
}

bool StudyWorkers::start(std::unique_ptr<Worker>& worker) {
    const std::lock_guard lock(mutex_);
    worker = std::make_unique<Worker>();
    return worker->start(options_, fault_);
}

/// Meanwhile it can be ended by force.
void StudyWorkers::end(std::unique_ptr<Worker>& worker) {
    if (worker)
        worker->finish();
    const std::lock_guard lock(mutex_);
    worker.reset();
}

} // namespace solvane::host
