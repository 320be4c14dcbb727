#include "Finding.h"

#include <cstdio>
#include <initializer_list>

namespace {

class Report {
public:
    Report() {
        char path[MAX_PATH] = SOLVANE_FINDINGS;
        GetEnvironmentVariableA("SOLVANE_FINDINGS", path, sizeof path);
        file_ = CreateFileA(path, FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_ALWAYS,
                            FILE_ATTRIBUTE_NORMAL, nullptr);
    }

    template <class... Values>
    void line(const char* format, Values... values) {
        char text[600];
        int length = std::snprintf(text, sizeof text, format, values...);
        length = length < static_cast<int>(sizeof text) ? length : static_cast<int>(sizeof text) - 1;
        for (HANDLE output : {GetStdHandle(STD_ERROR_HANDLE), file_}) {
            DWORD written = 0;
            WriteFile(output, text, static_cast<DWORD>(length), &written, nullptr);
        }
    }

private:
    HANDLE file_;
};

void writeCall(Report& report, DWORD64 address) {
    HMODULE module = nullptr;
    char path[MAX_PATH] = "?";
    if (GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                               GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                           reinterpret_cast<LPCSTR>(address), &module))
        GetModuleFileNameA(module, path, sizeof path);
    report.line("    %s+0x%llx\n", path, address - reinterpret_cast<DWORD64>(module));
}

void writeCalls(Report& report, CONTEXT context) {
    for (int depth = 0; depth < 40 && context.Rip; ++depth) {
        // A return address is the one after the call: its line may be the next.
        writeCall(report, depth ? context.Rip - 1 : context.Rip);
        DWORD64 base = 0;
        if (PRUNTIME_FUNCTION function = RtlLookupFunctionEntry(context.Rip, &base, nullptr)) {
            void* handlerData = nullptr;
            DWORD64 frame = 0;
            RtlVirtualUnwind(UNW_FLAG_NHANDLER, base, context.Rip, function, &context, &handlerData, &frame,
                             nullptr);
        } else {
            MEMORY_BASIC_INFORMATION memory{};
            const auto* stack = reinterpret_cast<const DWORD64*>(context.Rsp);
            if (!VirtualQuery(stack, &memory, sizeof memory) || memory.State != MEM_COMMIT)
                return;
            context.Rip = *stack;
            context.Rsp += sizeof(DWORD64);
        }
    }
}

} // namespace

void reportFinding(const char* what, const CONTEXT* where) {
    static SRWLOCK once = SRWLOCK_INIT; // the first thread ends the process
    AcquireSRWLockExclusive(&once);
    CONTEXT context{};
    if (!where)
        RtlCaptureContext(&context);
    Report report;
    report.line("FINDING: %s\n", what);
    writeCalls(report, where ? *where : context);
    TerminateProcess(GetCurrentProcess(), findingExitCode);
    for (;;)
        Sleep(INFINITE);
}

// An uncaught exception, a failed check of the standard library, or a call of abort itself.
extern "C" void __wrap_abort() {
    reportFinding("abort was called");
}
