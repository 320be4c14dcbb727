#include "PrivateModel.h"

#include "ModelContainer.h"
#include "ModelFile.h"
#include "com/CapeError.h"
#include "com/Failure.h"
#include "com/Handle.h"
#include "com/Text.h"
#include "unit/model/HostKind.h"
#include "unit/model/Unit.h"
#include "unit/model/UserMessage.h"

#include <array>

namespace solvane {

namespace {

constexpr char workaroundTitle[] = "AspenPlus persistence work-around:";

/// The file is in the process's current folder, which is the flowsheet's.
std::string privateModelPath(const Unit& unit) {
    std::array<char, 0x104> folder{};
    GetCurrentDirectoryA(static_cast<DWORD>(folder.size()), folder.data());
    return std::string(folder.data()) + '\\' + narrow(unit.componentName, CP_THREAD_ACP) + ".svm";
}

bool exists(const std::string& path) {
    WIN32_FIND_DATAA entry;
    return static_cast<bool>(FindHandle(FindFirstFileA(path.c_str(), &entry)));
}

void reportFailure(Unit& unit, const std::string& text) {
    showUserMessage(unit, text, workaroundTitle, MB_ICONERROR);
}

/// A file that could not be loaded may be intact, and only in use at the moment: renames it.
bool keepUnreadModel(Unit& unit, const std::string& path, std::string& error) {
    if (compareNoCase(widen(unit.unreadPrivateModel), widen(path)) != 0 || !exists(path))
        return true;
    std::string other;
    for (int number = 1; other.empty() || exists(other); ++number)
        other = path + ".unread" + std::to_string(number) + ".svm";
    if (!MoveFileA(path.c_str(), other.c_str()))
        return fail(error, "the file that could not be loaded cannot be renamed: " +
                               narrow(FormatHresultText(static_cast<HRESULT>(GetLastError()))));
    unit.unreadPrivateModel.clear();
    showUserMessage(unit, "The file that could not be loaded is kept as \"" + other + "\"", workaroundTitle,
                    MB_ICONWARNING);
    return true;
}

} // namespace

void LoadPrivateModel(Unit& unit, const ActivityScope& activity) {
    if (detectHost() != HostKind::aspenPlus || unit.workaroundDone || !unit.canHoldModel() ||
        !activity.isOutermost())
        return;
    unit.workaroundDone = true;
    const std::string path = privateModelPath(unit);
    std::string error;
    if (!exists(path) || ReadModelDocument(unit, path, error))
        return;
    unit.unreadPrivateModel = path;
    reportFailure(unit, "Loading private data failed; failed to load \"" + path + "\": " + error);
}

void StorePrivateModel(Unit& unit) {
    if (detectHost() != HostKind::aspenPlus || !unit.modelEdited)
        return;
    const std::string path = privateModelPath(unit);
    std::string error;
    if (!keepUnreadModel(unit, path, error) || !saveModelFile(unit, path, error))
        reportFailure(unit, "Storing private data failed; failed to save \"" + path + "\": " + error);
}

} // namespace solvane
