#include "StreamPersistence.h"

#include "ModelContainer.h"
#include "com/CapeError.h"
#include "com/Handle.h"
#include "com/StdioFile.h"
#include "com/Text.h"
#include "unit/model/Unit.h"

#include <memory>
#include <new>

namespace solvane {

namespace {

constexpr wchar_t persistStream[] = L"IPersistStream";

/// The file through which the container passes into or out of the stream.
class TemporaryModel {
public:
    explicit TemporaryModel(const Unit& unit)
        : path_(unit.workingFolder.pathOf("_unitOperationModel_.svm")) {}
    ~TemporaryModel() { DeleteFileA(path_.c_str()); }
    TemporaryModel(const TemporaryModel&) = delete;
    TemporaryModel& operator=(const TemporaryModel&) = delete;

    const std::string& path() const { return path_; }

private:
    std::string path_;
};

/// Raises a text as both name and description.
HRESULT raiseText(Unit& unit, const std::string& text, const wchar_t* method) {
    return unit.raise(widen(text), widen(text), method, persistStream);
}

using Bytes = std::unique_ptr<char[]>;

/// Null if there is not enough memory.
Bytes allocate(ULONG size) {
    return Bytes(new (std::nothrow) char[size]);
}

// S_FALSE from a stream is a failure too.
bool readWhole(IStream& stream, void* place, ULONG size) {
    ULONG count = 0;
    const HRESULT hr = stream.Read(place, size, &count);
    return SUCCEEDED(hr) && hr != S_FALSE && count == size;
}
bool writeWhole(IStream& stream, const void* bytes, ULONG size) {
    ULONG count = 0;
    const HRESULT hr = stream.Write(bytes, size, &count);
    return SUCCEEDED(hr) && hr != S_FALSE && count == size;
}

/// Writes the model and opens its file. `unable` begins the text of a failure.
HRESULT openWritten(Unit& unit, const TemporaryModel& model, const std::string& unable,
                    const std::string& tooLarge, const wchar_t* method, FileHandle& file, DWORD& size) {
    std::string error;
    if (!WriteModelDocument(unit, model.path(), error))
        return raiseText(unit, error, L"Save"); // for GetSizeMax too
    file.reset(CreateFileA(model.path().c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                           FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file)
        return raiseText(unit, unable + narrow(FormatHresultText(static_cast<HRESULT>(GetLastError()))),
                         method);
    DWORD sizeHigh = 0;
    size = GetFileSize(file.get(), &sizeHigh);
    return sizeHigh == 0 ? S_OK : raiseText(unit, tooLarge, method);
}

} // namespace

HRESULT loadFromStream(Unit& unit, IStream* stream) {
    if (!stream)
        return E_POINTER;
    unit.workaroundDone = true;
    const auto readError = [&] { return unit.raise(L"read error", L"read error", L"Load", persistStream); };
    ULONG size = 0;
    if (!readWhole(*stream, &size, sizeof size))
        return readError();
    Bytes bytes = allocate(size);
    if (!bytes)
        return E_OUTOFMEMORY;
    if (!readWhole(*stream, bytes.get(), size))
        return readError();

    const TemporaryModel model(unit);
    StdioFile file = openFile(model.path(), "wb");
    if (!file)
        return unit.raise(L"file error", L"Failed to create temporary file", L"Load", persistStream);
    const bool isWritten = std::fwrite(bytes.get(), 1, size, file.get()) == size;
    if (!closeWritten(std::move(file)) || !isWritten)
        return unit.raise(L"file error", L"Failed to write to temporary file", L"Load", persistStream);
    bytes.reset();
    std::string error;
    return ReadModelDocument(unit, model.path(), error) ? S_OK : raiseText(unit, error, L"Load");
}

HRESULT saveToStream(Unit& unit, IStream* stream) {
    if (!stream)
        return E_POINTER;
    constexpr wchar_t method[] = L"Save";
    const TemporaryModel model(unit);
    FileHandle file;
    DWORD size = 0;
    const HRESULT opened = openWritten(
        unit, model, "Unable to open temporary file: ", "Unable to temporary file: file is extremely large",
        method, file, size);
    if (FAILED(opened))
        return opened;
    const Bytes bytes = allocate(size);
    if (!bytes)
        return E_OUTOFMEMORY;
    DWORD read = 0;
    if (!ReadFile(file.get(), bytes.get(), size, &read, nullptr))
        return raiseText(unit, "Unable to open temporary file: read error", method);
    if (!writeWhole(*stream, &read, sizeof read) || !writeWhole(*stream, bytes.get(), read))
        return unit.raise(L"write error", L"write error", method, persistStream);
    return S_OK;
}

HRESULT sizeInStream(Unit& unit, ULARGE_INTEGER& size) {
    const TemporaryModel model(unit);
    const std::string unable = "Unable to open \"" + model.path() + "\": ";
    FileHandle file;
    DWORD modelSize = 0;
    const HRESULT opened =
        openWritten(unit, model, unable, unable + "file is extremely large", L"GetSizeMax", file, modelSize);
    if (FAILED(opened))
        return opened;
    size.QuadPart = ULONGLONG{modelSize} + sizeof modelSize;
    return S_OK;
}

} // namespace solvane
