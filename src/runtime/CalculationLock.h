#pragma once

namespace solvane {

/// Lets one run at a time proceed in this process. A thread that holds the lock passes: a run that a paint
/// message starts inside another run's wait does not wait for itself. A thread that waits serves calls of
/// COM.
class CalculationLock {
public:
    CalculationLock();
    ~CalculationLock();
    CalculationLock(const CalculationLock&) = delete;
    CalculationLock& operator=(const CalculationLock&) = delete;

private:
    bool tookIt_;
};

} // namespace solvane
