// The Matlab tab: the script's file and its view, test runs, the editor outside.

#include "Program.h"
#include "ScriptedMatlab.h"
#include "SimulatorWindow.h"
#include "UiTest.h"
#include "com/Registry.h"
#include "com/Text.h"
#include "ui/controls/ScriptEditor.h"

#include <gmock/gmock.h>
#include <richedit.h>

namespace solvane {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

const std::wstring editorStandIn = builtFile(L"..\\tests\\EditorStandIn.exe");

/// Whether the thread's queue holds a quit message with this exit code; removes it.
bool isQuitting(WPARAM exitCode) {
    MSG message{};
    return PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE) && message.message == WM_QUIT &&
           message.wParam == exitCode;
}

TEST(ScriptEditor, keepsTheQuitMessageOfTheHost) {
    PostQuitMessage(7);
    Program editor(L"\"" + editorStandIn + L"\"");
    waitForScriptEditor(editor.handle());
    editor.wait();
    EXPECT_TRUE(isQuitting(7));
}

class MatlabTab : public UiTest {
protected:
    std::wstring scriptPath() { return workingFolder() + L"calc.m"; }
    std::string script() { return readFile(scriptPath()); }
    void setScript(const std::string& text) { writeFile(scriptPath(), text); }

    HRESULT work(const WindowDriver::Actions& actions, const WindowDriver::Actions& opening = {}) {
        return WindowDriver::edit(
            unit,
            [&](WindowDriver& user) {
                user.pickTab(L"Matlab");
                actions(user);
                if (user.here())
                    user.pickTab(L"Ports"); // where the next window opens
            },
            opening);
    }

    /// Puts text behind the script's, as one who types.
    static void typeAtEnd(WindowDriver& user, const std::wstring& text) {
        const HWND view = user.control(IDC_MATLAB_SCRIPT);
        SendMessageW(view, EM_SETSEL, 0x7FFFFFF0, 0x7FFFFFF0);
        for (const wchar_t c : text)
            SendMessageW(view, c == L'\r' ? WM_KEYDOWN : WM_CHAR, c, 1);
        user.settle();
    }

    static COLORREF colourOf(HWND view, LONG begin, LONG end) {
        const CHARRANGE range{begin, end};
        SendMessageW(view, EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&range));
        CHARFORMATW format{};
        format.cbSize = sizeof format;
        SendMessageW(view, EM_GETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&format));
        const bool isUniform = (format.dwMask & CFM_COLOR) != 0;
        return !isUniform ? CLR_INVALID : format.dwEffects & CFE_AUTOCOLOR ? 0 : format.crTextColor;
    }
    static LONG caretOf(HWND view) {
        CHARRANGE range{};
        SendMessageW(view, EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&range));
        return range.cpMin == range.cpMax ? range.cpMin : -1;
    }

    /// Of the user's settings; without one again at the end.
    struct ChosenEditor {
        explicit ChosenEditor(const std::wstring& path) {
            writeRegistryString(HKEY_CURRENT_USER, L"Software\\SolvaneUnitOperation", L"Editor", path);
        }
        ~ChosenEditor() {
            RegDeleteKeyValueW(HKEY_CURRENT_USER, L"Software\\SolvaneUnitOperation", L"Editor");
        }
    };
    /// Until the editor has ended and the page is there again.
    void editOutside(WindowDriver& user, const std::function<void()>& meanwhile = {}) {
        const HWND page = GetParent(user.button(L"&Edit"));
        bool wasDisabled = false;
        const Handle mayWrite(CreateEventW(nullptr, TRUE, FALSE, L"SolvaneEditorMayWrite"));
        DeleteFileW((workingFolder() + L"editor.txt").c_str());
        user.press(L"&Edit");
        for (int turn = 0; turn < 500; ++turn) {
            if (!wasDisabled && !IsWindowEnabled(page)) {
                wasDisabled = true;
                if (meanwhile)
                    meanwhile();
                SetEvent(mayWrite.get());
            }
            if (IsWindowEnabled(page) && readFile(workingFolder() + L"editor.txt") != "?")
                break;
            Sleep(10);
        }
        EXPECT_TRUE(wasDisabled);
        user.settle();
    }
};

TEST_F(MatlabTab, testWritesTheScriptAndShowsTheResult) {
    setScript("a = 1;\r\nb = foo;\r\n");
    matlab.onRun = [](const std::wstring& folder) {
        return printed(
            readFile(folder + L"unitCalc.m").ends_with("b = foo;\r\nc\r\n")
                ? L"MATLAB output:\nEvaluation error: 'foo' undefined near line 4, column 5\nMATLAB done\n"
                : L"MATLAB output:\nMATLAB done\n");
    };
    EXPECT_EQ(
        work([&](WindowDriver& user) {
            EXPECT_EQ(user.text(IDC_MATLAB_PLACE), L"Line 1, column 1");
            typeAtEnd(user, L"c\r");
            EXPECT_EQ(user.text(IDC_MATLAB_PLACE), L"Line 4, column 1");
            SendMessageW(user.control(IDC_MATLAB_SCRIPT), EM_SETSEL, 0, -1);
            EXPECT_EQ(user.text(IDC_MATLAB_PLACE), L"Line 4, column 1");
            user.press(L"&Test");
            EXPECT_EQ(script(), "a = 1;\r\nb = foo;\r\nc\r\n");
            const HWND output = user.control(IDC_MATLAB_OUTPUT);
            const std::wstring printedLines = L"MATLAB output:\r\nEvaluation error: 'foo' undefined near "
                                              L"line 4, column 5\r\nMATLAB done\r\n";
            EXPECT_EQ(user.text(IDC_MATLAB_OUTPUT),
                      printedLines + L"\r\n\r\nError: 'foo' undefined near line 4, column 5");
            // A line's end is one character of the control's.
            const auto begin = static_cast<LONG>(printedLines.size()) - 3;
            const LONG end = caretOf(output);
            EXPECT_EQ(end,
                      begin + 2 + static_cast<LONG>(wcslen(L"Error: 'foo' undefined near line 4, column 5")));
            EXPECT_EQ(colourOf(output, 0, begin), RGB(0, 0, 0));
            EXPECT_EQ(colourOf(output, begin, end), RGB(255, 0, 0));
            EXPECT_EQ(user.text(IDC_MATLAB_PLACE), L"The error is in line 2, column 5");
            user.pickTab(L"Script");
            EXPECT_EQ(user.text(IDC_MATLAB_PLACE), L"Line 2, column 5");
            EXPECT_EQ(user.focus(), user.control(IDC_MATLAB_SCRIPT));
            EXPECT_EQ(caretOf(user.focus()), 11);
            typeAtEnd(user, L"d");
            user.press(L"&Test");
            EXPECT_EQ(user.text(IDC_MATLAB_OUTPUT), L"MATLAB output:\r\nMATLAB done\r\n\r\n\r\nOK");
            const LONG last = caretOf(user.control(IDC_MATLAB_OUTPUT));
            EXPECT_EQ(colourOf(user.control(IDC_MATLAB_OUTPUT), last - 4, last), RGB(0, 255, 0));
            EXPECT_EQ(colourOf(user.control(IDC_MATLAB_OUTPUT), 0, last - 4), RGB(0, 0, 0));
            EXPECT_EQ(user.text(IDC_MATLAB_PLACE), L"");
            // An engine's own lines have the files, and all that led to the error.
            matlab.onRun = [](const std::wstring&) {
                return printed(L"MATLAB output:\nEvaluation error: 'foo' undefined near line 4, column 5\n"
                               L"MATLAB done\nat tidy 2.m line 4, column 5\nat script line 3\n");
            };
            user.press(L"&Test");
            EXPECT_EQ(user.text(IDC_MATLAB_PLACE),
                      L"The error is in tidy 2.m, line 4, column 5, called in line 3");
            user.pickTab(L"Script");
            EXPECT_EQ(user.text(IDC_MATLAB_PLACE), L"Line 3, column 1");
        }),
        S_OK);
    EXPECT_EQ(script(), "a = 1;\r\nb = foo;\r\nc\r\nd");
}

// The host comes back to the unit while it paints.
TEST_F(MatlabTab, terminatesAfterTheWindowIfAskedDuringATest) {
    SimulatorWindow host;
    const Handle painted(CreateEventW(nullptr, FALSE, FALSE, nullptr));
    const std::wstring text = L"Terminate has been called on unit operation";
    host.onPaint = [&] {
        EXPECT_EQ(unit.as<ICapeUtilities>()->Edit(), capeFailure);
        EXPECT_EQ(unit.terminate(), S_OK);
        SetEvent(painted.get());
    };
    matlab.onRun = [&](const std::wstring&) {
        host.post(WM_PAINT);
        EXPECT_EQ(WaitForSingleObject(painted.get(), 5000), WAIT_OBJECT_0);
        return printed(L"ran");
    };
    work([&](WindowDriver& user) {
        user.press(L"&Test");
        EXPECT_EQ(user.text(IDC_MATLAB_OUTPUT), L"ran\r\n\r\nError: " + text);
        EXPECT_NE(readFile(scriptPath()), "?");
    });
    EXPECT_EQ(unit.validate(), text);
    EXPECT_EQ(readFile(scriptPath()), "?");
}

TEST_F(MatlabTab, marksOnlyTextThatTheUserChanged) {
    // Line ends of all kinds, bytes that are no characters, and a line's end wherever a block may end.
    std::string text = "unix\nboth\r\nold\rnone \x81\x8d\n";
    for (int i = 0; i < 3000; ++i)
        text += std::string(static_cast<std::size_t>(i) % 7, 'x') + "\r\n";
    setScript(text);
    EXPECT_EQ(work([](WindowDriver& user) {
                  EXPECT_EQ(user.entries(IDC_MATLAB_LEVEL),
                            (std::vector<std::wstring>{L"default echo", L"echo each command line"}));
                  EXPECT_EQ(user.text(IDC_MATLAB_LEVEL), L"default echo");
                  user.choose(IDC_MATLAB_LEVEL, L"echo each command line");
                  user.press(L"&Test");
              }),
              S_FALSE);
    EXPECT_EQ(script(), text);
    EXPECT_THAT(readFile(workingFolder() + L"initRun.m"), HasSubstr("setEchoOnValue=1;"));

    text.erase(0, text.find('\x8d') + 2);
    setScript(text);
    EXPECT_EQ(work([](WindowDriver& user) {
                  EXPECT_EQ(user.text(IDC_MATLAB_LEVEL), L"echo each command line");
                  typeAtEnd(user, L"end");
              }),
              S_OK);
    EXPECT_EQ(script(), text + "end");
}

TEST_F(MatlabTab, showsTheLoadedScriptAndInfoLevel) {
    const std::wstring file = temporary.path() + L"echo.svm";
    setScript("1;");
    work([&](WindowDriver& user) {
        user.choose(IDC_MATLAB_LEVEL, L"echo each command line");
        saveModel(user, file);
        user.choose(IDC_MATLAB_LEVEL, L"default echo");
        typeAtEnd(user, L"2;");
        user.press(L"&Test");
        loadModel(user, file);
        EXPECT_EQ(user.text(IDC_MATLAB_LEVEL), L"echo each command line");
    });
    EXPECT_EQ(script(), "1;");
}

TEST_F(MatlabTab, handlesTheKeysOfTheViews) {
    setScript("ab");
    const auto copy = [] {
        const UINT formats[] = {RegisterClipboardFormatW(L"Rich Text Format"), CF_TEXT};
        const char* texts[] = {"{\\rtf1{\\b formatted}}", "plain"};
        ASSERT_TRUE(OpenClipboard(nullptr));
        EmptyClipboard();
        for (int i = 0; i < 2; ++i) {
            const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, 32);
            strcpy(static_cast<char*>(GlobalLock(memory)), texts[i]);
            GlobalUnlock(memory);
            SetClipboardData(formats[i], memory);
        }
        CloseClipboard();
    };
    EXPECT_EQ(work([&](WindowDriver& user) {
                  copy();
                  user.pickTab(L"Script");
                  const HWND view = user.control(IDC_MATLAB_SCRIPT);
                  ASSERT_EQ(user.focus(), view);
                  user.key(VK_TAB);
                  EXPECT_EQ(user.text(IDC_MATLAB_SCRIPT), L"\tab");
                  EXPECT_EQ(user.text(IDC_MATLAB_PLACE), L"Line 1, column 2");
                  user.holding({VK_CONTROL, VK_MENU}, [&] { user.key('V'); }); // AltGr, for a character
                  EXPECT_EQ(user.text(IDC_MATLAB_SCRIPT), L"\tab");
                  user.withControl([&] { user.key('V'); });
                  EXPECT_EQ(user.text(IDC_MATLAB_SCRIPT), L"\tplainab");
                  SendMessageW(view, WM_PASTE, 0, 0); // the mouse's way
                  EXPECT_EQ(user.text(IDC_MATLAB_SCRIPT), L"\tplainplainab");
                  for (const wchar_t* text : {L"\tplainab", L"\tab", L"ab"}) {
                      user.withControl([&] { user.key('Z'); });
                      EXPECT_EQ(user.text(IDC_MATLAB_SCRIPT), text);
                  }
                  user.withControl([&] { user.key('Z'); }); // what was loaded stays
                  EXPECT_EQ(user.text(IDC_MATLAB_SCRIPT), L"ab");
                  user.withControl([&] { user.key('Y'); });
                  EXPECT_EQ(user.text(IDC_MATLAB_SCRIPT), L"\tab");
                  user.withControl([&] { user.key('A'); });
                  user.key(VK_DELETE);
                  typeAtEnd(user, L"c");
                  user.key(VK_ESCAPE);
                  EXPECT_EQ(user.here(), nullptr);
              }),
              S_OK);
    EXPECT_EQ(script(), "c");
    work([&](WindowDriver& user) {
        user.pickTab(L"Output");
        user.key(VK_RETURN);
        user.key(VK_TAB);
        EXPECT_EQ(user.focus(), user.button(L"&Test"));
        user.pickTab(L"Output");
        user.key(VK_ESCAPE);
        EXPECT_EQ(user.here(), nullptr);
    });
}

TEST_F(MatlabTab, showsLineNumbersTabStopsAndColours) {
    std::string text = "\ta % green\n    b\n";
    for (int i = 3; i <= 200; ++i)
        text += "% line\n";
    setScript(text);
    work([&](WindowDriver& user) {
        const HWND view = user.control(IDC_MATLAB_SCRIPT);
        const auto leftOf = [&](LONG character) {
            POINTL place{};
            SendMessageW(view, EM_POSFROMCHAR, reinterpret_cast<WPARAM>(&place), character);
            return place.x;
        };
        EXPECT_EQ(leftOf(1), leftOf(15)); // a and b
        EXPECT_THAT(narrow(user.text(IDC_MATLAB_LINES)), StartsWith("1\n2\n3\n"));
        SendMessageW(view, EM_LINESCROLL, 0, 100);
        UpdateWindow(view);
        user.settle();
        EXPECT_THAT(narrow(user.text(IDC_MATLAB_LINES)), StartsWith("101\n102\n"));

        const HDC device = GetDC(view);
        int green = 0;
        for (int x = 0; x < 60; ++x)
            for (int y = 0; y < 60; ++y) {
                const COLORREF colour = GetPixel(device, x, y);
                green += GetGValue(colour) > GetRValue(colour) + 50 ? 1 : 0;
            }
        ReleaseDC(view, device);
        EXPECT_GT(green, 10);
    });
    EXPECT_EQ(script(), text);
}

TEST_F(MatlabTab, neitherTestsNorWritesAnUnreadableScript) {
    DeleteFileW(scriptPath().c_str());
    const std::wstring failure = L"Failed to open Matlab script: No such file or directory";
    work(
        [&](WindowDriver& user) {
            EXPECT_EQ(user.text(IDC_MATLAB_SCRIPT), failure);
            EXPECT_FALSE(IsWindowEnabled(user.control(IDC_MATLAB_SCRIPT)));
            EXPECT_FALSE(user.isEnabled(L"&Test"));
        },
        [&](WindowDriver& user) { EXPECT_EQ(user.answer(L"Error:"), failure); });
    EXPECT_EQ(script(), "?");

    // One that can't be written: the view says why in place of the text, which is not written for that.
    setScript("kept");
    const auto refuse = [&](WindowDriver& user) {
        typeAtEnd(user, L"x");
        const FileHandle hold(CreateFileW(scriptPath().c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                                          FILE_ATTRIBUTE_NORMAL, nullptr));
        user.press(L"&Test");
        const std::wstring denied = L"Failed to open Matlab script: Permission denied";
        EXPECT_EQ(user.answer(L"Error:"), denied);
        EXPECT_EQ(user.text(IDC_MATLAB_SCRIPT), denied);
        EXPECT_THAT(narrow(user.text(IDC_MATLAB_PLACE)), HasSubstr("The script is not shown"));
    };
    EXPECT_EQ(work([&](WindowDriver& user) {
                  refuse(user);
                  user.press(L"&Test");
                  typeAtEnd(user, L"y");
                  user.press(L"&Test");
                  SendMessageW(user.control(IDC_MATLAB_SCRIPT), EM_SETSEL, 10, 11);
                  SendMessageW(user.control(IDC_MATLAB_SCRIPT), WM_CHAR, L'x', 1); // within the message
                  user.press(L"&Test");
              }),
              S_FALSE);
    EXPECT_EQ(script(), "kept");
    EXPECT_EQ(work([&](WindowDriver& user) {
                  refuse(user);
                  user.pickTab(L"Script");
                  user.withControl([&] { user.key('Z'); });
                  EXPECT_EQ(user.text(IDC_MATLAB_SCRIPT), L"keptx");
              }),
              S_OK);
    EXPECT_EQ(script(), "keptx");
}

TEST_F(MatlabTab, discardsClicksAndKeysWhileBusy) {
    const auto knockOn = [](HWND close, HWND view) {
        PostMessageW(close, WM_LBUTTONDOWN, MK_LBUTTON, 0);
        PostMessageW(close, WM_LBUTTONUP, 0, 0);
        PostMessageW(view, WM_KEYDOWN, VK_ESCAPE, 1);
    };
    HWND close = nullptr;
    HWND view = nullptr;
    HWND place = nullptr;
    std::wstring shown;
    matlab.onRun = [&](const std::wstring&) {
        shown = textOf(place);
        knockOn(close, view);
        return printed(L"MATLAB output:\nMATLAB done\n");
    };
    const ChosenEditor chosen(editorStandIn);
    work([&](WindowDriver& user) {
        close = user.button(L"&Close");
        view = user.control(IDC_MATLAB_SCRIPT);
        place = user.control(IDC_MATLAB_PLACE);
        user.press(L"&Test");
        user.settle();
        EXPECT_EQ(shown, L"Running...");
        ASSERT_TRUE(user.here());
        EXPECT_THAT(narrow(user.text(IDC_MATLAB_OUTPUT)), HasSubstr("OK"));
        user.pickTab(L"Script");
        editOutside(user, [&] { knockOn(close, view); });
        EXPECT_TRUE(user.here());
    });
}

TEST_F(MatlabTab, closesTheWindowIfTheHostQuitsDuringATest) {
    SimulatorWindow host;
    const Handle painted(CreateEventW(nullptr, FALSE, FALSE, nullptr));
    host.onPaint = [&] {
        PostQuitMessage(7);
        SetEvent(painted.get());
    };
    matlab.onRun = [&](const std::wstring&) {
        host.post(WM_PAINT);
        EXPECT_EQ(WaitForSingleObject(painted.get(), 5000), WAIT_OBJECT_0);
        return MatlabAnswer();
    };
    edit(L"Matlab", [](WindowDriver& user) {
        user.press(L"&Test");
        EXPECT_FALSE(user.here());
    });
    EXPECT_TRUE(isQuitting(7));
}

TEST_F(MatlabTab, leavesTheScriptToTheExternalEditor) {
    const std::string lines(12'000, '\n');
    setScript("a");
    const ChosenEditor chosen(editorStandIn);
    EXPECT_EQ(work([&](WindowDriver& user) {
                  typeAtEnd(user, L"bc\r");
                  editOutside(user);
                  EXPECT_EQ(user.text(IDC_MATLAB_SCRIPT), L"abc\r\n% edited\r\n");
                  EXPECT_EQ(user.focus(), user.button(L"&Edit"));
              }),
              S_OK);
    EXPECT_EQ(script(), "abc\r\n% edited\r\n");
    const std::string folder = narrow(workingFolder());
    EXPECT_EQ(readFile(workingFolder() + L"editor.txt"), '"' + narrow(editorStandIn) + "\" \"" + folder +
                                                             "calc.m\"\n" +
                                                             folder.substr(0, folder.size() - 1));

    // A view with a long text is another one afterwards.
    setScript(lines);
    work([&](WindowDriver& user) {
        RECT before{};
        RECT after{};
        GetWindowRect(user.control(IDC_MATLAB_SCRIPT), &before);
        editOutside(user);
        GetWindowRect(user.control(IDC_MATLAB_SCRIPT), &after);
        EXPECT_TRUE(EqualRect(&before, &after));
        EXPECT_TRUE(user.text(IDC_MATLAB_SCRIPT).ends_with(L"\n% edited\r\n"));
        typeAtEnd(user, L"[");
    });
    EXPECT_TRUE(script().ends_with("\r\n% edited\r\n["));
}

TEST_F(MatlabTab, choosesTheEditorWithTheControlKey) {
    const std::wstring medit = temporary.path() + L"medit.exe";
    EXPECT_EQ(findScriptEditor(), L"notepad.exe");
    writeRegistryString(HKEY_LOCAL_MACHINE,
                        std::wstring(L"Software\\Classes\\CLSID\\") + scriptedMatlabClassText +
                            L"\\LocalServer32",
                        L"", L"\"" + temporary.path() + L"matlab.exe\" /Automation");
    EXPECT_EQ(findScriptEditor(), L"notepad.exe");
    writeFile(medit, "MZ");
    EXPECT_EQ(findScriptEditor(), medit);

    const ChosenEditor chosen(L"C:\\none.exe");
    EXPECT_EQ(work([&](WindowDriver& user) {
                  user.press(L"&Edit");
                  EXPECT_EQ(user.answer(L"Failed to Edit:"),
                            L"Failed to run command:\r\n\"C:\\none.exe\" \"" + scriptPath() +
                                L"\"\r\nHold Control while clicking Edit to select a different editor.");
                  user.withControl([&] { user.press(L"&Edit"); });
                  user.enterFile(L"Select script editor:", L"");
                  EXPECT_EQ(findScriptEditor(), L"C:\\none.exe");
                  user.withControl([&] { user.press(L"&Edit"); });
                  user.enterFile(L"Select script editor:", medit);
                  EXPECT_EQ(user.answer(L"Editor selected"), L"Selected editor has been saved");
              }),
              S_FALSE);
    EXPECT_EQ(findScriptEditor(), medit);
    DeleteFileW(medit.c_str());
}

} // namespace
} // namespace solvane
