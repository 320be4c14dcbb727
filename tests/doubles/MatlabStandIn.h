/// The test's side of the scripted Matlab: what it answers, and what it was asked.
#pragma once

#include "MatlabRegistration.h"
#include "ScriptedMatlab.h"
#include "com/Handle.h"
#include "com/Variant.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace solvane {

/// The outcome of one call of Execute; as it stands, a command that printed nothing.
struct MatlabAnswer {
    HRESULT result = S_OK;
    Variant value{};
};

inline MatlabAnswer printed(std::wstring_view text) {
    return {.value = Variant(text)};
}
inline MatlabAnswer failed(HRESULT result) {
    return {.result = result};
}

/// Registered for its lifetime. The functions are called on the units' worker threads; set them while no unit
/// is at work.
class MatlabStandIn final : private MatlabBehaviour {
public:
    MatlabStandIn();
    ~MatlabStandIn();
    MatlabStandIn(const MatlabStandIn&) = delete;
    MatlabStandIn& operator=(const MatlabStandIn&) = delete;

    MatlabRegistration registration;

    /// Called at each creation, before `creation` answers it.
    std::function<void()> onCreate;
    HRESULT creation = S_OK;
    HRESULT visibility = S_OK;
    /// Says of itself that it serves one client alone, as the engine does and Matlab does not.
    bool dedicated = false;
    /// Failures of GetIDsOfNames by name.
    std::map<std::wstring, HRESULT> unknownMembers;
    /// What a command prints that is none of the others.
    std::function<MatlabAnswer(const std::wstring& command)> onCommand;
    /// The script, which a unit runs in `folder`, with a trailing backslash.
    std::function<MatlabAnswer(const std::wstring& folder)> onRun;

    /// All calls so far, in order: "create", the commands, "Visible=" with the value, "release".
    std::vector<std::wstring> calls();
    void forgetCalls();

    /// The working folder of the unit that was started last, with a trailing backslash.
    std::wstring workingFolder();

private:
    HRESULT create() override;
    HRESULT findMember(const wchar_t* name) override;
    HRESULT execute(const wchar_t* command, VARIANT* result) override;
    bool isDedicated() override { return dedicated; }
    HRESULT putVisible(const VARIANT& value) override;
    void released() override;

    void note(const std::wstring& call);

    CriticalSection lock_;
    std::vector<std::wstring> calls_;
    std::wstring workingFolder_;
    std::map<DWORD, std::wstring> folders_; ///< where the `cd` of each thread led
};

} // namespace solvane
