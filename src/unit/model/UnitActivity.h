/// What a unit is in the middle of. Each of these calls objects of the host or serves its messages, so the
/// host may call the unit again before it has ended: from a material, a property bag, a paint handler.
#pragma once

#include "com/ComRef.h"

#include <string>

namespace solvane {

class Unit;

/// Bits of Unit::activities.
enum class UnitActivity : unsigned {
    calculating = 1, ///< Calculate, from its validation to its end
    running = 2,     ///< a run of the script, of Calculate or of the window
    validating = 4,
    editing = 8, ///< the window is open
    loading = 16,
    saving = 32,
};

/// Whether the unit may begin this while it does what it does. False with a text.
[[nodiscard]] bool mayBegin(const Unit& unit, UnitActivity activity, std::wstring& refusal);

/// An activity for its lifetime. It keeps the unit alive, and a Terminate that comes meanwhile is carried out
/// when the outermost activity ends. The unit may be gone after that.
class ActivityScope {
public:
    ActivityScope(Unit& unit, UnitActivity activity);
    ~ActivityScope();
    ActivityScope(const ActivityScope&) = delete;
    ActivityScope& operator=(const ActivityScope&) = delete;

private:
    ComRef<Unit> unit_;
    unsigned former_;
};

} // namespace solvane
