#include "Steps.h"

#include "cases/FilePath.h"
#include "com/Handle.h"
#include "com/Text.h"

#include <array>
#include <vector>

namespace solvane::host {

namespace {

// The gateway's builds take half a megabyte; the rest is for the script's own files.
constexpr DWORD neededBytes = 4U << 20;

constexpr char anotherFolder[] = "Set the environment variables TMP and TEMP to a folder that exists and is "
                                 "writable, for instance C:\\Temp, and start the simulator again.";

/// Removed with the file in it.
class TrialFolder {
public:
    explicit TrialFolder(const std::wstring& place)
        : path_(place + L"SolvaneDoctor" + std::to_wstring(GetCurrentProcessId())),
          isMade_(CreateDirectoryW(path_.c_str(), nullptr)) {}
    ~TrialFolder() {
        if (isMade_)
            RemoveDirectoryW(path_.c_str());
    }
    TrialFolder(const TrialFolder&) = delete;
    TrialFolder& operator=(const TrialFolder&) = delete;

    explicit operator bool() const { return isMade_; }

    FileHandle makeFile() const {
        return FileHandle(CreateFileW((path_ + L"\\trial").c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                      FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr));
    }

private:
    std::wstring path_;
    BOOL isMade_;
};

bool hasRoom(HANDLE file) {
    const std::vector<char> bytes(neededBytes);
    DWORD written = 0;
    return WriteFile(file, bytes.data(), neededBytes, &written, nullptr) && written == neededBytes;
}

std::string freeText(const std::wstring& folder) {
    ULARGE_INTEGER left{};
    if (!GetDiskFreeSpaceExW(folder.c_str(), &left, nullptr, nullptr))
        return {};
    return ", " + std::to_string(left.QuadPart >> 20) + " MB free";
}

} // namespace

Finding lookAtTemporaryFolder(Machine& machine) {
    std::array<wchar_t, 1024> buffer{};
    const DWORD length = GetTempPathW(static_cast<DWORD>(buffer.size()), buffer.data());
    if (length == 0 || length >= buffer.size())
        return {"There is no temporary folder", anotherFolder};
    std::wstring& folder = machine.temporaryFolder;
    folder.assign(buffer.data(), length);
    if (!folder.ends_with(L'\\'))
        folder += L'\\';
    const std::string name = pathText(folder);

    std::error_code fault;
    if (!std::filesystem::is_directory(folder, fault))
        return {name + " does not exist", anotherFolder};
    if (widen(narrow(folder)) != folder)
        return {name + " has letters that Windows' code page " + std::to_string(GetACP()) + " does not know",
                anotherFolder};
    const TrialFolder trial(folder);
    const FileHandle file = trial ? trial.makeFile() : FileHandle();
    if (!file)
        return {name + " is not writable", anotherFolder};
    if (!hasRoom(file.get()))
        return {name + " is full", std::string("Free some space there. Or: ") + anotherFolder};
    return {name + freeText(folder), {}};
}

} // namespace solvane::host
