#pragma once

#include "Container.h"
#include "HostStream.h"
#include "HostTest.h"
#include "HostedUnit.h"
#include "flowsheet/MessageBoxes.h"

#include <vector>

namespace solvane {

/// A unit that is loaded from containers and saved to them through a host's stream.
class ModelFileTest : public HostTest {
protected:
    HRESULT load(const std::string& container) {
        HostStream stream(container);
        return unit.as<IPersistStream>()->Load(&stream);
    }
    HRESULT load(const std::vector<Entry>& entries) { return load(zipOf(entries, temporary.path())); }
    /// A document around these elements, with a script.
    HRESULT loadElements(const std::string& elements) {
        return load({{"calc.m", "1;"}, {"unit.xml", unitDocument(elements)}});
    }

    /// The saved unit; empty if it cannot be saved.
    std::string saved() {
        HostStream stream;
        return SUCCEEDED(unit.as<IPersistStream>()->Save(&stream, TRUE)) ? stream.container() : "";
    }
    std::vector<Entry> savedEntries() { return entriesOf(saved(), temporary.path()); }

    /// The last failure, which is name and description at once.
    std::wstring failure() {
        const std::wstring description = unit.errorDescription();
        return unit.error().starts_with(description + L" | " + description) ? description : unit.error();
    }

    HostedUnit unit{module};
    std::vector<std::string> boxes; ///< "title text" of each message box
    host::MessageBoxes answers{
        [this](const std::string& title, const std::string& text) { boxes.push_back(title + " " + text); }};
};

} // namespace solvane
