// An editor that changes its file as a user would: some time after its start it adds a line, and tells beside
// the file how it was started.

#include <windows.h>

#include <cstdio>
#include <string>

int main(int count, char** arguments) {
    Sleep(500); // by now the unit has written the file
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
