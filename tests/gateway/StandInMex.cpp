// An interpreter's MEX functions as far as the gateway needs them: those of Matlab from 6.5 on, or with
// STAND_IN_OCTAVE those before.
#include "StandInArray.h"

#include <string_view>

#define EXPORTED extern "C" __declspec(dllexport)

extern "C" {
__declspec(dllexport) StandInHooks standInHooks;
}

EXPORTED void mexLock() {
    ++standInHooks.locks;
}
EXPORTED void mexUnlock() {
    --standInHooks.locks;
}

#ifdef STAND_IN_OCTAVE
EXPORTED int mexCallMATLAB(int, mxArray**, int argumentCount, mxArray** arguments, const char* function) {
    if (function == std::string_view("error") && argumentCount == 2 && arguments[0]->characters == "%s")
        standInHooks.raise(arguments[1]->characters.c_str());
    return 1;
}

EXPORTED mxArray* mexGetArray(const char* name, const char* workspace) {
#else
EXPORTED void mexErrMsgTxt(const char* message) {
    standInHooks.raise(message);
}

EXPORTED mxArray* mexGetVariable(const char* workspace, const char* name) {
#endif
    return workspace == std::string_view("global") ? standInHooks.globalVariable(name) : nullptr;
}
