#include "UnitActivity.h"

#include "Unit.h"

#include <array>

namespace solvane {

namespace {

constexpr unsigned bits(auto... activities) {
    return (static_cast<unsigned>(activities) | ...);
}

using enum UnitActivity;

struct ActivityRule {
    UnitActivity activity;
    const wchar_t* isDoing; ///< of the unit
    const wchar_t* cannot;
    unsigned hinderedBy;
};

/// A refusal names the first of several conflicts. A save may begin during a run: only its own thread changes
/// what it reads. Half a model must not be saved or found valid, and lists must not be replaced while
/// somebody iterates over them.
constexpr std::array rules{
    ActivityRule{loading, L"is being loaded", L"load",
                 bits(calculating, running, validating, editing, loading, saving)},
    ActivityRule{calculating, L"is calculating", L"calculate",
                 bits(calculating, running, validating, loading)},
    ActivityRule{running, L"is running its script", L"run the script of", bits(running, loading)},
    ActivityRule{validating, L"is being validated", L"validate", bits(validating, loading)},
    ActivityRule{editing, L"has its window open", L"edit",
                 bits(calculating, running, validating, editing, loading, saving)},
    ActivityRule{saving, L"is being saved", L"save", bits(loading)},
};

} // namespace

bool mayBegin(const Unit& unit, UnitActivity activity, std::wstring& refusal) {
    for (const ActivityRule& rule : rules) {
        if (rule.activity != activity)
            continue;
        for (const ActivityRule& other : rules)
            if ((unit.activities & rule.hinderedBy & bits(other.activity)) != 0) {
                refusal = std::wstring(L"Cannot ") + rule.cannot + L" the unit while it " + other.isDoing +
                          L"; try again afterwards";
                return false;
            }
    }
    return true;
}

ActivityScope::ActivityScope(Unit& unit, UnitActivity activity) : unit_(&unit), former_(unit.activities) {
    unit_->activities |= bits(activity);
}

ActivityScope::~ActivityScope() {
    unit_->activities = former_;
    if (former_ == 0 && unit_->terminationAsked)
        unit_->stop();
}

} // namespace solvane
