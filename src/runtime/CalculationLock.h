#pragma once

namespace solvane {

/// Lets one run at a time proceed in this process. The lock is reentrant: a run that begins inside another
/// one, which waits for it, does not wait for itself. Such a run begins on the same thread, from a paint
/// message or a material, or on a thread of another apartment in a call of the outer run, as to its
/// materials. A waiting thread serves incoming calls of COM.
class CalculationLock {
public:
    CalculationLock();
    ~CalculationLock();
    CalculationLock(const CalculationLock&) = delete;
    CalculationLock& operator=(const CalculationLock&) = delete;

private:
    bool tookIt_ = false;
};

} // namespace solvane
