#include "ModelContainer.h"

#include "ContainerReader.h"
#include "ModelLimits.h"
#include "ModelReader.h"
#include "ModelWords.h"
#include "ModelWriter.h"
#include "WorkingFileName.h"
#include "com/Failure.h"
#include "com/Handle.h"
#include "com/StdioFile.h"
#include "com/Text.h"
#include "unit/model/Unit.h"
#include "unit/model/UserMessage.h"

#include <minizip/zip.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <new>
#include <utility>

namespace solvane {

namespace {

constexpr char containerComment[] = "Solvane Unit Operation File";

struct ZipWriterPolicy {
    using Type = zipFile;
    static Type empty() { return nullptr; }
    static void close(Type zip) { zipClose(zip, nullptr); }
};
using ZipWriter = Unique<ZipWriterPolicy>;

/// Deletes the description, which is in the working folder only while a model is saved or loaded.
class DocumentOfThisCall {
public:
    explicit DocumentOfThisCall(const Unit& unit) : path_(unit.workingFolder.pathOf(modelDocument)) {}
    ~DocumentOfThisCall() { DeleteFileA(path_.c_str()); }
    DocumentOfThisCall(const DocumentOfThisCall&) = delete;
    DocumentOfThisCall& operator=(const DocumentOfThisCall&) = delete;

private:
    std::string path_;
};

// ---- saving

zip_fileinfo writtenNow() {
    SYSTEMTIME now;
    FILETIME time;
    WORD date = 0;
    WORD timeOfDay = 0;
    GetLocalTime(&now);
    SystemTimeToFileTime(&now, &time);
    FileTimeToDosDateTime(&time, &date, &timeOfDay);
    zip_fileinfo information{};
    information.dosDate = static_cast<uLong>(date) << 16 | timeOfDay;
    return information;
}

/// A full disk may show only when the last bytes leave the buffer, which closing alone does not report.
int closeContainer(void*, void* stream) {
    return closeWritten(StdioFile(static_cast<std::FILE*>(stream), std::fclose)) ? 0 : EOF;
}

ZipWriter openContainer(const std::string& path) {
    zlib_filefunc64_def files{};
    fill_fopen64_filefunc(&files);
    files.zclose_file = closeContainer;
    return ZipWriter(zipOpen2_64(path.c_str(), APPEND_STATUS_CREATE, nullptr, &files));
}

/// Adds the file's size to `total`.
bool AddFileToContainer(const Unit& unit, const std::string& name, zipFile zip, std::uint64_t& total,
                        std::string& error) {
    const auto failed = [&](const char* reason) {
        return fail(error, "Failed to add \"" + name + "\" to zip: " + reason);
    };
    const zip_fileinfo information = writtenNow();
    if (zipOpenNewFileInZip(zip, name.c_str(), &information, nullptr, 0, nullptr, 0, nullptr, Z_DEFLATED,
                            Z_DEFAULT_COMPRESSION) != ZIP_OK)
        return fail(error, "Failed to add file entry to zip file");
    const FileHandle file(CreateFileA(unit.workingFolder.pathOf(name).c_str(), GENERIC_READ, 0, nullptr,
                                      OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file)
        return failed("unable to re-open file");
    DWORD sizeHigh = 0;
    const DWORD size = GetFileSize(file.get(), &sizeHigh);
    if (sizeHigh != 0)
        return failed("file is extremely large");
    if (size == 0)
        return failed("file has zero size");
    const std::unique_ptr<char[]> bytes(new (std::nothrow) char[size]);
    if (!bytes)
        return fail(error, "out of memory");
    DWORD read = 0;
    if (!ReadFile(file.get(), bytes.get(), size, &read, nullptr) || read != size)
        return failed("read error");
    if (zipWriteInFileInZip(zip, bytes.get(), size) != ZIP_OK || zipCloseFileInZip(zip) != ZIP_OK)
        return failed("write error");
    total += size;
    return true;
}

// ---- loading

/// The description has a name's bytes as if they were characters, encoded as UTF-8: the entry's name consists
/// of those bytes.
std::string bytesOf(const std::string& name) {
    std::string bytes;
    for (const wchar_t character : widen(name, CP_UTF8)) {
        if (character > 0xFF)
            return name; // written by other software
        bytes += static_cast<char>(character);
    }
    return bytes;
}

std::uint64_t sizeOf(const std::string& path) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    GetFileAttributesExA(path.c_str(), GetFileExInfoStandard, &data);
    return std::uint64_t{data.nFileSizeHigh} << 32 | data.nFileSizeLow;
}

} // namespace

bool WriteModelDocument(Unit& unit, const std::string& path, std::string& error) {
    if (unit.additionalFiles.size() > modelLimits::files)
        return fail(error, "The model has more than the " + std::to_string(modelLimits::files) +
                               " files that a model file takes");
    const DocumentOfThisCall document(unit);
    if (!writeUnitDocument(unit, error))
        return false;
    ZipWriter zip = openContainer(path);
    if (!zip)
        return fail(error, "Failed to create zip file");
    std::uint64_t total = 0;
    const auto add = [&](const std::string& name) {
        return AddFileToContainer(unit, name, zip.get(), total, error);
    };
    if (!add(modelDocument) || !add(userScriptName))
        return false;
    for (const std::string& name : unit.additionalFiles) {
        if (const char* fault = workingFileNameFault(name))
            return fail(error, "Failed to add \"" + name + "\" to zip: " + fault);
        if (!add(name))
            return false;
    }
    if (zipClose(zip.release(), containerComment) != ZIP_OK)
        return fail(error, "Failed to complete zip file: write error");
    return total <= modelLimits::unpacked(sizeOf(path)) ||
           fail(error, std::string("Failed to complete zip file: ") + modelLimits::unpacksToTooMuch);
}

bool ReadModelDocument(Unit& unit, const std::string& path, std::string& error) {
    unit.clear();
    unit.clearReports();
    unit.loadWarnings.clear();
    {
        const DocumentOfThisCall document(unit);
        ContainerReader container(path);
        if (!container.isOpen())
            return fail(error, "Failed to open SVM file as ZIP file");
        const auto extract = [&](const std::string& name, ContainerReader::Open open) {
            return container.extract(name, unit.workingFolder.pathOf(name), open, error);
        };
        const auto replaced = [](const std::string& file, const char*&) { return overwriteFile(file, "b"); };
        const bool isRead = extract(userScriptName, replaced) && extract(modelDocument, replaced) &&
                            readUnitDocument(unit, error);
        // From here on, lists only the files that have been unpacked.
        std::vector<std::string> names = std::exchange(unit.additionalFiles, {});
        if (!isRead)
            return false;
        if (names.size() > modelLimits::files)
            return fail(error, "More files in xml data file than a model can have");
        for (std::string& name : names) {
            if (!container.has(name) && container.has(bytesOf(name)))
                name = bytesOf(name);
            if (const char* fault = workingFileNameFault(name))
                return fail(error, "Failed to read \"" + name + "\" in zipped document: " + fault);
            if (!extract(name, openWorkingFile))
                return false;
            unit.additionalFiles.push_back(name);
        }
    }
    if (!unit.loadWarnings.empty())
        showUserMessage(unit, unit.loadWarnings, "Solvane Unit Operation:", MB_ICONWARNING);
    return true;
}

} // namespace solvane
