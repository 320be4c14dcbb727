/// A small unit operation that records how it is called. It copies its feed to its product.
#pragma once

#include "CapeOpen.h"

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

namespace solvane::host {

/// What the unit must do in a test, and what happened. One for all units of the process.
struct UnitLog {
    std::vector<std::string> calls; ///< names, in order
    std::vector<DWORD> threads;     ///< of each call
    std::wstring invalidMessage;    ///< makes Validate answer so
    std::wstring initializeFailure; ///< makes Initialize fail with this description
    std::wstring calculateFailure;
    std::wstring loadEntry; ///< what Load reports to the error log for the key "files"
    bool producesNothing = false;
    std::function<void()> inCalculate = [] {};
    int liveUnits = 0;
};
UnitLog& unitLog();

/// Registers the class id `recordingUnit` in this process for its lifetime. Clears the log.
class RecordingUnitClass {
public:
    RecordingUnitClass();
    ~RecordingUnitClass();
    RecordingUnitClass(const RecordingUnitClass&) = delete;
    RecordingUnitClass& operator=(const RecordingUnitClass&) = delete;

private:
    DWORD registration_ = 0;
};

inline constexpr char recordingUnit[] = "{5B6A8E55-0C0B-4C61-8B0A-1B9F6F3C7D11}";

} // namespace solvane::host
