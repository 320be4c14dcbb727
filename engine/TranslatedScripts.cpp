#include "TranslatedScripts.h"

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

std::string readAll(const std::wstring& path) {
    std::ifstream file(std::filesystem::path(path), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace

bool TranslatedScripts::refresh(const std::wstring& folder) {
    if (folder != folder_) {
        copies_.reset();
        scripts_.clear();
        folder_ = folder;
    }
    bool isChanged = std::erase_if(scripts_, [this](const auto& script) { return isGone(script.first); }) > 0;
    WIN32_FIND_DATAW entry;
    const FindHandle search(folder.empty() ? INVALID_HANDLE_VALUE
                                           : FindFirstFileW((folder + L"\\*.m").c_str(), &entry));
    for (BOOL more = static_cast<bool>(search); more; more = FindNextFileW(search.get(), &entry)) {
        const std::string script = readAll(folder + L'\\' + entry.cFileName);
        const auto copied = scripts_.find(entry.cFileName);
        // A script that becomes UTF-8 keeps its copy, since Octave would not notice its removal.
        if (copied == scripts_.end() ? !isUtf8(script) : copied->second != script)
            isChanged = copy(entry.cFileName, script) || isChanged;
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
