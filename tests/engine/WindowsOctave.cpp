// Stands for octave-cli.exe of a Windows Octave: takes the options that the server gives, and runs the loop
// of commands with the same link, to which it offers Octave's functions as Octave's own libraries do. What a
// command does is only reported; "pwd" returns the current folder, "hang" sets an event and never returns,
// and "die" ends the process.
#include <windows.h>

#include <filesystem>
#include <string>
#include <string_view>

struct mxArray_tag {
    std::string text;
    bool isText;
};
using mxArray = mxArray_tag;

#define OCTAVES extern "C" __declspec(dllexport)

OCTAVES void* mxGetData(mxArray* array) {
    return array->text.data();
}
OCTAVES bool mxIsChar(const mxArray* array) {
    return array->isText;
}
OCTAVES std::size_t mxGetNumberOfElements(const mxArray* array) {
    return array->text.size();
}
OCTAVES mxArray* mxCreateString(const char* text) {
    return new mxArray{text, true};
}
OCTAVES mxArray* mxCreateDoubleMatrix(std::size_t, std::size_t, int) {
    return new mxArray{"", false};
}
OCTAVES void mexLock() {}
OCTAVES void mexErrMsgTxt(const char*) {
    ExitProcess(3);
}

namespace {

using Link = void(int, mxArray**, int, const mxArray**);

mxArray call(Link* link, const mxArray* first, const mxArray* second = nullptr) {
    const mxArray* arguments[] = {first, second};
    mxArray* result = nullptr;
    link(1, &result, second ? 2 : 1, arguments);
    const mxArray taken = result ? *result : mxArray{"", false};
    delete result;
    return taken;
}

} // namespace

int wmain(int count, wchar_t** options) {
    std::wstring folder;
    for (int i = 1; i + 1 < count; ++i)
        if (std::wstring_view(options[i]) == L"--path")
            folder = options[i + 1];
    if (std::wstring_view(options[count - 1]) != L"solvaneEngine")
        return 1;
    const std::wstring system = sizeof(void*) == 8 ? L"windows" : L"windows32";
    const HMODULE library = LoadLibraryW((folder + L"\\" + system + L"\\SolvaneEngineLink.mex").c_str());
    auto* link = reinterpret_cast<Link*>(reinterpret_cast<void*>(GetProcAddress(library, "mexFunction")));
    if (!link)
        return 2;

    const mxArray connect{"connect", true};
    const mxArray receive{"receive", true};
    const mxArray begin{"begin", true};
    const mxArray send{"send", true};
    const std::u8string place = std::filesystem::current_path().u8string();
    const mxArray here{std::string(place.begin(), place.end()), true};
    call(link, &connect, &here);
    for (;;) {
        mxArray command = call(link, &receive);
        if (!command.isText)
            return 0;
        if (command.text == "die")
            ExitProcess(0);
        if (command.text == "hang") {
            SetEvent(OpenEventW(EVENT_MODIFY_STATE, FALSE, L"SolvaneWindowsOctaveHangs"));
            Sleep(INFINITE);
        }
        call(link, &begin);
        command.text = command.text == "pwd" ? here.text : "ran " + command.text;
        call(link, &send, &command);
    }
}
