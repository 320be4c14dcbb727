#include "MexFunctions.h"

#include <windows.h>

#include <tlhelp32.h>

#include <array>
#include <stdexcept>
#include <string>

namespace {

/// Suffixes of the exported names, in the order in which they are tried. A function that has sizes among its
/// arguments exists for sizes of several widths: "_730" stands for size_t, "_700" and none for int. In 32
/// bits all are of one width, and the plain name is the one that every version has. In 64 bits the plain name
/// is right in Octave, whose sizes have 64 bits.
constexpr std::array unsized{""};
#ifdef _WIN64
constexpr std::array sized{"_730", ""};
#else
constexpr std::array sized{"", "_700", "_730"};
#endif

/// Looks in all modules of the process, for interpreters whose libraries have other names (Octave).
FARPROC findInAnyModule(const char* name) {
    const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPMODULE, GetCurrentProcessId());
    if (snapshot == INVALID_HANDLE_VALUE)
        return nullptr;
    FARPROC found = nullptr;
    MODULEENTRY32W module{};
    module.dwSize = sizeof module;
    for (BOOL more = Module32FirstW(snapshot, &module); more && !found;
         more = Module32NextW(snapshot, &module))
        found = GetProcAddress(module.hModule, name);
    CloseHandle(snapshot);
    return found;
}

FARPROC find(const char* name) {
    for (const wchar_t* library : {L"libmx.dll", L"libmex.dll"})
        if (const HMODULE module = GetModuleHandleW(library))
            if (const FARPROC found = GetProcAddress(module, name))
                return found;
    return findInAnyModule(name);
}

/// One function of the interpreter, found when it is first called.
template <typename Function>
class Imported {
public:
    constexpr explicit Imported(const char* name) : name_(name) {}

    template <typename Suffixes>
    Function* find(const Suffixes& suffixes) {
        for (auto suffix = suffixes.begin(); !function_ && suffix != suffixes.end(); ++suffix)
            function_ = reinterpret_cast<Function*>(
                reinterpret_cast<void*>(::find((std::string(name_) + *suffix).c_str())));
        return function_;
    }

    template <typename Suffixes = decltype(unsized)>
    Function& get(const Suffixes& suffixes = unsized) {
        if (Function* function = find(suffixes))
            return *function;
        throw std::runtime_error(std::string("CapeOpenUnitMex: the interpreter that loaded it has no ") +
                                 name_);
    }

private:
    const char* name_;
    Function* function_ = nullptr;
};

/// The tests return bool or int, by interpreter and version; the low byte holds the answer of both.
using Test = unsigned char(const mxArray*);
using Count = std::size_t(const mxArray*);

} // namespace

bool isMatlab() {
    // Asked once: for a library that isn't loaded, Wine searches all
    // folders of its path, which takes longer than a call of the gateway.
    static const bool answer = GetModuleHandleW(L"libmx.dll") != nullptr;
    return answer;
}

bool mxIsDouble(const mxArray* array) {
    static Imported<Test> function("mxIsDouble");
    return function.get()(array) != 0;
}

bool mxIsNumeric(const mxArray* array) {
    static Imported<Test> function("mxIsNumeric");
    return function.get()(array) != 0;
}

bool mxIsLogical(const mxArray* array) {
    static Imported<Test> function("mxIsLogical");
    return function.get()(array) != 0;
}

bool mxIsComplex(const mxArray* array) {
    static Imported<Test> function("mxIsComplex");
    return function.get()(array) != 0;
}

bool mxIsSparse(const mxArray* array) {
    static Imported<Test> function("mxIsSparse");
    return function.get()(array) != 0;
}

bool mxIsChar(const mxArray* array) {
    static Imported<Test> function("mxIsChar");
    return function.get()(array) != 0;
}

bool mxIsCell(const mxArray* array) {
    static Imported<Test> function("mxIsCell");
    return function.get()(array) != 0;
}

std::size_t mxGetM(const mxArray* array) {
    static Imported<Count> function("mxGetM");
    return function.get()(array);
}

std::size_t mxGetN(const mxArray* array) {
    static Imported<Count> function("mxGetN");
    return function.get()(array);
}

std::size_t mxGetNumberOfElements(const mxArray* array) {
    static Imported<Count> function("mxGetNumberOfElements");
    return function.get()(array);
}

double mxGetScalar(const mxArray* array) {
    static Imported<double(const mxArray*)> function("mxGetScalar");
    return function.get()(array);
}

double* mxGetPr(const mxArray* array) {
    static Imported<double*(const mxArray*)> function("mxGetPr");
    return function.get()(array);
}

void* mxGetData(const mxArray* array) {
    static Imported<void*(const mxArray*)> function("mxGetData");
    return function.get()(array);
}

mxArray* mxGetCell(const mxArray* array, mwSize index) {
    static Imported<mxArray*(const mxArray*, mwSize)> function("mxGetCell");
    return function.get(sized)(array, index);
}

void mxSetCell(mxArray* array, mwSize index, mxArray* value) {
    static Imported<void(mxArray*, mwSize, mxArray*)> function("mxSetCell");
    function.get(sized)(array, index, value);
}

mxArray* mxCreateDoubleMatrix(mwSize rows, mwSize columns, mxComplexity complexity) {
    static Imported<mxArray*(mwSize, mwSize, mxComplexity)> function("mxCreateDoubleMatrix");
    return function.get(sized)(rows, columns, complexity);
}

mxArray* mxCreateCellMatrix(mwSize rows, mwSize columns) {
    static Imported<mxArray*(mwSize, mwSize)> function("mxCreateCellMatrix");
    return function.get(sized)(rows, columns);
}

mxArray* mxCreateCharArray(mwSize dimensionCount, const mwSize* dimensions) {
    static Imported<mxArray*(mwSize, const mwSize*)> function("mxCreateCharArray");
    return function.get(sized)(dimensionCount, dimensions);
}

mxArray* mxCreateString(const char* text) {
    static Imported<mxArray*(const char*)> function("mxCreateString");
    return function.get()(text);
}

mxArray* mexGetVariable(const char* workspace, const char* name) {
    // Before Matlab 6.5 it was called mexGetArray and took its arguments the other way round.
    static Imported<mxArray*(const char*, const char*)> current("mexGetVariable");
    static Imported<mxArray*(const char*, const char*)> former("mexGetArray");
    if (!current.find(unsized) && former.find(unsized))
        return former.get()(name, workspace);
    return current.get()(workspace, name);
}

int mexCallMATLAB(int outputCount, mxArray* outputs[], int argumentCount, mxArray* arguments[],
                  const char* function) {
    static Imported<int(int, mxArray**, int, mxArray**, const char*)> imported("mexCallMATLAB");
    return imported.get()(outputCount, outputs, argumentCount, arguments, function);
}

void mexErrMsgTxt(const char* message) {
    static Imported<void(const char*)> function("mexErrMsgTxt");
    function.get()(message);
}

void mexLock() {
    static Imported<void()> function("mexLock");
    function.get()();
}

void mexUnlock() {
    static Imported<void()> function("mexUnlock");
    function.get()();
}
