#pragma once

namespace solvane {

/// Sent by the main window to a tab when the model was replaced.
class DialogFunctions {
public:
    virtual void RefreshFromModel() = 0;

protected:
    ~DialogFunctions() = default;
};

} // namespace solvane
