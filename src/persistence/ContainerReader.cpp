#include "ContainerReader.h"

#include "ModelLimits.h"
#include "com/Failure.h"

#include <io.h>
#include <libdeflate.h>

#include <array>
#include <cstddef>
#include <new>
#include <utility>

namespace solvane {

namespace {

constexpr char readError[] = "read error in zip file";
constexpr char writeError[] = "write error";
constexpr std::string_view outOfMemory = "out of memory";

/// Has the library read the directory from a file that is open, and stays so for the entries' bytes.
unzFile openDirectory(std::FILE* file) {
    zlib_filefunc64_def files{};
    fill_fopen64_filefunc(&files);
    files.opaque = file;
    files.zopen64_file = [](void* opened, const void*, int) { return opened; };
    files.zclose_file = [](void*, void*) { return 0; };
    return unzOpen2_64(nullptr, &files);
}

std::string upperCase(std::string name) {
    for (char& c : name)
        if (c >= 'a' && c <= 'z')
            c = static_cast<char>(c - 'a' + 'A');
    return name;
}

bool readEntry(unzFile zip, unz_file_info64& entry) {
    return unzGetCurrentFileInfo64(zip, &entry, nullptr, 0, nullptr, 0, nullptr, 0) == UNZ_OK;
}

bool isPackedInAKnownWay(const unz_file_info64& entry) {
    constexpr uLong encrypted = 1;
    return (entry.flag & encrypted) == 0 &&
           (entry.compression_method == 0 || entry.compression_method == Z_DEFLATED);
}

} // namespace

void ContainerReader::DecompressorPolicy::close(Type decompressor) {
    libdeflate_free_decompressor(decompressor);
}

char* ContainerReader::Memory::ofSize(std::uint64_t size) {
    if (!bytes_ || size > size_) {
        bytes_.reset(); // first, to make room
        if (std::in_range<std::size_t>(size))
            bytes_.reset(new (std::nothrow) char[static_cast<std::size_t>(size)]);
        size_ = size;
    }
    return bytes_.get();
}

ContainerReader::ContainerReader(const std::string& path)
    : file_(openFile(path, "rb")),
      zip_(openDirectory(file_.get())),
      decompressor_(libdeflate_alloc_decompressor()) {
    if (!zip_)
        return;
    size_ = static_cast<std::uint64_t>(_filelengthi64(_fileno(file_.get())));
    remaining_ = modelLimits::unpacked(size_);
    readDirectory();
}

void ContainerReader::readDirectory() {
    std::array<char, 257> name{};
    for (int found = unzGoToFirstFile(zip_.get()); found == UNZ_OK; found = unzGoToNextFile(zip_.get())) {
        unz_file_info64 entry{};
        unz64_file_pos place{};
        if (unzGetCurrentFileInfo64(zip_.get(), &entry, name.data(), name.size(), nullptr, 0, nullptr, 0) !=
                UNZ_OK ||
            unzGetFilePos64(zip_.get(), &place) != UNZ_OK)
            return;
        if (entry.size_filename < name.size())              // a longer name is not a file's
            places_.emplace(upperCase(name.data()), place); // the first of equal names counts
    }
}

bool ContainerReader::has(const std::string& name) const {
    return places_.contains(upperCase(name));
}

bool ContainerReader::extract(const std::string& name, const std::string& path, Open open,
                              std::string& error) {
    const auto failed = [&](const std::string& reason) {
        return fail(error, "Failed to read \"" + name + "\" in zipped document" + reason);
    };
    const auto place = places_.find(upperCase(name));
    if (place == places_.end() || unzGoToFilePos64(zip_.get(), &place->second) != UNZ_OK)
        return fail(error, "File \"" + name + "\" not present in zipped document");
    unz_file_info64 entry{};
    if (!readEntry(zip_.get(), entry) || !isPackedInAKnownWay(entry))
        return failed(": it is encrypted, or packed in an unknown way");
    constexpr int raw = 1; // the library takes longer to unpack, since it does so in pieces
    if (unzOpenCurrentFile2(zip_.get(), nullptr, nullptr, raw) != UNZ_OK)
        return failed("");
    const char* fault = "failed to open file in temporary working folder";
    StdioFile target = open(path, fault);
    if (!target)
        return failed(std::string(": ") + fault);
    fault = unpack(entry, std::move(target));
    if (fault) {
        DeleteFileA(path.c_str());
        return std::string_view(fault) == outOfMemory ? fail(error, fault)
                                                      : failed(std::string(": ") + fault);
    }
    return true;
}

const char* ContainerReader::unpack(const unz_file_info64& entry, StdioFile target) {
    if (entry.compressed_size > size_)
        return readError;
    if (entry.uncompressed_size > remaining_)
        return modelLimits::unpacksToTooMuch;
    remaining_ -= entry.uncompressed_size;
    char* packed = packed_.ofSize(entry.compressed_size);
    if (!packed || !decompressor_)
        return outOfMemory.data();
    const auto packedSize = static_cast<std::size_t>(entry.compressed_size);
    const auto position = static_cast<long long>(unzGetCurrentFileZStreamPos64(zip_.get()));
    if (_fseeki64(file_.get(), position, SEEK_SET) != 0 ||
        std::fread(packed, 1, packedSize, file_.get()) != packedSize)
        return readError;
    const char* bytes = packed;
    const auto size = static_cast<std::size_t>(entry.uncompressed_size);
    if (entry.compression_method == Z_DEFLATED) {
        char* unpacked = unpacked_.ofSize(entry.uncompressed_size);
        if (!unpacked)
            return outOfMemory.data();
        if (libdeflate_deflate_decompress(decompressor_.get(), packed, packedSize, unpacked, size, nullptr) !=
            LIBDEFLATE_SUCCESS)
            return readError;
        bytes = unpacked;
    } else if (packedSize != size) {
        return readError;
    }
    if (libdeflate_crc32(0, bytes, size) != entry.crc)
        return readError;
    const bool isWritten = std::fwrite(bytes, 1, size, target.get()) == size;
    return closeOverwritten(std::move(target)) && isWritten ? nullptr : writeError;
}

} // namespace solvane
