#include "WorkingFolder.h"

#include "AbandonedFolders.h"
#include "com/Failure.h"
#include "com/Module.h"
#include "com/StdioFile.h"

#include <array>
#include <utility>

namespace solvane {

namespace {

// Resources of type "MatlabFILE".
constexpr int runScriptResource = 204;
constexpr int defaultScriptResource = 206;

/// Writes a resource's bytes unchanged to a file of the folder.
bool placeResourceFile(const WorkingFolder& folder, int resourceId, const std::string& fileName,
                       std::string& error) {
    const HINSTANCE module = ComModule::current().instance;
    const HRSRC resource = FindResourceW(module, MAKEINTRESOURCEW(resourceId), L"MatlabFILE");
    if (!resource)
        return fail(error, "Internal error. Could not find resource for " + fileName);
    const HGLOBAL loaded = LoadResource(module, resource);
    const void* bytes = loaded ? LockResource(loaded) : nullptr;
    if (!bytes)
        return fail(error, "Internal error. Could not load resource for " + fileName);
    StdioFile file = openFile(folder.pathOf(fileName), "wb");
    if (!file)
        return fail(error, "File error: failed to place " + fileName +
                               " in temporary working folder; unable to open file for writing");
    const std::size_t size = SizeofResource(module, resource);
    const bool isWritten = std::fwrite(bytes, 1, size, file.get()) == size;
    return (closeWritten(std::move(file)) && isWritten) ||
           fail(error,
                "File error: failed to place " + fileName + " in temporary working folder; write error");
}

} // namespace

bool findTemporaryFolder(std::string& folder, std::string& error) {
    std::array<char, 1024> buffer{};
    const DWORD length = GetTempPathA(static_cast<DWORD>(buffer.size()), buffer.data());
    if (length == 0 || length >= buffer.size())
        return fail(error, "Failed to get a temporary folder name");
    folder.assign(buffer.data(), length);
    if (!folder.ends_with('\\'))
        folder += '\\';
    return true;
}

WorkingFolder::WorkingFolder(const std::string& temporaryFolder, const std::string& unitId,
                             std::string& error) {
    deleteAbandonedFolders(temporaryFolder);
    const std::string folder = temporaryFolder + unitId;
    if (!CreateDirectoryA(folder.c_str(), nullptr)) {
        error = "Failed to create a temporary working directory";
        return;
    }
    path_ = folder + '\\';
    hold_ = holdWorkingFolder(path_);
}

WorkingFolder::WorkingFolder(WorkingFolder&& other) noexcept
    : path_(std::exchange(other.path_, {})), hold_(std::move(other.hold_)) {}

WorkingFolder& WorkingFolder::operator=(WorkingFolder&& other) noexcept {
    if (this != &other) {
        reset();
        path_ = std::exchange(other.path_, {});
        hold_ = std::move(other.hold_);
    }
    return *this;
}

bool WorkingFolder::placeScripts(std::string& error) {
    return placeResourceFile(*this, runScriptResource, runScriptName, error) &&
           placeResourceFile(*this, defaultScriptResource, userScriptName, error);
}

bool WorkingFolder::contains(const char* fileName) const {
    return GetFileAttributesA(pathOf(fileName).c_str()) != INVALID_FILE_ATTRIBUTES;
}

bool WorkingFolder::isComplete() const {
    return contains(runScriptName);
}

bool WorkingFolder::restore(std::string& error) {
    if (!CreateDirectoryA(path_.c_str(), nullptr) && GetLastError() != ERROR_ALREADY_EXISTS)
        return fail(error, "Failed to create a temporary working directory");
    hold_.reset();
    hold_ = holdWorkingFolder(path_);
    return placeResourceFile(*this, runScriptResource, runScriptName, error) &&
           (contains(userScriptName) ||
            placeResourceFile(*this, defaultScriptResource, userScriptName, error));
}

void WorkingFolder::reset() {
    hold_.reset();
    if (!path_.empty())
        deleteFilesAndFolder(std::exchange(path_, {}));
}

} // namespace solvane
