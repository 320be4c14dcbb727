/// A unit's state without the interfaces of the product, for tests of the rooms that work on it.
#pragma once

#include "com/Object.h"
#include "com/StdioFile.h"
#include "com/Text.h"
#include "unit/model/Unit.h"

#include <array>

namespace solvane {

class BareUnit : public Unit {
public:
    static std::span<const InterfaceEntry> interfaceTable() {
        static constexpr std::array table{interfaceEntry<BareUnit, ECapeRoot>()};
        return table;
    }
    HRESULT FinalConstruct() { return S_OK; }
    HRESULT stop() override {
        releasePorts();
        return S_OK;
    }

    static ComRef<BareUnit> create() { return ComRef<BareUnit>(new CComObject<BareUnit>()); }

    /// A working folder of that name in the folder, with the script.
    void makeWorkingFolder(const std::wstring& parent, const char* name, const std::string& script) {
        terminated = false;
        std::string error;
        workingFolder = WorkingFolder(narrow(parent), name, error);
        StdioFile file = openFile(workingFolder.pathOf(userScriptName), "wb");
        std::fputs(script.c_str(), file.get());
    }
};

} // namespace solvane
