/// The model in a stream of the host's: uint32, little-endian, the size of the container, and the container
/// byte for byte. It passes through a temporary file of the working folder.
#pragma once

#include <windows.h>

#include <objidl.h>

namespace solvane {

class Unit;

// The results are those of IPersistStream's operations; texts are stored on the unit.
HRESULT loadFromStream(Unit& unit, IStream* stream);
HRESULT saveToStream(Unit& unit, IStream* stream);
/// The model is written once more to be measured: a size is never guessed.
HRESULT sizeInStream(Unit& unit, ULARGE_INTEGER& size);

} // namespace solvane
