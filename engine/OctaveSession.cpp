#include "OctaveSession.h"

#include "OctaveText.h"
#include "StopWatch.h"

#include <algorithm>
#include <array>
#include <utility>

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

/// The range of a command's quoted text, between its first and its last apostrophe.
struct Quoted {
    std::size_t begin = 0;
    std::size_t end = 0;
};

Quoted findQuoted(const std::wstring& command) {
    const std::size_t first = command.find(L'\'');
    return first == std::wstring::npos ? Quoted{} : Quoted{first + 1, command.rfind(L'\'')};
}

/// Clients write "cd 'folder'" without doubling the apostrophes in the folder's name, as that of a user
/// O'Brien. If the quoted text is one folder that exists, doubles them, as Octave requires.
std::wstring withApostrophesDoubled(const std::wstring& command) {
    const std::wstring_view word = firstWord(command);
    const auto [begin, end] = findQuoted(command);
    if (!(isOneOf(word, pathWords) || isOneOf(word, folderWords)) || begin >= end)
        return command;
    const std::wstring folder = command.substr(begin, end - begin);
    if (folder.find(L'\'') == std::wstring::npos || !isFolder(folder))
        return command;
    return command.substr(0, begin) + octaveText(folder) + command.substr(end);
}

/// The folder of a command of `folderWords`, if it is given in apostrophes with its full path, as programs
/// do; otherwise empty.
std::wstring namedFolder(const std::wstring& command) {
    const auto [begin, end] = findQuoted(command);
    std::wstring folder;
    for (std::size_t i = begin; i < end; ++i) {
        folder += command[i];
        if (command[i] == L'\'')
            ++i; // doubled
    }
    if (folder.ends_with(L'\\'))
        folder.pop_back();
    return folder.find(L':') == 1 && isFolder(folder) ? folder : L"";
}

/// Whether the command is such a word and a folder in apostrophes, and nothing else.
bool onlyChangesFolder(const std::wstring& command) {
    const auto [begin, end] = findQuoted(command);
    return isOneOf(firstWord(command), folderWords) && begin < end && command.find(L'\'', begin) == end &&
           end + 1 == command.size();
}

} // namespace

void OctaveSession::launch() {
    process_ = std::make_unique<OctaveProcess>();
    if (!process_->launch(startError_))
        process_.reset();
}

void OctaveSession::waitUntilReady() {
    if (process_ && !process_->waitUntilReady(startError_))
        process_.reset();
}

bool OctaveSession::start() {
    if (!process_ && startError_.empty())
        launch();
    waitUntilReady();
    return static_cast<bool>(process_);
}

HRESULT OctaveSession::execute(const std::wstring& given, std::wstring& output, std::wstring& error) {
    if (isStopRequested()) {
        scripts_.refresh({}); // the client may delete the folder without leaving it
        error = stopped;
        return DISP_E_EXCEPTION;
    }
    const std::wstring command = withApostrophesDoubled(given);
    const bool isFresh = !process_;
    if (!start()) {
        error = std::exchange(startError_, {});
        return DISP_E_EXCEPTION;
    }
    HRESULT result = isFresh ? replay(error) : S_OK;
    if (SUCCEEDED(result))
        result = perform(command, output, error);
    if (SUCCEEDED(result) && output.empty())
        remember(command);
    const bool isAlive = SUCCEEDED(result) || result == DISP_E_EXCEPTION;
    if (!isAlive || !process_->isFit())
        process_.reset();
    return result;
}

/// Octave looks for new files only when it changes its folder, or on request. A change of the folder runs no
/// script; each run begins with one.
HRESULT OctaveSession::perform(const std::wstring& command, std::wstring& output, std::wstring& error) {
    const bool isChanged = !onlyChangesFolder(command) && scripts_.refresh(currentFolder_);
    const HRESULT result = isChanged ? process_->execute(L"builtin ('rehash');", output, error) : S_OK;
    return SUCCEEDED(result) ? process_->execute(command, output, error) : result;
}

/// Leaves out a folder that no longer exists.
HRESULT OctaveSession::replay(std::wstring& error) {
    std::vector<std::wstring> commands = pathCommands_;
    if (!folderCommand_.empty())
        commands.push_back(folderCommand_);
    std::wstring output;
    HRESULT result = S_OK;
    for (const std::wstring& command : commands)
        if (result = process_->execute(command, output, error); FAILED(result) && result != DISP_E_EXCEPTION)
            return result;
    output.clear();
    error.clear();
    return S_OK;
}

/// Path entries and the folder are set by commands of their own, which print nothing if they succeed.
void OctaveSession::remember(const std::wstring& command) {
    const std::wstring_view word = firstWord(command);
    if (isOneOf(word, folderWords) && command != folderCommand_) {
        folderCommand_ = command;
        const std::wstring formerFolder = std::exchange(currentFolder_, namedFolder(command));
        if (currentFolder_ != formerFolder)
            scripts_.refresh({}); // the former folder may soon be deleted
    }
    if (!isOneOf(word, pathWords))
        return;
    std::erase(pathCommands_, command); // of a repeated command only the last place counts
    pathCommands_.push_back(command);
}

} // namespace solvane::engine
