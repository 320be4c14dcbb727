// An editor that changes its file as a user would: once the test has seen that it runs, it adds a line, and
// notes beside the file how it was started.

#include <windows.h>

#include <cstdio>
#include <string>

int main(int count, char** arguments) {
    WaitForSingleObject(OpenEventW(SYNCHRONIZE, FALSE, L"SolvaneEditorMayWrite"), 10000);
    char folder[MAX_PATH] = "";
    GetCurrentDirectoryA(MAX_PATH, folder);
    if (std::FILE* note = std::fopen("editor.txt", "wb")) {
        std::fprintf(note, "%s\n%s", GetCommandLineA(), folder);
        std::fclose(note);
    }
    std::FILE* script = count == 2 ? std::fopen(arguments[1], "ab") : nullptr;
    if (!script)
        return 1;
    std::fputs("% edited\r\n", script);
    return std::fclose(script);
}
