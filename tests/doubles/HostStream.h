#pragma once

#include "com/ReadWriteStream.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>

namespace solvane {

/// A host's stream, on the test's frame: it is not counted. Only Read and Write work, as with some hosts, and
/// one call can go wrong.
class HostStream final : public ReadWriteStream {
public:
    virtual ~HostStream() = default;

    std::string bytes;
    std::size_t position = 0; ///< of the next read
    int calls = 0;
    int faultyCall = 0; ///< from 1; 0: none
    enum class Fault { failure, falseResult, shortCount } fault = Fault::failure;

    HostStream() = default;
    /// Holds a container as a saved unit does.
    explicit HostStream(const std::string& container) {
        const auto size = static_cast<std::uint32_t>(container.size());
        bytes.assign(reinterpret_cast<const char*>(&size), sizeof size);
        bytes += container;
    }
    std::string container() const { return bytes.size() < 4 ? "" : bytes.substr(4); }

    STDMETHODIMP Read(void* place, ULONG size, ULONG* count) override {
        *count = std::min<ULONG>(size, static_cast<ULONG>(bytes.size() - position));
        std::memcpy(place, bytes.data() + position, *count);
        position += *count;
        return outcome(count);
    }
    STDMETHODIMP Write(const void* from, ULONG size, ULONG* count) override {
        bytes.append(static_cast<const char*>(from), size);
        *count = size;
        return outcome(count);
    }

    STDMETHODIMP QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    STDMETHODIMP_(ULONG) AddRef() override { return 1; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }

private:
    HRESULT outcome(ULONG* count) {
        if (++calls != faultyCall)
            return S_OK;
        if (fault == Fault::shortCount)
            *count -= 1;
        return fault == Fault::failure ? E_FAIL : fault == Fault::falseResult ? S_FALSE : S_OK;
    }
};

} // namespace solvane
