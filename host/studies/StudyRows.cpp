#include "StudyRows.h"

#include "StudyTable.h"

namespace solvane::host {

StudyRows::StudyRows(std::vector<std::size_t> points, Writer write)
    : points_(std::move(points)), write_(std::move(write)) {
    progress_.total = points_.size();
}

std::optional<std::size_t> StudyRows::next() {
    const std::lock_guard lock(mutex_);
    if (stopped_ || given_ == points_.size())
        return std::nullopt;
    return points_[given_++];
}

void StudyRows::put(std::size_t point, std::string line) {
    {
        const std::lock_guard lock(mutex_);
        ++progress_.done;
        progress_.failed += hasFailed(line);
        lines_[point] = std::move(line);
        writeReady();
    }
    changed_.notify_all();
}

void StudyRows::stop() {
    {
        const std::lock_guard lock(mutex_);
        stopped_ = true;
    }
    changed_.notify_all();
}

StudyProgress StudyRows::progress() const {
    const std::lock_guard lock(mutex_);
    return progress_;
}

bool StudyRows::waitFor(std::chrono::milliseconds time) {
    std::unique_lock lock(mutex_);
    return changed_.wait_for(lock, time, [this] { return stopped_ || written_ == points_.size(); });
}

bool StudyRows::isComplete() const {
    const std::lock_guard lock(mutex_);
    return written_ == points_.size();
}

void StudyRows::writeReady() {
    while (!stopped_ && written_ < points_.size()) {
        const auto line = lines_.find(points_[written_]);
        if (line == lines_.end())
            return;
        stopped_ = !write_(line->first, line->second);
        if (stopped_)
            return;
        lines_.erase(line);
        ++written_;
    }
}

} // namespace solvane::host
