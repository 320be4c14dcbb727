// SolvaneEngineLink: the end of the automation server's command connection inside Octave.
//
//   SolvaneEngineLink ("connect", folder) connects to the server that started this Octave; removes the
//   folder,
//                                         if it is empty, when the server has ended
//   text = SolvaneEngineLink ("receive")  the next command, or [] once the server has ended
//   SolvaneEngineLink ("begin")           from the base workspace: the command is about to run there
//   SolvaneEngineLink ("send", text)      the text that the command printed
//   SolvaneEngineLink ("fail", text)      the error that it raised
//   SolvaneEngineLink ("lose", text)      why it is unknown what it did
//   SolvaneEngineLink ("visit", path)     Octave has just changed its folder, with that path
//   names = SolvaneEngineLink ("changes", folder, path)
//                                         the functions that Octave would read again if it changed its
//                                         folder, or [] if it must do that to find all others
//   known = SolvaneEngineLink ("meant", name, names)
//                                         which of the names, with blanks between them, is the closest to
//                                         this one; empty if none is close
//
// It stays loaded, with its connection, even if a script clears everything.

#include "FolderWatch.h"
#include "ProcessGroup.h"
#include "ScriptInterruption.h"
#include "channel/Hints.h"
#include "link/EngineClient.h"
#include "mex/MexFunctions.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iterator>
#include <mutex>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace {

using namespace solvane::engine;

// How long Octave may take to end by itself once the server has ended.
constexpr std::chrono::seconds grace(1);

// How long an interrupted script may take to end. It may catch the error.
constexpr std::chrono::milliseconds interruptionTime(800);

constexpr std::string_view notCarriedOut =
    "the command did not run: a function in the current folder, or elsewhere on the path, has the name of a "
    "function that Octave itself needs, such as evalin; rename it";

/// Whether the last command reached the base workspace.
bool hasBegun = false;

/// Whether Octave has noticed the end of the server, and ends by itself.
std::atomic<bool> isEnding = false;

/// Passes commands from the thread that listens to the server. The server sends the next command only after
/// the answer to the last.
class Inbox {
public:
    void put(std::optional<std::string> command) {
        const std::lock_guard guard(lock_);
        command_ = std::move(command);
        isFull_ = true;
        arrived_.notify_one();
    }
    /// Waits for the next command. Empty once the server has ended.
    std::optional<std::string> take() {
        std::unique_lock guard(lock_);
        isAwaited_ = true;
        awaited_.notify_one();
        arrived_.wait(guard, [this] { return isFull_; });
        isAwaited_ = false;
        isFull_ = !command_; // the end of the server is final
        return std::exchange(command_, std::nullopt);
    }
    /// Whether Octave has answered the last command within this time, and waits for the next.
    bool isAwaitedWithin(std::chrono::milliseconds time) {
        std::unique_lock guard(lock_);
        return awaited_.wait_for(guard, time, [this] { return isAwaited_ && !isFull_; });
    }

private:
    std::mutex lock_;
    std::condition_variable arrived_;
    std::condition_variable awaited_;
    std::optional<std::string> command_;
    bool isFull_ = false;
    bool isAwaited_ = false;
};

// Never destroyed: the listening thread runs until Octave's process ends.
EngineClient& server = *new EngineClient;
Inbox& inbox = *new Inbox;

FolderWatch folders;

/// Octave unloads its modules while it ends, even locked ones. The thread that waits for the server may wake
/// up after that, and needs its code.
void stayLoaded() {
#ifdef _WIN32
    HMODULE self;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_PIN,
                       reinterpret_cast<LPCWSTR>(&stayLoaded), &self);
#else
    Dl_info self;
    if (dladdr(reinterpret_cast<void*>(&stayLoaded), &self))
        dlopen(self.dli_fname, RTLD_NOW | RTLD_NODELETE);
#endif
}

/// Whether an error ended the command, so that Octave is fit for the next.
bool endsByError() {
    const bool hasEnded = interruptScript() && inbox.isAwaitedWithin(interruptionTime);
    forgetInterruption();
    return hasEnded;
}

/// Listens at all times: an endless script never asks for another command. If no error ends it, it is ended
/// with the process, and with the program that it may be waiting for, when the server asks for it or closes
/// the connection.
void listenToServer(const std::filesystem::path& folder) {
    std::thread([folder] {
        MessageKind kind{};
        bool isStopped = false;
        for (std::string command; !isStopped && server.receive(kind, command);) {
            if (kind == MessageKind::stop)
                isStopped = !endsByError();
            else
                inbox.put(std::move(command));
        }
        inbox.put(std::nullopt);
        std::error_code ignored;
        std::filesystem::remove(folder, ignored);
        if (!isStopped)
            std::this_thread::sleep_for(grace);
        if (isEnding)
            std::_Exit(1); // programs in the background go on
        endProcessGroup();
    }).detach();
}

bool connectToServer(const std::filesystem::path& folder, std::string& error) {
    if (!server.connect(commandRole, error)) {
        error = "SolvaneEngineLink: " + error;
        return false;
    }
    mexLock();
    stayLoaded();
    formProcessGroup();
    listenToServer(folder);
    return true;
}

mxArray* nextCommand() {
    hasBegun = false;
    const std::optional<std::string> command = inbox.take();
    isEnding = !command;
    if (!command)
        return mxCreateDoubleMatrix(0, 0, mxREAL);
    // An empty text would end the engine's loop.
    return mxCreateString(command->empty() ? " " : command->c_str());
}

/// If the server has ended, the next receive notices it.
void sendAnswer(MessageKind kind, std::string_view text) {
    static_cast<void>(server.send(kind, text));
}

void answer(std::string_view verb, std::string_view text) {
    if (!hasBegun)
        sendAnswer(MessageKind::lost, notCarriedOut);
    else if (verb == "send")
        sendAnswer(MessageKind::result, text);
    else
        sendAnswer(verb == "fail" ? MessageKind::failed : MessageKind::lost, text);
}

mxArray* changesIn(std::string_view folder, std::string_view path) {
    std::vector<std::string> names;
    if (!folders.isUpToDate(std::u8string(folder.begin(), folder.end()), path, names))
        return mxCreateDoubleMatrix(0, 0, mxREAL);
    mxArray* const cells = mxCreateCellMatrix(1, names.size());
    for (std::size_t i = 0; i < names.size(); ++i)
        mxSetCell(cells, i, mxCreateString(names[i].c_str()));
    return cells;
}

mxArray* meantIn(std::string_view names, std::string_view name) {
    std::istringstream words{std::string(names)};
    const std::vector<std::string> known{std::istream_iterator<std::string>(words), {}};
    return mxCreateString(solvane::closestName(known, name).c_str());
}

/// A text from Octave, whose characters are bytes.
std::string_view textOf(const mxArray* array) {
    return {static_cast<const char*>(mxGetData(array)), mxIsChar(array) ? mxGetNumberOfElements(array) : 0};
}

bool serve(mxArray* results[], int count, const mxArray* arguments[], std::string& error) {
    const std::string_view verb = count > 0 ? textOf(arguments[0]) : std::string_view();
    const std::string_view text = count > 1 ? textOf(arguments[1]) : std::string_view();
    const std::string_view more = count > 2 ? textOf(arguments[2]) : std::string_view();
    if (verb == "connect")
        return connectToServer(std::u8string(text.begin(), text.end()), error);
    if (verb == "receive") {
        results[0] = nextCommand();
        return true;
    }
    if (verb == "begin") {
        hasBegun = true;
        return true;
    }
    if (verb == "send" || verb == "fail" || verb == "lose") {
        answer(verb, text);
        return true;
    }
    if (verb == "visit") {
        folders.remember(text);
        return true;
    }
    if (verb == "changes") {
        results[0] = changesIn(text, more);
        return true;
    }
    if (verb == "meant") {
        results[0] = meantIn(more, text);
        return true;
    }
    error = "SolvaneEngineLink: only the automation server's own script calls this";
    return false;
}

} // namespace

/// There is always room for one result.
SOLVANE_MEX_EXPORT void mexFunction(int, mxArray* results[], int count, const mxArray* arguments[]) {
    // An error skips destructors: everything except the message must be destroyed before.
    static std::string error;
    bool ok = false;
    try {
        ok = serve(results, count, arguments, error);
    } catch (const std::exception& exception) {
        error = exception.what();
    }
    if (!ok)
        mexErrMsgTxt(error.c_str());
}
