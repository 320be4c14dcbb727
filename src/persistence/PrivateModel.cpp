#include "PrivateModel.h"

#include "ModelContainer.h"
#include "ModelFile.h"
#include "com/Handle.h"
#include "com/Text.h"
#include "unit/CSolvaneUnitOp.h"
#include "unit/HostKind.h"
#include "unit/UserMessage.h"

#include <array>

namespace solvane {

namespace {

/// In the process's current folder, which is the flowsheet's.
std::string privateModelPath(const CSolvaneUnitOp& unit) {
    std::array<char, 0x104> folder{};
    GetCurrentDirectoryA(static_cast<DWORD>(folder.size()), folder.data());
    return std::string(folder.data()) + '\\' + narrow(unit.componentName, CP_THREAD_ACP) + ".svm";
}

bool exists(const std::string& path) {
    WIN32_FIND_DATAA entry;
    return static_cast<bool>(FindHandle(FindFirstFileA(path.c_str(), &entry)));
}

void tellFailure(CSolvaneUnitOp& unit, const std::string& text) {
    tellUser(unit, text, "AspenPlus persistence work-around:", MB_ICONERROR);
}

} // namespace

void LoadPrivateModel(CSolvaneUnitOp& unit) {
    if (detectHost() != HostKind::aspenPlus || unit.workaroundDone)
        return;
    unit.workaroundDone = true;
    const std::string path = privateModelPath(unit);
    std::string error;
    if (exists(path) && !ReadModelDocument(unit, path, error))
        tellFailure(unit, "Loading private data failed; failed to load \"" + path + "\": " + error);
}

void StorePrivateModel(CSolvaneUnitOp& unit) {
    if (detectHost() != HostKind::aspenPlus || !unit.modelEdited)
        return;
    const std::string path = privateModelPath(unit);
    std::string error;
    if (!saveModelFile(unit, path, error))
        tellFailure(unit, "Storing private data failed; failed to save \"" + path + "\": " + error);
}

} // namespace solvane
