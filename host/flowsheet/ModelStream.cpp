#include "ModelStream.h"

#include "UnitCalls.h"
#include "com/Border.h"
#include "com/Object.h"
#include "com/ReadWriteStream.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace solvane::host {

namespace {

/// Bytes in memory, with no more than the streams of real hosts offer: a short read succeeds, and nothing
/// but reading and writing in order works.
class MemoryStream : public ReadWriteStream, public CComObjectRoot {
public:
    std::string bytes;

    static std::span<const InterfaceEntry> interfaceTable() {
        static constexpr std::array table{interfaceEntry<MemoryStream, IStream>(),
                                          interfaceEntry<MemoryStream, ISequentialStream>()};
        return table;
    }

    STDMETHODIMP Read(void* target, ULONG size, ULONG* done) override {
        if (!target)
            return STG_E_INVALIDPOINTER;
        const auto count = static_cast<ULONG>(std::min<std::size_t>(size, bytes.size() - place_));
        std::memcpy(target, bytes.data() + place_, count);
        place_ += count;
        if (done)
            *done = count;
        return S_OK;
    }
    STDMETHODIMP Write(const void* source, ULONG count, ULONG* done) override {
        return border([&]() -> HRESULT {
            if (!source)
                return STG_E_INVALIDPOINTER;
            bytes.append(static_cast<const char*>(source), count);
            if (done)
                *done = count;
            return S_OK;
        });
    }

private:
    std::size_t place_ = 0;
};

/// The count of bytes, which precedes them in the stream, little-endian like the machine.
using Length = std::uint32_t;

bool hasStreams(const ComRef<IPersistStream>& persistence, std::string& error) {
    if (!persistence)
        error = "The unit has no model files: it has no IPersistStream";
    return static_cast<bool>(persistence);
}

} // namespace

bool loadModelFile(ICapeUnit* unit, const ModelFile& file, std::string& error) {
    const auto persistence = queryInterface<IPersistStream>(unit);
    if (!hasStreams(persistence, error))
        return false;
    const auto length = static_cast<Length>(file.bytes.size());
    const ComRef stream(new CComObject<MemoryStream>());
    stream->bytes.assign(reinterpret_cast<const char*>(&length), sizeof length);
    stream->bytes += file.bytes;
    const HRESULT result = persistence->Load(stream.get());
    if (FAILED(result))
        error = "Model file \"" + file.name + "\": " + callFailure("Load", unit, result);
    return SUCCEEDED(result);
}

bool saveModelFile(ICapeUnit* unit, std::string& bytes, std::string& error) {
    const auto persistence = queryInterface<IPersistStream>(unit);
    if (!hasStreams(persistence, error))
        return false;
    ULARGE_INTEGER announced{};
    HRESULT result = persistence->GetSizeMax(&announced);
    if (FAILED(result))
        return callFailed(error, "GetSizeMax", unit, result);
    const ComRef stream(new CComObject<MemoryStream>());
    result = persistence->Save(stream.get(), TRUE);
    if (FAILED(result))
        return callFailed(error, "Save", unit, result);
    const std::string& written = stream->bytes;
    Length length = 0;
    std::memcpy(&length, written.data(), std::min(written.size(), sizeof length));
    if (written.size() != sizeof length + length || written.size() != announced.QuadPart) {
        error = "The unit announced " + std::to_string(announced.QuadPart) + " bytes of a model but wrote " +
                std::to_string(written.size()) + ", " + std::to_string(length) +
                " according to its own count";
        return false;
    }
    bytes = written.substr(sizeof length);
    return true;
}

} // namespace solvane::host
