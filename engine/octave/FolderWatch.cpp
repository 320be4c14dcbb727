#include "FolderWatch.h"

#include "engine/FileAge.h"

namespace solvane::engine {

namespace {

namespace fs = std::filesystem;

constexpr char separator = fs::path::preferred_separator == '/' ? ':' : ';';

/// Calls `use` with each entry of the folder that can be read.
template <class Use>
void forEachEntry(const fs::path& folder, Use use) {
    std::error_code fault;
    for (fs::directory_iterator entry(folder, fault), end; !fault && entry != end; entry.increment(fault))
        use(*entry);
}

/// Folders of classes, packages and private functions, which Octave reads with the folder that they are in.
bool holdsFunctions(const fs::directory_entry& entry) {
    const std::string name = entry.path().filename().string();
    std::error_code fault;
    return (name[0] == '@' || name[0] == '+' || name == "private") && entry.is_directory(fault);
}

fs::file_time_type timeOf(const fs::path& path) {
    std::error_code fault;
    return fs::last_write_time(path, fault);
}

FileTimes filesIn(const fs::path& folder) {
    FileTimes times;
    forEachEntry(folder, [&](const fs::directory_entry& entry) {
        times[entry.path().filename()] = timeOf(entry.path());
    });
    return times;
}

} // namespace

void FolderWatch::remember(std::string_view path) {
    std::error_code fault;
    path_ = path;
    folder_ = fs::current_path(fault);
    read_ = fs::file_time_type::clock::now();
    folders_.clear();
    add(folder_);
    hasSubfolders_ = folders_.size() > 1;
    for (std::size_t begin = 0, end = 0; end != std::string_view::npos; begin = end + 1) {
        end = path.find(separator, begin);
        const std::string_view one = path.substr(begin, end - begin);
        add(std::u8string(one.begin(), one.end()));
    }
    files_ = filesIn(folder_);
}

void FolderWatch::add(const fs::path& folder) {
    folders_[folder] = timeOf(folder);
    forEachEntry(folder, [this](const fs::directory_entry& entry) {
        if (holdsFunctions(entry))
            add(entry.path());
    });
}

bool FolderWatch::isOld(fs::file_time_type written) const {
    return written + fileTimeStep <= read_;
}

bool FolderWatch::isUpToDate(const fs::path& folder, std::string_view path,
                             std::vector<std::string>& changed) {
    std::error_code fault;
    if (path != path_ || hasSubfolders_ || fs::current_path(fault) != folder_ ||
        !fs::equivalent(folder, folder_, fault))
        return false;
    const auto now = fs::file_time_type::clock::now();
    for (const auto& [one, written] : folders_)
        if (!isOld(written) || timeOf(one) != written)
            return false;
    FileTimes files = filesIn(folder_);
    for (const auto& [name, written] : files) {
        const auto known = files_.find(name);
        if (known != files_.end() && known->second == written && isOld(written))
            continue;
        if (name.extension() == ".mex" || name.extension() == ".oct")
            return false;
        if (name.extension() == ".m")
            changed.push_back(name.stem().string());
    }
    files_ = std::move(files);
    read_ = now;
    return true;
}

} // namespace solvane::engine
