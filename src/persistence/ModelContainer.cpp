#include "ModelContainer.h"

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

#include <minizip/unzip.h>
#include <minizip/zip.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <new>
#include <utility>

namespace solvane {

namespace {

constexpr char containerComment[] = "Solvane Unit Operation File";
constexpr char unpacksToTooMuch[] = "the model unpacks to more than a model can hold";

struct ZipWriterPolicy {
    using Type = zipFile;
    static Type empty() { return nullptr; }
    static void close(Type zip) { zipClose(zip, nullptr); }
};
struct ZipReaderPolicy {
    using Type = unzFile;
    static Type empty() { return nullptr; }
    static void close(Type zip) { unzClose(zip); }
};
using ZipWriter = Unique<ZipWriterPolicy>;
using ZipReader = Unique<ZipReaderPolicy>;

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

/// The positions of a container's entries, by name, ignoring case. The library's own search reads through the
/// container for each entry.
class ContainerEntries {
public:
    explicit ContainerEntries(unzFile zip) : zip_(zip) {
        std::array<char, 257> name{};
        for (int found = unzGoToFirstFile(zip); found == UNZ_OK; found = unzGoToNextFile(zip)) {
            unz_file_info entry{};
            unz_file_pos place{};
            if (unzGetCurrentFileInfo(zip, &entry, name.data(), name.size(), nullptr, 0, nullptr, 0) !=
                    UNZ_OK ||
                unzGetFilePos(zip, &place) != UNZ_OK)
                return;
            if (entry.size_filename < name.size())              // a longer name is not a file's
                places_.emplace(upperCase(name.data()), place); // the first of equal names counts
        }
    }

    /// Makes the entry the container's current one. False if it does not exist.
    bool find(const std::string& name) const {
        const auto found = places_.find(upperCase(name));
        if (found == places_.end())
            return false;
        unz_file_pos place = found->second;
        return unzGoToFilePos(zip_, &place) == UNZ_OK;
    }

private:
    static std::string upperCase(std::string name) {
        for (char& c : name)
            if (c >= 'a' && c <= 'z')
                c = static_cast<char>(c - 'a' + 'A');
        return name;
    }

    unzFile zip_;
    std::map<std::string, unz_file_pos> places_;
};

/// For any other entry, and for an encrypted one, the library would return the packed bytes.
bool isReadable(unzFile zip) {
    constexpr uLong encrypted = 1;
    unz_file_info entry{};
    return unzGetCurrentFileInfo(zip, &entry, nullptr, 0, nullptr, 0, nullptr, 0) == UNZ_OK &&
           (entry.flag & encrypted) == 0 &&
           (entry.compression_method == 0 || entry.compression_method == Z_DEFLATED);
}

/// What the unpacking of a container's entries shares.
struct Unpacking {
    std::uint64_t remaining; ///< the bytes that the container may still unpack to
    /// References of packed data into an earlier piece take longer: by the kilobyte, files take a fifth
    /// longer, by 64 kB a twentieth.
    std::vector<char> piece = std::vector<char>(0x40000);
};

/// Writes the container's current entry to the file. Returns what failed, null on success.
const char* unpack(unzFile zip, StdioFile file, Unpacking& unpacking) {
    static constexpr char readError[] = "read error in zip file";
    static constexpr char writeError[] = "write error";
    std::vector<char>& piece = unpacking.piece;
    while (const int count = unzReadCurrentFile(zip, piece.data(), static_cast<unsigned>(piece.size()))) {
        if (count < 0)
            return readError;
        const auto size = static_cast<std::size_t>(count);
        if (size > unpacking.remaining)
            return unpacksToTooMuch;
        unpacking.remaining -= size;
        if (std::fwrite(piece.data(), 1, size, file.get()) != size)
            return writeError;
    }
    if (!closeWritten(std::move(file)))
        return writeError;
    // A truncated entry ends like any other, and a wrong checksum shows only when a complete entry is
    // closed.
    return unzeof(zip) == 1 && unzCloseCurrentFile(zip) == UNZ_OK ? nullptr : readError;
}

/// Deletes a file that fails.
bool ExtractFromContainer(const Unit& unit, unzFile zip, const ContainerEntries& entries,
                          const std::string& name, Unpacking& unpacking, std::string& error) {
    const auto failed = [&](const std::string& reason) {
        return fail(error, "Failed to read \"" + name + "\" in zipped document" + reason);
    };
    if (!entries.find(name))
        return fail(error, "File \"" + name + "\" not present in zipped document");
    if (!isReadable(zip))
        return failed(": it is encrypted, or packed in an unknown way");
    if (unzOpenCurrentFile(zip) != UNZ_OK)
        return failed("");
    const std::string path = unit.workingFolder.pathOf(name);
    StdioFile file = openFile(path, "wb");
    if (!file)
        return failed(": failed to open file in temporary working folder");
    if (const char* fault = unpack(zip, std::move(file), unpacking)) {
        DeleteFileA(path.c_str());
        return failed(std::string(": ") + fault);
    }
    return true;
}

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
           fail(error, std::string("Failed to complete zip file: ") + unpacksToTooMuch);
}

bool ReadModelDocument(Unit& unit, const std::string& path, std::string& error) {
    unit.clear();
    unit.clearReports();
    unit.loadWarnings.clear();
    {
        const DocumentOfThisCall document(unit);
        const ZipReader zip(unzOpen(path.c_str()));
        if (!zip)
            return fail(error, "Failed to open SVM file as ZIP file");
        Unpacking unpacking{modelLimits::unpacked(sizeOf(path))};
        const ContainerEntries entries(zip.get());
        const auto extract = [&](const std::string& name) {
            return ExtractFromContainer(unit, zip.get(), entries, name, unpacking, error);
        };
        const bool isRead =
            extract(userScriptName) && extract(modelDocument) && readUnitDocument(unit, error);
        // From here on, lists only the files that have been unpacked.
        std::vector<std::string> names = std::exchange(unit.additionalFiles, {});
        if (!isRead)
            return false;
        if (names.size() > modelLimits::files)
            return fail(error, "More files in xml data file than a model can have");
        for (std::string& name : names) {
            if (!entries.find(name) && entries.find(bytesOf(name)))
                name = bytesOf(name);
            if (const char* fault = workingFileFault(unit.workingFolder.path(), name))
                return fail(error, "Failed to read \"" + name + "\" in zipped document: " + fault);
            if (!extract(name))
                return false;
            unit.additionalFiles.push_back(name);
        }
    }
    if (!unit.loadWarnings.empty())
        showUserMessage(unit, unit.loadWarnings, "Solvane Unit Operation:", MB_ICONWARNING);
    return true;
}

} // namespace solvane
