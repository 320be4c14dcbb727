#include "FileNames.h"

#include "com/Text.h"
#include "persistence/WorkingFileName.h"

#include <algorithm>
#include <array>

namespace solvane {

namespace {

constexpr std::array executableExtensions{L"exe", L"com", L"dll", L"msi"};
constexpr std::array scriptExtensions{L"bat", L"wsf", L"reg"};
constexpr std::array reservedNames{
    L"calc.m", L"runUnit.m", L"initRun.m", L"report.txt", L"_unitOperationModel_.svm", L"unit.xml",
};

template <std::size_t count>
bool holds(const std::array<const wchar_t*, count>& words, std::wstring_view text) {
    return std::ranges::any_of(words, [&](const wchar_t* word) { return compareNoCase(word, text) == 0; });
}

/// What follows the last point. The tables have no empty extension.
std::wstring_view extensionOf(std::wstring_view name) {
    const std::size_t point = name.rfind(L'.');
    return point == std::wstring_view::npos ? std::wstring_view{} : name.substr(point + 1);
}

} // namespace

bool isExecutableLike(std::wstring_view name) {
    return holds(executableExtensions, extensionOf(name));
}

bool isScriptLike(std::wstring_view name) {
    return holds(scriptExtensions, extensionOf(name));
}

bool isReservedFileName(std::wstring_view name) {
    return holds(reservedNames, name);
}

bool isInCodePage(const std::wstring& text) {
    return widen(narrow(text)) == text;
}

const char* fileNameFault(const std::wstring& name) {
    if (!isInCodePage(name))
        return "the name holds a character that the system's ANSI code page does not have";
    return workingFileNameFault(narrow(name));
}

} // namespace solvane
