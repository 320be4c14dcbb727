#include "OctaveSession.h"

#include "OctaveText.h"

#include <algorithm>
#include <array>

namespace solvane::engine {

namespace {

constexpr std::array pathWords = {L"addpath", L"rmpath"};
constexpr std::array folderWords = {L"cd", L"chdir"};

std::wstring_view firstWord(std::wstring_view command) {
    const std::size_t begin = std::min(command.find_first_not_of(L" \t"), command.size());
    const std::size_t end = command.find_first_of(L" \t(", begin);
    return command.substr(begin, end - begin);
}

bool isOneOf(std::wstring_view word, const auto& words) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

bool isFolder(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

/// Clients write "cd 'folder'" around a folder's name as it is, and O'Brien has a temporary folder too: the
/// apostrophes of a single folder that exists are doubled, as Octave wants them.
std::wstring withApostrophesDoubled(const std::wstring& command) {
    const std::wstring_view word = firstWord(command);
    const std::size_t begin = command.find(L'\'');
    const std::size_t end = command.rfind(L'\'');
    if (!(isOneOf(word, pathWords) || isOneOf(word, folderWords)) || begin == end)
        return command;
    const std::wstring folder = command.substr(begin + 1, end - begin - 1);
    if (folder.find(L'\'') == std::wstring::npos || !isFolder(folder))
        return command;
    return command.substr(0, begin + 1) + octaveText(folder) + command.substr(end);
}

} // namespace

void OctaveSession::launch() {
    launchError_.clear();
    process_ = std::make_unique<OctaveProcess>();
    launched_ = process_->launch(launchError_);
}

HRESULT OctaveSession::start(std::wstring& error) {
    if (!process_)
        launch();
    error = launchError_;
    const HRESULT result = SUCCEEDED(launched_) ? process_->waitUntilReady(error) : launched_;
    return SUCCEEDED(result) ? result : fail(result);
}

HRESULT OctaveSession::execute(const std::wstring& given, std::wstring& output, std::wstring& error) {
    const std::wstring command = withApostrophesDoubled(given);
    const bool isFresh = !process_;
    const HRESULT started = start(error);
    if (FAILED(started))
        return started;
    if ((isFresh && !replay()) || !process_->execute(command, output)) {
        error = L"Octave ended before the command was done";
        return fail(HRESULT_FROM_WIN32(ERROR_PROCESS_ABORTED));
    }
    if (output.empty())
        remember(command);
    return S_OK;
}

HRESULT OctaveSession::fail(HRESULT result) {
    process_.reset();
    return result;
}

bool OctaveSession::replay() {
    std::wstring output;
    for (const std::wstring& command : pathCommands_)
        if (!process_->execute(command, output))
            return false;
    return folderCommand_.empty() || process_->execute(folderCommand_, output);
}

/// Path entries and the folder are set once, by commands that print nothing where they succeed.
void OctaveSession::remember(const std::wstring& command) {
    const std::wstring_view word = firstWord(command);
    if (isOneOf(word, folderWords))
        folderCommand_ = command;
    if (!isOneOf(word, pathWords))
        return;
    std::erase(pathCommands_, command); // repeated commands don't add up, and the last one's place counts
    pathCommands_.push_back(command);
}

} // namespace solvane::engine
