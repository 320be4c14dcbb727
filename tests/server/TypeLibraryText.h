#pragma once

#include "com/ComRef.h"

#include <oaidl.h>

#include <map>
#include <string>
#include <vector>

namespace solvane {

/// A type library as text, by the first line of each type: "ICapeUnit 678C...", "enum eCapeParamType" or
/// "alias CapeParamType 678C... eCapeParamType". The lines of an interface are its own operations, as
/// "7 1 get ports(out IDispatch**)": slot, dispatch id, kind, name, arguments; those of an enumeration its
/// values.
std::map<std::string, std::vector<std::string>> describeTypeLibrary(ITypeLib* library);

/// The same from a table file, where a blank line ends a type and # begins a comment.
std::map<std::string, std::vector<std::string>> readTypeTable(const std::string& path);

} // namespace solvane
