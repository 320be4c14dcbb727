#include "StudyWorkers.h"

#include "WorkerProcess.h"
#include "com/Text.h"

#include <nlohmann/json.hpp>

#include <memory>

namespace solvane::host {

namespace {

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
    std::unique_ptr<WorkerProcess> process;
    while (const auto point = rows_.next()) {
        if (!process) {
            const std::lock_guard lock(mutex_);
            process = std::make_unique<WorkerProcess>();
            if (!process->start(L"serve \"" + widen(casePath_, CP_UTF8) + L"\"", fault_)) {
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
