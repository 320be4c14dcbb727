/// An object of another process, called late bound: what a script would use without a channel of its own.
#pragma once

#include "CapeOpen.h"
#include "com/ComRef.h"
#include "com/Handle.h"

#include <string>

namespace solvane {

/// Offers an object to other processes from a thread of the multi-threaded apartment, whose calls come
/// fastest. Other processes find it in a file.
class OfferedObject {
public:
    /// The object must not belong to an apartment.
    OfferedObject(ComRef<IDispatch> object, std::wstring file);
    ~OfferedObject();
    OfferedObject(const OfferedObject&) = delete;
    OfferedObject& operator=(const OfferedObject&) = delete;

    const std::wstring& file() const { return file_; }

private:
    static DWORD WINAPI serve(void* argument);

    ComRef<IDispatch> object_;
    std::wstring file_;
    Handle ready_;
    Handle stop_;
    Handle thread_;
};

/// The proxy of an object that another process offers; empty if there is no such object.
ComRef<IDispatch> openOfferedObject(const std::wstring& file);

/// Asks a 1.0 material for a property of the whole stream through IDispatch::Invoke.
bool invokeGetProp(IDispatch* material, const wchar_t* property);

} // namespace solvane
