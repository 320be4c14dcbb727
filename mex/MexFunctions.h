/// The published MEX functions that the gateway and the engine's link call, under their published names.
///
/// On Linux they come from Octave, whose header is used. On Windows nothing of Matlab is needed to build a
/// module: the functions below find the real ones, when first called, in the process that loaded it
/// (MexLookup.cpp), and throw std::runtime_error with the name of one that isn't there. Only functions that
/// Matlab 5 already had, if by another name, are used. What they create belongs to the interpreter, which
/// frees it when mexFunction returns unless it was handed out in plhs or set into a cell.
#pragma once

#ifndef _WIN32

#include <mex.h>

/// Before the definition of mexFunction.
#define SOLVANE_MEX_EXPORT extern "C" __attribute__((visibility("default")))

inline bool isMatlab() {
    return false;
}

#else

#include <cstddef>

#define SOLVANE_MEX_EXPORT extern "C" __declspec(dllexport)

/// True in Matlab, false in a Windows Octave.
bool isMatlab();

struct mxArray_tag;
using mxArray = mxArray_tag;
using mwSize = std::size_t;
enum mxComplexity { mxREAL, mxCOMPLEX };

bool mxIsDouble(const mxArray* array);
bool mxIsNumeric(const mxArray* array);
bool mxIsLogical(const mxArray* array);
bool mxIsComplex(const mxArray* array);
bool mxIsSparse(const mxArray* array);
bool mxIsChar(const mxArray* array);
bool mxIsCell(const mxArray* array);
std::size_t mxGetM(const mxArray* array);
std::size_t mxGetN(const mxArray* array);
std::size_t mxGetNumberOfElements(const mxArray* array);
double mxGetScalar(const mxArray* array);
double* mxGetPr(const mxArray* array);
void* mxGetData(const mxArray* array);
mxArray* mxGetCell(const mxArray* array, mwSize index);
void mxSetCell(mxArray* array, mwSize index, mxArray* value);
mxArray* mxCreateDoubleMatrix(mwSize rows, mwSize columns, mxComplexity complexity);
mxArray* mxCreateCellMatrix(mwSize rows, mwSize columns);
mxArray* mxCreateCharArray(mwSize dimensionCount, const mwSize* dimensions);
/// A copy of a variable of the workspace "base", "caller" or "global"; null if there is none.
mxArray* mexGetVariable(const char* workspace, const char* name);
mxArray* mxCreateString(const char* text);
int mexCallMATLAB(int outputCount, mxArray* outputs[], int argumentCount, mxArray* arguments[],
                  const char* function);
/// Doesn't return: it jumps out of mexFunction, past every destructor.
void mexErrMsgTxt(const char* message);
void mexLock();
void mexUnlock();

#endif
