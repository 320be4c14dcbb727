#include "ModelFile.h"

#include "ModelContainer.h"
#include "capeopen/CapeError.h"
#include "com/Text.h"

#include <windows.h>

namespace solvane {

bool saveModelFile(CSolvaneUnitOp& unit, const std::string& path, std::string& error) {
    const std::string part = path + ".part";
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
