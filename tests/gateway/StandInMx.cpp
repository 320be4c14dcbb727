// An interpreter's array functions as far as the gateway needs them: Matlab's, or with STAND_IN_OCTAVE under
// plain names, with characters of one byte and, on Windows,
// without mxCreateCellMatrix.
#include "StandInArray.h"

#ifdef STAND_IN_OCTAVE
using Character = char;
#define SIZED(name) name
#else
using Character = char16_t;
#define SIZED(name) name##_730
#endif

#ifdef _WIN32
#define EXPORTED extern "C" __declspec(dllexport)
#else
#define EXPORTED extern "C"
#endif

EXPORTED bool mxIsDouble(const mxArray* a) {
    return a->kind == ArrayKind::number;
}
EXPORTED bool mxIsNumeric(const mxArray* a) {
    return a->kind == ArrayKind::number || a->kind == ArrayKind::integer;
}
EXPORTED bool mxIsLogical(const mxArray* a) {
    return a->kind == ArrayKind::logical;
}
EXPORTED bool mxIsComplex(const mxArray* a) {
    return a->isComplex;
}
EXPORTED bool mxIsSparse(const mxArray* a) {
    return a->isSparse;
}
EXPORTED bool mxIsChar(const mxArray* a) {
    return a->kind == ArrayKind::text;
}
EXPORTED bool mxIsCell(const mxArray* a) {
    return a->kind == ArrayKind::cell;
}
EXPORTED std::size_t mxGetM(const mxArray* a) {
    return a->rows;
}
EXPORTED std::size_t mxGetN(const mxArray* a) {
    return a->columns;
}
EXPORTED std::size_t mxGetNumberOfElements(const mxArray* a) {
    return a->rows * a->columns;
}
EXPORTED double mxGetScalar(const mxArray* a) {
    return a->numbers.at(0);
}
EXPORTED double* mxGetPr(mxArray* a) {
    return a->numbers.data();
}
EXPORTED void* mxGetData(mxArray* a) {
    return a->kind == ArrayKind::text ? static_cast<void*>(a->characters.data()) : a->numbers.data();
}
#ifdef STAND_IN_OCTAVE
EXPORTED mxArray* mxCreateString(const char* text) {
    const std::string characters = text;
    return keep({.kind = ArrayKind::text, .rows = 1, .columns = characters.size(), .characters = characters});
}
#endif

EXPORTED mxArray* SIZED(mxGetCell)(const mxArray* a, std::size_t index) {
    return a->cells.at(index);
}
EXPORTED void SIZED(mxSetCell)(mxArray* a, std::size_t index, mxArray* value) {
    a->cells.at(index) = value;
}
EXPORTED mxArray* SIZED(mxCreateDoubleMatrix)(std::size_t rows, std::size_t columns, int) {
    mxArray* a = keep({.rows = rows, .columns = columns});
    a->numbers.resize(rows * columns);
    return a;
}
EXPORTED mxArray* SIZED(mxCreateCharArray)(std::size_t count, const std::size_t* dimensions) {
    if (count != 2)
        return nullptr;
    mxArray* a = keep({.kind = ArrayKind::text, .rows = dimensions[0], .columns = dimensions[1]});
    a->characters.resize(a->rows * a->columns * sizeof(Character));
    return a;
}
#if !defined STAND_IN_OCTAVE || !defined _WIN32
EXPORTED mxArray* SIZED(mxCreateCellMatrix)(std::size_t rows, std::size_t columns) {
    mxArray* a = keep({.kind = ArrayKind::cell, .rows = rows, .columns = columns});
    a->cells.resize(rows * columns);
    return a;
}
#endif
