#include "StudyWorkers.h"

#include "PipedProcess.h"
#include "com/Text.h"

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

/// A process of this program that answers each line with a line.
class Worker {
public:
    Worker() = default;
    /// Closes the input, upon which the process ends. One that does not is ended by force.
    ~Worker() {
        process_.closeInput();
        if (process_ && !process_.waitForEnd(patience))
            process_.terminate();
    }
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    bool start(const std::string& casePath, std::string& error) {
        return process_.start(ownProgram(), L"SolvaneHost serve \"" + widen(casePath, CP_UTF8) + L"\"",
                              error);
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

private:
    PipedProcess process_;
    std::string received_; ///< after the last answer
};

nlohmann::ordered_json failureJson(const std::string& message) {
    return {{"error", {{"message", message}}}};
}

} // namespace

StudyWorkers::~StudyWorkers() {
    for (std::thread& thread : threads_)
        thread.join();
}

void StudyWorkers::start(std::size_t count) {
    for (std::size_t i = 0; i < count; ++i)
        threads_.emplace_back([this] { work(); });
}

std::string StudyWorkers::fault() const {
    const std::lock_guard lock(mutex_);
    return fault_;
}

void StudyWorkers::work() {
    std::unique_ptr<Worker> process;
    while (const auto point = rows_.next()) {
        if (!process) {
            const std::lock_guard lock(mutex_);
            process = std::make_unique<Worker>();
            if (!process->start(casePath_, fault_)) {
                rows_.stop();
                return;
            }
        }
        Variation variation;
        std::string error, answer;
        nlohmann::ordered_json results;
        if (!vary(case_, design_.axes, design_.points[*point], variation, error)) {
            results = failureJson(error);
        } else if (process->ask(variationLine(variation), answer)) {
            results = nlohmann::ordered_json::parse(answer);
        } else {
            results = failureJson("the process that calculated this point has ended");
            process.reset(); // another calculates the next point
        }
        rows_.put(*point, table_.line(*point, results));
    }
}

} // namespace solvane::host
