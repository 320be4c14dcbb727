#include "OutOfProcessObject.h"

#include "com/Variant.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace solvane {

OfferedObject::OfferedObject(ComRef<IDispatch> object, std::wstring file)
    : object_(std::move(object)),
      file_(std::move(file)),
      ready_(CreateEventW(nullptr, FALSE, FALSE, nullptr)),
      stop_(CreateEventW(nullptr, FALSE, FALSE, nullptr)) {
    thread_.reset(CreateThread(nullptr, 0, serve, this, 0, nullptr));
    WaitForSingleObject(ready_.get(), INFINITE);
}

OfferedObject::~OfferedObject() {
    SetEvent(stop_.get());
    WaitForSingleObject(thread_.get(), INFINITE);
}

DWORD WINAPI OfferedObject::serve(void* argument) {
    OfferedObject& self = *static_cast<OfferedObject*>(argument);
    CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    {
        ComRef<IStream> stream;
        CreateStreamOnHGlobal(nullptr, TRUE, stream.put());
        HGLOBAL memory = nullptr;
        if (SUCCEEDED(CoMarshalInterface(stream.get(), IID_IDispatch, self.object_.get(), MSHCTX_LOCAL,
                                         nullptr, MSHLFLAGS_TABLESTRONG)) &&
            SUCCEEDED(GetHGlobalFromStream(stream.get(), &memory))) {
            std::ofstream file(std::filesystem::path(self.file_), std::ios::binary);
            file.write(static_cast<const char*>(GlobalLock(memory)),
                       static_cast<std::streamsize>(GlobalSize(memory)));
            GlobalUnlock(memory);
        }
        SetEvent(self.ready_.get());
        WaitForSingleObject(self.stop_.get(), INFINITE);
        stream->Seek({}, STREAM_SEEK_SET, nullptr);
        CoReleaseMarshalData(stream.get());
        self.object_.reset();
    }
    CoUninitialize();
    return 0;
}

ComRef<IDispatch> openOfferedObject(const std::wstring& path) {
    std::ifstream file(std::filesystem::path(path), std::ios::binary);
    const std::string bytes(std::istreambuf_iterator<char>(file), {});
    ComRef<IStream> stream;
    ComRef<IDispatch> object;
    if (bytes.empty() || FAILED(CreateStreamOnHGlobal(nullptr, TRUE, stream.put())))
        return object;
    stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), nullptr);
    stream->Seek({}, STREAM_SEEK_SET, nullptr);
    CoUnmarshalInterface(stream.get(), IID_IDispatch, object.putVoid());
    return object;
}

bool invokeGetProp(IDispatch* material, const wchar_t* property) {
    constexpr DISPID getProp = 6;
    // The last argument first: basis, calculation type, compounds, phase, property.
    const Variant nothing{std::wstring_view()}, phase{std::wstring_view(L"overall")},
        name{std::wstring_view(property)};
    std::array<VARIANT, 5> arguments{nothing.get(), nothing.get(), VARIANT{}, phase.get(), name.get()};
    DISPPARAMS parameters{arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
    Variant result;
    return SUCCEEDED(material->Invoke(getProp, IID_NULL, LOCALE_SYSTEM_DEFAULT, DISPATCH_METHOD, &parameters,
                                      result.put(), nullptr, nullptr)) &&
           (result.type() & VT_ARRAY);
}

} // namespace solvane
