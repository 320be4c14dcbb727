#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace solvane::host {

struct StudyProgress {
    std::size_t done = 0; ///< of `total`
    std::size_t failed = 0;
    std::size_t total = 0;
};

/// Gives out the points of a study to the threads that calculate, and writes their lines in the order of the
/// points, each as soon as those before it are there.
class StudyRows {
public:
    /// Writes the line of a point; false if it cannot.
    using Writer = std::function<bool(std::size_t point, const std::string& line)>;

    StudyRows(std::vector<std::size_t> points, Writer write);

    /// A point to calculate; nothing if there is none, or after `stop`.
    std::optional<std::size_t> next();

    /// The line of a point that `next` gave.
    void put(std::size_t point, std::string line);

    /// No more points are given out. Also happens when a line cannot be written.
    void stop();

    StudyProgress progress() const;
    /// Waits until all lines are there or no more will come; false if it takes longer.
    bool waitFor(std::chrono::milliseconds time);

    /// Whether all lines are written.
    bool isComplete() const;

private:
    void writeReady();

    mutable std::mutex mutex_;
    std::condition_variable changed_;
    std::vector<std::size_t> points_;
    std::map<std::size_t, std::string> lines_; ///< calculated, not yet written
    Writer write_;
    std::size_t given_ = 0;   ///< in `points_`
    std::size_t written_ = 0; ///< likewise
    bool stopped_ = false;
    StudyProgress progress_;
};

} // namespace solvane::host
