#pragma once

namespace solvane {

/// By which the main window tells a tab that the model is another.
class DialogFunctions {
public:
    virtual void RefreshFromModel() = 0;

protected:
    ~DialogFunctions() = default;
};

} // namespace solvane
