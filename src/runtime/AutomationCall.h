/// Late-bound calls to Matlab's automation server, on the thread that created it. False with a text in
/// `output` that names the member and describes the failure.
#pragma once

#include "com/Variant.h"

#include <oaidl.h>

#include <span>
#include <string>

namespace solvane {

/// Calls a method. `arguments` are in reverse order, as in IDispatch; `result` may be null.
[[nodiscard]] bool invokeMethod(std::wstring& output, VARIANT* result, IDispatch* object, const wchar_t* name,
                                std::span<VARIANT> arguments);

[[nodiscard]] bool putProperty(std::wstring& output, IDispatch* object, const wchar_t* name,
                               const VARIANT& value);

/// Makes Matlab execute a command and stores in `output` what it printed; `output` stays unchanged if Matlab
/// returns nothing. True if the call succeeded; an error in the command itself is part of the output.
[[nodiscard]] bool executeCommand(IDispatch* application, const std::wstring& command, std::wstring& output);

/// Whether the server reports that it serves only this client.
bool isServerDedicated(IDispatch* application);

/// Whether the application's process has ended, so that no further call can reach it.
bool isServerGone(IDispatch* application);

} // namespace solvane
