/// Reads a model's container: finds its files by name and unpacks them.
#pragma once

#include "com/Handle.h"
#include "com/StdioFile.h"

#include <minizip/unzip.h>

#include <cstdint>
#include <map>
#include <memory>
#include <string>

struct libdeflate_decompressor;

namespace solvane {

class ContainerReader {
public:
    explicit ContainerReader(const std::string& path);

    /// False for a file that is no zip. Nothing else may be called then.
    bool isOpen() const { return static_cast<bool>(zip_); }
    /// Names are compared without regard to case.
    bool has(const std::string& name) const;
    /// Opens a file for writing. Null on failure, of which `fault` may have the reason.
    using Open = StdioFile (*)(const std::string& path, const char*& fault);
    /// Writes the entry to the file `path`, which it deletes on failure.
    [[nodiscard]] bool extract(const std::string& name, const std::string& path, Open open,
                               std::string& error);

private:
    struct ZipPolicy {
        using Type = unzFile;
        static Type empty() { return nullptr; }
        static void close(Type zip) { unzClose(zip); }
    };
    struct DecompressorPolicy {
        using Type = libdeflate_decompressor*;
        static Type empty() { return nullptr; }
        static void close(Type decompressor);
    };
    /// Memory for one entry after another.
    class Memory {
    public:
        /// Null if there is not enough. What it held before is lost.
        char* ofSize(std::uint64_t size);

    private:
        std::unique_ptr<char[]> bytes_;
        std::uint64_t size_ = 0;
    };

    void readDirectory();
    /// Unpacks the current entry and writes it. Returns what failed, null on success.
    const char* unpack(const unz_file_info64& entry, StdioFile target);

    StdioFile file_;
    Unique<ZipPolicy> zip_; ///< the library's reader of the directory, on `file_`
    std::map<std::string, unz64_file_pos> places_;
    std::uint64_t size_ = 0;
    std::uint64_t remaining_ = 0; ///< the bytes that the container may still unpack to
    Unique<DecompressorPolicy> decompressor_;
    Memory packed_;
    Memory unpacked_;
};

} // namespace solvane
