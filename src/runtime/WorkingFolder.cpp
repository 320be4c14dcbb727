#include "WorkingFolder.h"

#include "AbandonedFolders.h"
#include "com/Module.h"
#include "com/StdioFile.h"
#include "unit/CSolvaneUnitOp.h"

#include <array>

namespace solvane {

bool createWorkingFolder(CSolvaneUnitOp& unit, std::string& error) {
    std::array<char, 1024> buffer{};
    const DWORD length = GetTempPathA(static_cast<DWORD>(buffer.size()), buffer.data());
    if (length == 0 || length >= buffer.size()) {
        error = "Failed to get a temporary folder name";
        return false;
    }
    unit.terminated = false;
    std::string temporaryFolder(buffer.data(), length);
    if (!temporaryFolder.ends_with('\\'))
        temporaryFolder += '\\';
    deleteAbandonedFolders(temporaryFolder);
    const std::string folder = temporaryFolder + unit.unitId;
    if (!CreateDirectoryA(folder.c_str(), nullptr)) {
        error = "Failed to create a temporary working directory";
        return false;
    }
    unit.workingFolder = folder + '\\';
    unit.workingFolderHold = holdWorkingFolder(unit.workingFolder);
    return true;
}

bool restoreWorkingFolder(CSolvaneUnitOp& unit, std::string& error) {
    const auto exists = [&](const char* file) {
        return GetFileAttributesA((unit.workingFolder + file).c_str()) != INVALID_FILE_ATTRIBUTES;
    };
    if (exists("runUnit.m"))
        return true;
    if (!CreateDirectoryA(unit.workingFolder.c_str(), nullptr) && GetLastError() != ERROR_ALREADY_EXISTS) {
        error = "Failed to create a temporary working directory";
        return false;
    }
    unit.workingFolderHold.reset();
    unit.workingFolderHold = holdWorkingFolder(unit.workingFolder);
    unit.scriptDirty = true;
    return placeResourceFile(unit, runScriptResource, "runUnit.m", error) &&
           (exists("calc.m") || placeResourceFile(unit, defaultScriptResource, "calc.m", error));
}

void deleteWorkingFolder(CSolvaneUnitOp& unit) {
    unit.workingFolderHold.reset();
    if (!unit.workingFolder.empty())
        deleteFilesAndFolder(unit.workingFolder);
}

bool placeResourceFile(const CSolvaneUnitOp& unit, int resourceId, const std::string& fileName,
                       std::string& error) {
    const HINSTANCE module = ComModule::current().instance;
    const HRSRC resource = FindResourceW(module, MAKEINTRESOURCEW(resourceId), L"MatlabFILE");
    if (!resource) {
        error = "Internal error. Could not find resource for " + fileName;
        return false;
    }
    const HGLOBAL loaded = LoadResource(module, resource);
    const void* bytes = loaded ? LockResource(loaded) : nullptr;
    if (!bytes) {
        error = "Internal error. Could not load resource for " + fileName;
        return false;
    }
    StdioFile file = openFile(unit.workingFolder + fileName, "wb");
    if (!file) {
        error = "File error: failed to place " + fileName +
                " in temporary working folder; unable to open file for writing";
        return false;
    }
    const std::size_t size = SizeofResource(module, resource);
    const bool isWritten = std::fwrite(bytes, 1, size, file.get()) == size;
    if (!closeWritten(std::move(file)) || !isWritten) {
        error = "File error: failed to place " + fileName + " in temporary working folder; write error";
        return false;
    }
    return true;
}

} // namespace solvane
