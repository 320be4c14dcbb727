/// Late-bound calls to Matlab's automation server, on the thread that created it. False with a text in
/// `output`, which names the member and gives the system's words for the code.
#pragma once

#include "com/Variant.h"

#include <oaidl.h>

#include <span>
#include <string>

namespace solvane {

/// Calls a method. `arguments` stand last first, as IDispatch wants them; `result` may be null.
[[nodiscard]] bool invokeMethod(std::wstring& output, VARIANT* result, IDispatch* object, const wchar_t* name,
                                std::span<VARIANT> arguments);

[[nodiscard]] bool putProperty(std::wstring& output, IDispatch* object, const wchar_t* name,
                               const VARIANT& value);

/// Has Matlab execute a command and takes what it printed into `output`, which stays as it is where Matlab
/// returns nothing. True if the call was made; an error in the command itself stands in the output.
[[nodiscard]] bool executeCommand(IDispatch* application, const std::wstring& command, std::wstring& output);

/// Whether the server says that it serves this client alone.
bool isServerDedicated(IDispatch* application);

/// Whether the process behind the application has ended, so that no call will reach it again.
bool isServerGone(IDispatch* application);

} // namespace solvane
