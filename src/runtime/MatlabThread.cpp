#include "MatlabThread.h"

#include "AutomationCall.h"
#include "MatlabCreation.h"
#include "MatlabTurn.h"
#include "MexPlacement.h"
#include "com/Border.h"
#include "com/ComRef.h"
#include "com/Module.h"
#include "com/Text.h"
#include "unit/CSolvaneUnitOp.h"

#include <algorithm>
#include <utility>

namespace solvane {

namespace {

constexpr wchar_t mutexName[] = L"SolvaneUnitOperationCalculationMutex";
constexpr wchar_t bell = 7;

/// Holds the system-wide mutex that keeps units and processes from changing Matlab's path and working
/// directory at the same moment.
class MutexHold {
public:
    explicit MutexHold(HANDLE mutex) : mutex_(mutex) { WaitForSingleObject(mutex_, INFINITE); }
    ~MutexHold() { ReleaseMutex(mutex_); }
    MutexHold(const MutexHold&) = delete;
    MutexHold& operator=(const MutexHold&) = delete;

private:
    HANDLE mutex_;
};

class MatlabSession {
public:
    explicit MatlabSession(CSolvaneUnitOp& unit) : unit_(unit) {}
    ~MatlabSession() { end(); }
    MatlabSession(const MatlabSession&) = delete;
    MatlabSession& operator=(const MatlabSession&) = delete;

    bool start(std::wstring& error);
    bool run(std::wstring& error);
    /// Leads Matlab out of the working folder. False where it runs another unit's script, whose folder it is
    /// in: it answers nothing meanwhile, not even a release.
    bool leaveFolder();
    void end();

private:
    bool connect(std::wstring& error);
    bool create(std::wstring& error);
    bool preparePath(std::wstring& error);
    bool isReady(std::wstring& error);
    bool runScript(std::wstring& error);
    bool changeDirectory(std::wstring& error);
    /// A command that prints nothing when it works.
    bool executeSilent(const std::wstring& command, std::wstring& output);

    CSolvaneUnitOp& unit_;
    Handle mutex_;
    bool hasApartment_ = false;
    std::wstring startError_;
    bool isMatlabShared_ = false; ///< other clients may use it too
    bool isMatlabLost_ = false;   ///< its process ended under a run: the next run starts another
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
    if (!mutex_) {
        error = L"Failed to create mutex for Matlab calculations";
        return false;
    }
    hasApartment_ = SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED));
    return create(error) && preparePath(error);
}

bool MatlabSession::create(std::wstring& error) {
    CLSID classId;
    if (FAILED(CLSIDFromProgID(L"Matlab.Application", &classId))) {
        error = L"Failed to get CLSDID for Matlab.Application; Matlab not installed?";
        return false;
    }
    const HRESULT created = createMatlabApplication(classId, matlabApplication_);
    if (FAILED(created)) {
        error = L"Failed to create Matlab application: " + FormatHresultText(created);
        return false;
    }
    isMatlabShared_ = !isServerDedicated(matlabApplication_.get());
    return true;
}

bool MatlabSession::preparePath(std::wstring& error) {
    const std::wstring modulePath = ComModule::current().path();
    const std::wstring moduleFolder = modulePath.substr(0, modulePath.rfind(L'\\'));
    const std::wstring workingFolder = widen(unit_.workingFolder);
    const std::wstring gatewayFolder = widen(mexFolder());

    const MutexHold hold(mutex_.get());
    std::wstring output;
    // What went wrong is told by Matlab's words for the first folder, by the folder for the others.
    if (!executeSilent(L"addpath '" + moduleFolder + L"'", output)) {
        error = L"Failed to add to MATLAB path: " + output;
        return false;
    }
    for (const std::wstring& folder : {workingFolder, gatewayFolder})
        if (!executeSilent(L"addpath '" + folder + L"'", output)) {
            error = L"Failed to add to MATLAB path: " + folder;
            return false;
        }
    putProperty(output, matlabApplication_.get(), L"Visible", Variant(LONG{0}).get());
    return true;
}

bool MatlabSession::executeSilent(const std::wstring& command, std::wstring& output) {
    output.clear();
    return executeCommand(matlabApplication_.get(), command, output) && output.empty();
}

// ---- run

bool MatlabSession::run(std::wstring& error) {
    MatlabTurn turn;
    if (isMatlabShared_ && !turn.takeForRun(unit_.workerCancelEvent.get(), error))
        return false;
    if (!isReady(error))
        return false;
    if (runScript(error))
        return true;
    isMatlabLost_ = isServerGone(matlabApplication_.get());
    return false;
}

bool MatlabSession::isReady(std::wstring& error) {
    if (isMatlabLost_) {
        matlabApplication_.reset();
        if (!create(error) || !preparePath(error))
            return false;
        isMatlabLost_ = false;
    }
    if (!matlabApplication_) // Matlab did not start
        error = startError_;
    return static_cast<bool>(matlabApplication_);
}

bool MatlabSession::runScript(std::wstring& error) {
    if (!changeDirectory(error))
        return false;
    std::wstring output;
    if (!executeCommand(matlabApplication_.get(), L"runUnit", output)) {
        error = L"Failed to calculate: " + output;
        return false;
    }
    std::erase(output, bell);
    unit_.workerOutput = output;
    return true;
}

bool MatlabSession::changeDirectory(std::wstring& error) {
    const MutexHold hold(mutex_.get());
    std::wstring output;
    if (executeSilent(L"cd '" + widen(unit_.workingFolder) + L"'", output))
        return true;
    error = L"Failed to change MATLAB working directory: " + output;
    return false;
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
        unit_.workerCommand = WorkerCommand::succeeded;
    return true;
}

void MatlabSession::end() {
    matlabApplication_.reset();
    if (std::exchange(hasApartment_, false))
        CoUninitialize();
    mutex_.reset();
}

void carryOut(MatlabSession& session, CSolvaneUnitOp& unit) {
    std::wstring error;
    switch (unit.workerCommand) {
    case WorkerCommand::start:
        if (!session.start(error)) {
            unit.startupError = narrow(error);
            unit.startupOk = false;
            unit.workerCommand = WorkerCommand::failed;
        }
        break;
    case WorkerCommand::run:
        unit.workerCommand = WorkerCommand::succeeded;
        if (!session.run(error)) {
            unit.workerError = error;
            unit.workerCommand = WorkerCommand::failed;
        }
        break;
    default:
        break;
    }
}

/// The thread's frame: no exception leaves it, so the host's thread never waits in vain.
void carryOutGuarded(MatlabSession& session, CSolvaneUnitOp& unit) noexcept {
    const bool isStart = unit.workerCommand == WorkerCommand::start;
    try {
        carryOut(session, unit);
    } catch (...) {
        unit.workerCommand = WorkerCommand::failed;
        unit.workerError = L"out of memory";
        if (isStart) {
            unit.startupError = "out of memory";
            unit.startupOk = false;
        }
    }
}

/// The thread's work. `unit` must not be touched after the last `workerDoneEvent`.
void serveUnit(CSolvaneUnitOp& unit) {
    const FloatingPointGuard floatingPoint;
    const HANDLE done = unit.workerDoneEvent.get();
    MatlabSession session(unit);
    for (;;) {
        WaitForSingleObject(unit.workerCommandEvent.get(), INFINITE);
        if (unit.workerCommand == WorkerCommand::quit) {
            if (session.leaveFolder())
                session.end();
            SetEvent(
                done); // before the end where Matlab is busy: it may be with the script of who waits here
            return;
        }
        carryOutGuarded(session, unit);
        SetEvent(done);
    }
}

DWORD WINAPI matlabThread(void* argument) {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS, reinterpret_cast<LPCWSTR>(&matlabThread),
                       &module);
    serveUnit(*static_cast<CSolvaneUnitOp*>(argument));
    // The host may unload the module as soon as the unit is gone, while this thread is still on its way out.
    FreeLibraryAndExitThread(module, 0);
}

} // namespace

Handle startMatlabThread(CSolvaneUnitOp& unit) {
    return Handle(CreateThread(nullptr, 0, matlabThread, &unit, 0, nullptr));
}

} // namespace solvane
