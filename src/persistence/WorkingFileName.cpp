#include "WorkingFileName.h"

#include "com/Handle.h"
#include "com/Text.h"

#include <algorithm>
#include <array>
#include <cwchar>

namespace solvane {

namespace {

/// Windows finds devices with these names in any folder, whatever follows the first dot.
constexpr std::array devices{L"con", L"prn", L"aux", L"nul", L"conin$", L"conout$", L"clock$"};
/// The same if a digit follows, including the superscript ones.
constexpr std::array numberedDevices{L"com", L"lpt"};
constexpr std::wstring_view deviceNumbers = L"0123456789\u00B9\u00B2\u00B3";
/// Files that the unit itself keeps in its working folder and runs or reads. The script belongs to the model,
/// and the unit writes the file that it generates from it again before the next run.
constexpr std::array unitFiles{L"unit.xml", L"_unitOperationModel_.svm"};
/// Its scripts: Matlab and Octave prefer compiled forms of other extensions to the .m files.
constexpr std::array unitScripts{L"runUnit", L"initRun"};

constexpr char ownFile[] = "the name is reserved for one of the unit's own files";

auto equals(const std::wstring& text) {
    return [&text](const wchar_t* word) { return compareNoCase(text, word) == 0; };
}

bool isUnitFile(const std::wstring& name) {
    return std::ranges::any_of(unitFiles, equals(name)) ||
           std::ranges::any_of(unitScripts, equals(name.substr(0, name.find(L'.'))));
}

bool isDevice(const std::wstring& name) {
    std::wstring stem = name.substr(0, name.find(L'.'));
    stem.erase(stem.find_last_not_of(L' ') + 1);
    return std::ranges::any_of(devices, equals(stem)) ||
           (stem.size() == 4 && deviceNumbers.find(stem.back()) != std::wstring_view::npos &&
            std::ranges::any_of(numberedDevices, equals(stem.substr(0, 3))));
}

/// For a name, or for a folder in it.
const char* partFault(const std::wstring& part) {
    if (part.empty() || part == L"." || part == L".." || part.find(L':') != std::wstring::npos)
        return "the name leads out of the working folder";
    if (std::ranges::any_of(part, [](wchar_t c) { return c < 0x20 || std::wcschr(L"*?\"<>|", c); }))
        return "the name contains a character that file names cannot contain";
    if (part.ends_with(L'.') || part.ends_with(L' '))
        return "the name ends with a dot or a blank";
    return isDevice(part) ? "the name is reserved for a device" : nullptr;
}

/// For the path of a file that exists.
const char* existingFileFault(const std::string& path) {
    WIN32_FIND_DATAA file{};
    const FindHandle search(FindFirstFileA(path.c_str(), &file));
    const std::wstring found = widen(file.cFileName);
    // The system ignores the case of letters beyond ASCII too, by its own rules.
    if (search && isUnitFile(found))
        return ownFile;
    const std::wstring asked = widen(path);
    const std::wstring last = asked.substr(asked.find_last_of(L"\\/") + 1);
    return !search || CompareStringOrdinal(found.c_str(), -1, last.c_str(), -1, TRUE) == CSTR_EQUAL
               ? nullptr
               : "the name is the short form of another file's";
}

} // namespace

const char* workingFileNameFault(const std::string& name) {
    // Wide, as the system sees it: a byte that looks like a separator may be half a character.
    const std::wstring wide = widen(name);
    if (isUnitFile(wide))
        return ownFile;
    for (std::size_t start = 0;;) {
        const std::size_t separator = wide.find_first_of(L"\\/", start);
        if (const char* fault = partFault(wide.substr(start, separator - start)))
            return fault;
        if (separator == std::wstring::npos)
            return nullptr;
        start = separator + 1;
    }
}

StdioFile openWorkingFile(const std::string& path, const char*& fault) {
    // Most names are new. A question for one takes as long as creating it: the system may search the folder.
    StdioFile created = createFile(path);
    if (created || errno != EEXIST)
        return created;
    const char* existing = existingFileFault(path);
    if (!existing)
        return overwriteFile(path, "b");
    fault = existing;
    return created;
}

} // namespace solvane
