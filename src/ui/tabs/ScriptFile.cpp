#include "ScriptFile.h"

#include "com/StdioFile.h"
#include "com/Text.h"
#include "ui/Messages.h"
#include "unit/model/Unit.h"

#include <array>
#include <cerrno>
#include <cstring>

namespace solvane {

namespace {

constexpr wchar_t fileTitle[] = L"Error:";

bool readAll(std::FILE* file, std::string& bytes) {
    std::array<char, 4096> block;
    while (const std::size_t count = std::fread(block.data(), 1, block.size(), file))
        bytes.append(block.data(), count);
    return std::ferror(file) == 0;
}

} // namespace

std::string ScriptFile::path() const {
    return unit_.workingFolder.pathOf(userScriptName);
}

bool ScriptFile::load(HWND owner) {
    isLoaded_ = false;
    refusal_.clear();
    const StdioFile file = openFile(path(), "rb");
    if (!file) {
        refuse(owner);
        return false;
    }
    loadedBytes_.clear();
    const bool isRead = readAll(file.get(), loadedBytes_);
    const bool isShown = view_.setText(widen(loadedBytes_)) && isRead;
    if (!isShown)
        showError(owner, L"An error occurred while reading the user script", fileTitle);
    view_.getText(loadedText_);
    isLoaded_ = true;
    return isShown;
}

bool ScriptFile::write(HWND owner) {
    // A script that could not be read to its end is not overwritten.
    if (!isLoaded_ || !IsWindowEnabled(view_.window()))
        return false;
    std::wstring text;
    bool isWritten = view_.getText(text);
    if (holdsRefusal(text))
        return false;
    unit_.scriptDirty = true;
    StdioFile file = openFile(path(), "wb");
    if (!file) {
        refuse(owner);
        return false;
    }
    // The view turns each line end into "\r\n" and holds only characters of the code page.
    const std::string bytes = text == loadedText_ ? loadedBytes_ : narrow(text);
    isWritten &= std::fwrite(bytes.data(), 1, bytes.size(), file.get()) == bytes.size();
    isWritten &= closeWritten(std::move(file));
    if (!isWritten)
        showError(owner, L"An error occurred while saving the user script", fileTitle);
    return isWritten;
}

bool ScriptFile::holdsRefusal(const std::wstring& text) const {
    // Some part of the message survives a few edits.
    constexpr std::size_t parts = 4;
    const std::size_t length = refusal_.size() / parts;
    for (std::size_t part = 0; length > 0 && part < parts; ++part)
        if (text.find(refusal_.substr(part * length, length)) != text.npos)
            return true;
    return false;
}

bool ScriptFile::isRefused() const {
    return !refusal_.empty() && GetWindowTextLengthW(view_.window()) == static_cast<int>(refusal_.size());
}

void ScriptFile::refuse(HWND owner) {
    refusal_ = L"Failed to open Matlab script: " + widen(std::strerror(errno));
    showError(owner, refusal_, fileTitle);
    view_.replaceText(refusal_);
}

} // namespace solvane
