#include "MatlabThread.h"

#include "AutomationCall.h"
#include "MatlabCreation.h"
#include "MatlabTurn.h"
#include "MexPlacement.h"
#include "com/Apartment.h"
#include "com/Border.h"
#include "com/CapeError.h"
#include "com/ComRef.h"
#include "com/Failure.h"
#include "com/Module.h"
#include "com/Text.h"
#include "unit/model/MatlabWorker.h"

#include <algorithm>
#include <optional>
#include <tuple>

namespace solvane {

namespace {

// Keeps units and processes from changing Matlab's path and working directory at the same moment.
constexpr wchar_t mutexName[] = L"SolvaneUnitOperationCalculationMutex";
constexpr wchar_t bell = 7;

class MatlabSession {
public:
    explicit MatlabSession(MatlabWorker& worker) : worker_(worker) {}

    bool start(std::wstring& error);
    bool run(std::wstring& error);
    /// Changes Matlab's directory away from the working folder. False if Matlab runs another unit's script:
    /// then it is in that unit's folder, and answers no call meanwhile, not even a release.
    bool leaveFolder();
    void end();

private:
    bool connect(std::wstring& error);
    bool create(std::wstring& error);
    bool preparePath(std::wstring& error);
    bool isReady(std::wstring& error);
    bool runScript(std::wstring& error);
    bool changeDirectory(std::wstring& error);
    /// Executes a command that prints nothing if it succeeds.
    bool executeSilent(const std::wstring& command, std::wstring& output);

    MatlabWorker& worker_;
    std::wstring startError_;
    bool isMatlabShared_ = false; ///< other clients may use Matlab too
    bool isMatlabDue_ = false;    ///< the next run starts one: its process ended, or was busy at the start
    // In this order: Matlab is released before the apartment is left.
    Handle mutex_;
    std::optional<Apartment> apartment_;
    ComRef<IDispatch> matlabApplication_;
};

// ---- start

bool MatlabSession::start(std::wstring& error) {
    if (connect(error))
        return true;
    startError_ = error;
    return false;
}

bool MatlabSession::connect(std::wstring& error) {
    mutex_.reset(CreateMutexW(nullptr, FALSE, mutexName)); // opens it where it exists
    if (!mutex_)
        return fail(error, L"Failed to create mutex for Matlab calculations");
    apartment_.emplace();
    // A shared Matlab answers after that run, which may be waiting for this unit.
    isMatlabDue_ = MatlabTurn::isRunInProgress();
    return isMatlabDue_ || (create(error) && preparePath(error));
}

bool MatlabSession::create(std::wstring& error) {
    CLSID classId;
    if (FAILED(CLSIDFromProgID(L"Matlab.Application", &classId)))
        // Prescribed text, misspelling included.
        return fail(error, L"Failed to get CLSDID for Matlab.Application; Matlab not installed?");
    const HRESULT created = createMatlabApplication(classId, matlabApplication_);
    if (FAILED(created))
        return fail(error, L"Failed to create Matlab application: " + FormatHresultText(created));
    isMatlabShared_ = !isServerDedicated(matlabApplication_.get());
    return true;
}

bool MatlabSession::preparePath(std::wstring& error) {
    const std::wstring modulePath = ComModule::current().path();
    const std::wstring moduleFolder = modulePath.substr(0, modulePath.rfind(L'\\'));
    const std::wstring workingFolder = widen(worker_.workingFolder.path());
    const std::wstring gatewayFolder = widen(mexFolder());

    const MutexHold hold(mutex_.get());
    std::wstring output;
    // Prescribed: the text ends with Matlab's output for the first folder, with the folder for the others.
    if (!executeSilent(L"addpath '" + moduleFolder + L"'", output))
        return fail(error, L"Failed to add to MATLAB path: " + output);
    for (const std::wstring& folder : {workingFolder, gatewayFolder})
        if (!executeSilent(L"addpath '" + folder + L"'", output))
            return fail(error, L"Failed to add to MATLAB path: " + folder);
    std::ignore = putProperty(output, matlabApplication_.get(), L"Visible", Variant(LONG{0}).get());
    return true;
}

bool MatlabSession::executeSilent(const std::wstring& command, std::wstring& output) {
    output.clear();
    return executeCommand(matlabApplication_.get(), command, output) && output.empty();
}

// ---- run

bool MatlabSession::run(std::wstring& error) {
    MatlabTurn turn;
    if (isMatlabShared_ && !turn.takeForRun(worker_.workerCancelEvent.get(), error))
        return false;
    if (!isReady(error))
        return false;
    if (runScript(error))
        return true;
    isMatlabDue_ = isServerGone(matlabApplication_.get());
    return false;
}

bool MatlabSession::isReady(std::wstring& error) {
    if (isMatlabDue_) {
        matlabApplication_.reset();
        if (!create(error) || !preparePath(error))
            return false;
        isMatlabDue_ = false;
    }
    if (!matlabApplication_) // Matlab did not start
        error = startError_;
    return static_cast<bool>(matlabApplication_);
}

bool MatlabSession::runScript(std::wstring& error) {
    if (!changeDirectory(error))
        return false;
    std::wstring output;
    if (!executeCommand(matlabApplication_.get(), L"runUnit", output))
        return fail(error, L"Failed to calculate: " + output);
    std::erase(output, bell);
    worker_.workerOutput = output;
    return true;
}

bool MatlabSession::changeDirectory(std::wstring& error) {
    const MutexHold hold(mutex_.get());
    std::wstring output;
    if (executeSilent(L"cd '" + widen(worker_.workingFolder.path()) + L"'", output))
        return true;
    return fail(error, L"Failed to change MATLAB working directory: " + output);
}

// ---- quit

bool MatlabSession::leaveFolder() {
    if (!matlabApplication_)
        return true;
    MatlabTurn turn;
    if (isMatlabShared_ && !turn.takeSoon())
        return false;
    std::wstring output;
    if (!executeCommand(matlabApplication_.get(), L"cd '" + widen(mexFolder()) + L"'", output))
        worker_.workerCommand = WorkerCommand::succeeded;
    return true;
}

void MatlabSession::end() {
    matlabApplication_.reset();
    apartment_.reset();
    mutex_.reset();
}

void carryOut(MatlabSession& session, MatlabWorker& worker) {
    std::wstring error;
    switch (worker.workerCommand) {
    case WorkerCommand::start:
        if (!session.start(error)) {
            worker.startupError = narrow(error);
            worker.startupOk = false;
            worker.workerCommand = WorkerCommand::failed;
        }
        break;
    case WorkerCommand::run:
        worker.workerCommand = WorkerCommand::succeeded;
        if (!session.run(error)) {
            worker.workerError = error;
            worker.workerCommand = WorkerCommand::failed;
        }
        break;
    default:
        break;
    }
}

/// Lets no exception leave the thread, so that the host's thread never waits in vain.
void carryOutGuarded(MatlabSession& session, MatlabWorker& worker) noexcept {
    const bool isStart = worker.workerCommand == WorkerCommand::start;
    try {
        carryOut(session, worker);
    } catch (...) {
        worker.workerCommand = WorkerCommand::failed;
        worker.workerError = L"out of memory";
        if (isStart) {
            worker.startupError = "out of memory";
            worker.startupOk = false;
        }
    }
}

/// The thread's loop. It must not touch `worker` after the last `workerDoneEvent`.
void serveUnit(MatlabWorker& worker) {
    const FloatingPointGuard floatingPoint;
    const HANDLE done = worker.workerDoneEvent.get();
    MatlabSession session(worker);
    for (;;) {
        WaitForSingleObject(worker.workerCommandEvent.get(), INFINITE);
        if (worker.workerCommand == WorkerCommand::quit) {
            // A busy Matlab is released after the event: it may be running the script of the waiting unit.
            if (session.leaveFolder())
                session.end();
            SetEvent(done);
            return;
        }
        carryOutGuarded(session, worker);
        SetEvent(done);
    }
}

DWORD WINAPI matlabThread(void* argument) {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS, reinterpret_cast<LPCWSTR>(&matlabThread),
                       &module);
    serveUnit(*static_cast<MatlabWorker*>(argument));
    // The host may unload the module as soon as the unit is destroyed, while this thread is still ending.
    FreeLibraryAndExitThread(module, 0);
}

} // namespace

Handle startMatlabThread(MatlabWorker& worker) {
    return Handle(CreateThread(nullptr, 0, matlabThread, &worker, 0, nullptr));
}

} // namespace solvane
