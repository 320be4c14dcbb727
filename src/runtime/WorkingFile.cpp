#include "WorkingFile.h"

#include "com/Handle.h"
#include "com/Text.h"
#include "unit/model/Unit.h"

#include <cstring>
#include <new>

namespace solvane {

std::wstring readWorkingFile(const Unit& unit, const std::string& fileName) {
    const std::wstring failure = L"Unable to open \"" + widen(fileName) + L"\": ";
    const FileHandle file(CreateFileA(unit.workingFolder.pathOf(fileName).c_str(), GENERIC_READ, 0, nullptr,
                                      OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file)
        return failure + FormatHresultText(static_cast<HRESULT>(GetLastError()));
    DWORD sizeHigh = 0;
    const DWORD size = GetFileSize(file.get(), &sizeHigh);
    if (sizeHigh != 0)
        return failure + L"file is extremely large";
    std::string bytes;
    try {
        bytes.resize(std::size_t{size});
    } catch (const std::bad_alloc&) {
        return failure + L"not enough memory for buffered file read";
    }
    DWORD read = 0;
    if (!ReadFile(file.get(), bytes.data(), size, &read, nullptr))
        return failure + L"read error";
    bytes.resize(read);
    return widen(bytes.substr(0, bytes.find('\0')));
}

} // namespace solvane
