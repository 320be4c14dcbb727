#include "Container.h"

#include "Folders.h"
#include "com/Text.h"

#include <minizip/unzip.h>
#include <minizip/zip.h>

namespace solvane {

std::string zipOf(const std::vector<Entry>& entries, const std::wstring& folder) {
    const std::wstring path = folder + L"made.zip";
    const zipFile zip = zipOpen(narrow(path).c_str(), APPEND_STATUS_CREATE);
    for (const auto& [name, bytes] : entries) {
        const zip_fileinfo information{};
        zipOpenNewFileInZip(zip, name.c_str(), &information, nullptr, 0, nullptr, 0, nullptr, Z_DEFLATED,
                            Z_DEFAULT_COMPRESSION);
        zipWriteInFileInZip(zip, bytes.data(), static_cast<unsigned>(bytes.size()));
        zipCloseFileInZip(zip);
    }
    zipClose(zip, nullptr);
    std::string container = readFile(path);
    DeleteFileW(path.c_str());
    return container;
}

std::vector<Entry> entriesOf(const std::string& container, const std::wstring& folder) {
    const std::wstring path = folder + L"read.zip";
    writeFile(path, container);
    std::vector<Entry> entries;
    const unzFile zip = unzOpen(narrow(path).c_str());
    for (int state = zip ? unzGoToFirstFile(zip) : UNZ_ERRNO; state == UNZ_OK; state = unzGoToNextFile(zip)) {
        unz_file_info information{};
        std::string name(256, '\0');
        unzGetCurrentFileInfo(zip, &information, name.data(), 256, nullptr, 0, nullptr, 0);
        name.resize(information.size_filename);
        std::string bytes(information.uncompressed_size, '\0');
        unzOpenCurrentFile(zip);
        unzReadCurrentFile(zip, bytes.data(), static_cast<unsigned>(bytes.size()));
        unzCloseCurrentFile(zip);
        entries.emplace_back(name, bytes);
    }
    unzClose(zip);
    DeleteFileW(path.c_str());
    return entries;
}

std::string unitDocument(const std::string& elements) {
    return "<?xml version=\"1.0\" standalone=\"yes\"?>\n<UnitOperation>\n" + elements + "</UnitOperation>\n";
}

} // namespace solvane
