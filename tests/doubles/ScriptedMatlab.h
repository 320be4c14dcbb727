/// A Matlab.Application that does what a test tells it: an in-process COM server of its own,
/// ScriptedMatlab.dll. It has no apartment of its own, so its calls arrive on the thread that created it,
/// which is a unit's worker thread.
#pragma once

#include <windows.h>

#include <oaidl.h>

namespace solvane {

inline constexpr CLSID scriptedMatlabClass{
    0x5C7A1E2F, 0x93B4, 0x4D0E, {0x8A, 0x61, 0x2F, 0x0D, 0x7B, 0x9C, 0x41, 0xE3}};
inline constexpr wchar_t scriptedMatlabClassText[] = L"{5C7A1E2F-93B4-4D0E-8A61-2F0D7B9C41E3}";

/// What the stand-in answers to each call. Implemented by the test's side.
struct MatlabBehaviour {
    virtual HRESULT create() = 0;
    virtual HRESULT findMember(const wchar_t* name) = 0;
    virtual HRESULT execute(const wchar_t* command, VARIANT* result) = 0;
    virtual bool isDedicated() = 0;
    virtual HRESULT putVisible(const VARIANT& value) = 0;
    virtual void released() = 0;

protected:
    ~MatlabBehaviour() = default;
};

} // namespace solvane

/// Holds a reference to an object until the process ends, when this module is detached.
extern "C" void releaseAtProcessEnd(IUnknown* object);

/// Without a behaviour, nothing can be created.
extern "C" void setMatlabBehaviour(solvane::MatlabBehaviour* behaviour);
