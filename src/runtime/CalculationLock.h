#pragma once

namespace solvane {

/// Lets one run at a time proceed in this process. The lock is reentrant: a run that a paint message starts
/// inside another run's wait does not wait for itself. A waiting thread serves incoming calls of
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
