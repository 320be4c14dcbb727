/// The model in the host's stream: the size of the container as a little-endian uint32, and the container
/// byte for byte. It passes through a temporary file of the working folder.
#pragma once

#include <windows.h>

#include <objidl.h>

namespace solvane {

class Unit;

// Return the results of IPersistStream's operations and store error texts on the unit.
HRESULT loadFromStream(Unit& unit, IStream* stream);
HRESULT saveToStream(Unit& unit, IStream* stream);
/// Writes the model once more to measure it: the size is never an estimate.
HRESULT sizeInStream(Unit& unit, ULARGE_INTEGER& size);

} // namespace solvane
