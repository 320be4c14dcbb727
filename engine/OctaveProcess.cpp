#include "OctaveProcess.h"

#include "StopWatch.h"
#include "com/Module.h"
#include "com/Text.h"

#include <atomic>

namespace solvane::engine {

namespace {

std::atomic<SOCKET> commandSocket = INVALID_SOCKET;

// Octave usually starts within half a second, and from a cold disk within some seconds.
constexpr DWORD startTimeout = 30000;

constexpr wchar_t folderPrefix[] = L"SolvaneOctave-";

/// The folder of Octave's side, beside this program.
std::wstring engineFolder() {
    const std::wstring program = ComModule::current().path();
    return program.substr(0, program.find_last_of(L'\\')) + L"\\octave";
}

/// With a backslash at its end.
std::wstring temporaryFolder() {
    std::wstring folder(MAX_PATH + 1, L'\0');
    folder.resize(GetTempPathW(static_cast<DWORD>(folder.size()), folder.data()));
    return folder;
}

} // namespace

OctaveProcess::~OctaveProcess() {
    commandSocket = INVALID_SOCKET;
}

void OctaveProcess::abandon() {
    // Wine may keep the connection of a process that has ended.
    shutdown(commandSocket, SD_BOTH);
    OwnFolder::removeAll();
}

bool OctaveProcess::launch(std::wstring& error) {
    if (!OctaveProgram::find(programs_, error))
        return false;
    if (!listener_) {
        error = L"Could not open a port on 127.0.0.1 for Octave; check whether a firewall or a virus scanner "
                L"blocks it";
        return false;
    }
    SetEnvironmentVariableA(portVariable, std::to_string(listener_.port()).c_str());
    SetEnvironmentVariableA(tokenVariable, listener_.token().c_str());
    SetEnvironmentVariableA(codePageVariable, std::to_string(GetACP()).c_str());
    const std::wstring prefix = temporaryFolder() + folderPrefix;
    OwnFolder::removeAbandoned(prefix);
    if (!folder_.create(prefix + std::to_wstring(GetCurrentProcessId()) + L'-' + widen(listener_.token()))) {
        const DWORD code = GetLastError();
        error = L"Could not create a folder for Octave in " + temporaryFolder() + L" (error " +
                std::to_wstring(code) + L"); check the access rights of that folder";
        return false;
    }
    return startNext(error);
}

bool OctaveProcess::startNext(std::wstring& error) {
    while (started_ < programs_.size())
        if (programs_[started_++].start(engineFolder(), folder_.path(), process_, error))
            return true;
    return false;
}

bool OctaveProcess::waitUntilReady(std::wstring& error) {
    if (commands_)
        return true;
    do {
        if (auto connection = listener_.waitForCommandConnection(process_.get(), startTimeout)) {
            commands_ = std::move(*connection);
            commandSocket = commands_.socket();
            return true;
        }
        if (!process_ || WaitForSingleObject(process_.get(), 0) != WAIT_OBJECT_0) {
            error = L"Octave was started, but did not connect to 127.0.0.1 in 30 s: check whether a firewall "
                    L"or a virus scanner blocks it";
            return false;
        }
        error = L"Octave ended before it took commands: start " + program().path() + L" by hand to see why";
    } while (startNext(error));
    return false;
}

HRESULT OctaveProcess::execute(const std::wstring& command, std::wstring& output, std::wstring& error) {
    const StopWatch watch(
        [this] { static_cast<void>(commands_.send(MessageKind::stop, std::string_view())); });
    MessageHeader answer;
    std::string text;
    bool isAnswered =
        commands_.send(MessageKind::execute, narrow(command, CP_UTF8)) && commands_.readHeader(answer);
    if (isAnswered) {
        text.resize(answer.length);
        isAnswered = commands_.read(std::as_writable_bytes(std::span(text)));
    }
    if (!isAnswered) {
        error = isStopRequested() ? stopped : L"Octave ended before the command was done";
        return HRESULT_FROM_WIN32(ERROR_PROCESS_ABORTED);
    }
    isFit_ = answer.kind != MessageKind::lost;
    const bool isDone = answer.kind == MessageKind::result;
    (isDone ? output : error) = widen(text, CP_UTF8);
    return isDone ? S_OK : DISP_E_EXCEPTION;
}

} // namespace solvane::engine
