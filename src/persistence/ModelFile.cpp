#include "ModelFile.h"

#include "ModelContainer.h"
#include "com/CapeError.h"
#include "com/Text.h"

#include <windows.h>

namespace solvane {

namespace {

/// As long as the path itself, which may have the system's maximum length; never an existing file.
std::string unusedPathBeside(const std::string& path) {
    std::string beside = path;
    for (const char last : std::string_view("~_0123456789")) {
        beside.back() = last;
        if (GetFileAttributesA(beside.c_str()) == INVALID_FILE_ATTRIBUTES)
            return beside;
    }
    return {};
}

} // namespace

bool saveModelFile(Unit& unit, const std::string& path, std::string& error) {
    const std::string part = unusedPathBeside(path);
    if (WriteModelDocument(unit, part, error)) {
        if (MoveFileExA(part.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
            return true;
        error =
            "Failed to replace the file: " + narrow(FormatHresultText(static_cast<HRESULT>(GetLastError())));
    }
    DeleteFileA(part.c_str());
    return false;
}

} // namespace solvane
