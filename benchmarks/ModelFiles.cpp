#include "ModelFiles.h"

#include "Folders.h"
#include "HostStream.h"
#include "HostedUnit.h"
#include "MatlabStandIn.h"
#include "Verdict.h"

#include <zlib.h>

#include <cstdio>
#include <random>

namespace solvane {

namespace {

constexpr int turns = 8;
constexpr std::size_t fileCount = 10;
constexpr std::size_t fileSize = 1U << 20;

/// A table of measured values, as users keep beside their scripts.
std::string tableOfNumbers(unsigned seed) {
    std::mt19937 random(seed);
    std::string text;
    while (text.size() < fileSize) {
        char line[64];
        std::snprintf(line, sizeof line, "%.2f,%.4f,%u\n", 280 + static_cast<double>(random() % 10000) / 100,
                      static_cast<double>(random() % 100000) / 1e4, static_cast<unsigned>(random() % 100));
        text += line;
    }
    text.resize(fileSize);
    return text;
}

std::string deflated(const std::string& bytes) {
    uLongf size = compressBound(static_cast<uLong>(bytes.size()));
    std::string packed(size, '\0');
    compress2(reinterpret_cast<Bytef*>(packed.data()), &size, reinterpret_cast<const Bytef*>(bytes.data()),
              static_cast<uLong>(bytes.size()), Z_DEFAULT_COMPRESSION);
    packed.resize(size);
    return packed;
}

bool inflates(const std::string& packed, std::string& bytes) {
    uLongf size = static_cast<uLongf>(bytes.size());
    return uncompress(reinterpret_cast<Bytef*>(bytes.data()), &size,
                      reinterpret_cast<const Bytef*>(packed.data()),
                      static_cast<uLong>(packed.size())) == Z_OK;
}

} // namespace

bool compareModelFiles() {
    const TemporaryFolder temporary;
    MatlabStandIn matlab;
    const UnitModule module;
    const HostedUnit unit(module);
    ModelBag bag;
    bag.script("1;");
    std::vector<std::string> files;
    for (unsigned i = 0; i < fileCount; ++i) {
        files.push_back(tableOfNumbers(i));
        bag.file("table" + std::to_string(i) + ".csv", files.back());
    }
    if (FAILED(unit.load(bag))) {
        std::printf("  the model can't be made\n");
        return false;
    }
    const auto persistence = unit.as<IPersistStream>();
    std::vector<double> saving, deflating, loading, replacing, inflating, moving;
    std::string unpacked(fileSize, '\0');
    bool isDone = true;
    for (int turn = 0; turn <= turns; ++turn) {
        HostStream stream;
        std::vector<std::string> packed;
        const double save = microseconds([&] { isDone &= persistence->Save(&stream, TRUE) == S_OK; });
        const double deflate = microseconds([&] {
            for (const std::string& file : files)
                packed.push_back(deflated(file));
        });
        const HostedUnit fresh(module);
        const auto freshPersistence = fresh.as<IPersistStream>();
        const double load = microseconds([&] { isDone &= freshPersistence->Load(&stream) == S_OK; });
        stream.position = 0;
        const double replace = microseconds([&] { isDone &= persistence->Load(&stream) == S_OK; });
        const double inflate = microseconds([&] {
            for (const std::string& file : packed)
                isDone &= inflates(file, unpacked);
        });
        const std::string container = stream.container();
        uLong sum = 0;
        const double move = microseconds([&] {
            writeFile(temporary.path() + L"container", container);
            isDone &= readFile(temporary.path() + L"container") == container;
            for (std::size_t i = 0; i < files.size(); ++i) {
                sum += crc32(0, reinterpret_cast<const Bytef*>(files[i].data()),
                             static_cast<uInt>(files[i].size()));
                writeFile(temporary.path() + L"table" + std::to_wstring(i), files[i]);
            }
        });
        isDone &= sum != 0;
        if (turn == 0) // warms up
            continue;
        saving.push_back(save);
        deflating.push_back(deflate);
        loading.push_back(load);
        replacing.push_back(replace);
        inflating.push_back(inflate);
        moving.push_back(move);
    }
    if (!isDone) {
        std::printf("  saving or loading failed\n");
        return false;
    }
    std::printf("  milliseconds: write and read the container, sum and write the files alone %.1f\n",
                median(moving) / 1e3);
    bool isMet = printAtMost("saving 10 MB of files / deflating them in memory", {saving, deflating}, 1.3);
    isMet &= printAtMost("loading 10 MB of files / inflating them in memory", {loading, inflating}, 1.3);
    isMet &= printAtMost("loading 10 MB of files in place of others / inflating them in memory",
                         {replacing, inflating}, 1.5);
    return isMet;
}

} // namespace solvane
