#include "TranslatedScripts.h"

#include "FileAge.h"
#include "com/Handle.h"
#include "com/Text.h"

#include <windows.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace solvane::engine {

namespace {

bool isUtf8(const std::string& text) {
    return text.empty() || MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, text.data(),
                                               static_cast<int>(text.size()), nullptr, 0) > 0;
}

/// When a file was written, in the system's units of 100 ns.
std::uint64_t timeOf(const FILETIME& time) {
    return std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime;
}

/// Whether a file written now would have a later time.
bool isOld(std::uint64_t written) {
    using Ticks = std::chrono::duration<std::uint64_t, std::ratio<1, 10'000'000>>;
    FILETIME now;
    GetSystemTimeAsFileTime(&now);
    return written + Ticks(fileTimeStep).count() < timeOf(now);
}

std::string readAll(const std::wstring& path) {
    std::ifstream file(std::filesystem::path(path), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace

bool TranslatedScripts::refresh(const std::wstring& folder) {
    if (folder != folder_) {
        copies_.reset();
        scripts_.clear();
        utf8_.clear();
        folder_ = folder;
    }
    bool isChanged = std::erase_if(scripts_, [this](const auto& script) { return isGone(script.first); }) > 0;
    WIN32_FIND_DATAW entry;
    const FindHandle search(folder.empty() ? INVALID_HANDLE_VALUE
                                           : FindFirstFileW((folder + L"\\*.m").c_str(), &entry));
    for (BOOL more = static_cast<bool>(search); more; more = FindNextFileW(search.get(), &entry)) {
        const std::wstring name = entry.cFileName;
        const std::uint64_t written = timeOf(entry.ftLastWriteTime);
        if (const auto known = utf8_.find(name); known != utf8_.end() && known->second == written)
            continue;
        const bool wasOld = isOld(written);
        const std::string script = readAll(folder + L'\\' + name);
        const auto copied = scripts_.find(name);
        // A script that becomes UTF-8 keeps its copy, since Octave would not notice its removal.
        if (copied == scripts_.end() ? !isUtf8(script) : copied->second != script)
            isChanged = copy(name, script) || isChanged;
        else if (copied == scripts_.end() && wasOld)
            utf8_[name] = written;
    }
    return isChanged;
}

/// Whether a copied script no longer exists; if so, removes the copy.
bool TranslatedScripts::isGone(const std::wstring& name) const {
    return GetFileAttributesW((folder_ + L'\\' + name).c_str()) == INVALID_FILE_ATTRIBUTES &&
           DeleteFileW((copies_->path() + L'\\' + name).c_str());
}

bool TranslatedScripts::copy(const std::wstring& name, const std::string& script) {
    if (!copies_) {
        auto folder = std::make_unique<OwnFolder>();
        if (!folder->create(folder_ + L"\\private"))
            return false;
        copies_ = std::move(folder);
    }
    std::ofstream(std::filesystem::path(copies_->path() + L'\\' + name), std::ios::binary)
        << (isUtf8(script) ? script : narrow(widen(script), CP_UTF8));
    scripts_[name] = script;
    return true;
}

} // namespace solvane::engine
