/// What a unit is doing. Each activity calls objects of the host or serves its messages, so the host may call
/// the unit again before the activity has ended: from a material, a property bag, a paint handler.
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

/// Whether the unit may begin this activity during its current ones. False with a text.
[[nodiscard]] bool mayBegin(const Unit& unit, UnitActivity activity, std::wstring& refusal);

/// An activity for its lifetime. It keeps the unit alive and defers a Terminate to the end of the outermost
/// activity. The unit may no longer exist after that.
class ActivityScope {
public:
    ActivityScope(Unit& unit, UnitActivity activity);
    ~ActivityScope();
    ActivityScope(const ActivityScope&) = delete;
    ActivityScope& operator=(const ActivityScope&) = delete;

    /// Whether the unit did nothing else when this activity began.
    bool isOutermost() const { return former_ == 0; }

private:
    ComRef<Unit> unit_;
    unsigned former_;
};

} // namespace solvane
