#include "ScriptColours.h"

#include "ScriptTokens.h"

#include <richedit.h>

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <vector>

namespace solvane {

namespace {

/// In the order of ScriptToken.
constexpr std::array<COLORREF, 4> colours{RGB(0, 0, 255), RGB(163, 21, 163), RGB(0, 128, 0),
                                          RGB(9, 112, 136)};

// A block comment that began further above is not seen: reading all of a long script for each paint would
// take too long. For the same reason what lies further below stays black.
constexpr LONG lookBack = 20'000;
constexpr LONG lookAhead = 20'000;

/// From this length on, each request to Wine's control takes too long per key.
constexpr int longText = 1'000'000;

/// What the view draws in its own font.
bool isSimple(wchar_t c) {
    return c >= L' ' && c < 0x250;
}

/// The view's text around its visible begin, and what its characters are.
struct VisibleScript {
    VisibleScript(HWND view, LONG firstCharacter) {
        const LONG from = std::max(firstCharacter - lookBack, 0L);
        text.resize(static_cast<std::size_t>(firstCharacter - from) + lookAhead + 1);
        TEXTRANGEW range{{from, firstCharacter + lookAhead}, text.data()};
        text.resize(static_cast<std::size_t>(
            SendMessageW(view, EM_GETTEXTRANGE, 0, reinterpret_cast<LPARAM>(&range))));
        first = std::min(static_cast<std::size_t>(firstCharacter - from), text.size());
        tokens.resize(text.size());
        const std::size_t line = from == 0 ? 0 : text.find(L'\r') + 1; // the first whole one
        for (const ScriptSpan& span : spansOf(std::wstring_view(text).substr(line)))
            std::fill(tokens.begin() + static_cast<std::ptrdiff_t>(line + span.begin),
                      tokens.begin() + static_cast<std::ptrdiff_t>(line + span.end), span.token);
    }

    std::wstring text;
    std::size_t first = 0;                          ///< visible character
    std::vector<std::optional<ScriptToken>> tokens; ///< of each character
};

/// A view's device, set up for its text, with the caret out of the way.
class TextDevice {
public:
    explicit TextDevice(const TextView& view) : view_(view.window()), device_(GetDC(view_)) {
        HideCaret(view_);
        SelectObject(device_, view.font().handle());
        SetBkColor(device_, GetSysColor(COLOR_WINDOW));
        RECT area{};
        SendMessageW(view_, EM_GETRECT, 0, reinterpret_cast<LPARAM>(&area));
        IntersectClipRect(device_, area.left, area.top, area.right, area.bottom);
    }
    ~TextDevice() {
        ReleaseDC(view_, device_); // a common one, which the next owner gets as new
        ShowCaret(view_);
    }
    TextDevice(const TextDevice&) = delete;
    TextDevice& operator=(const TextDevice&) = delete;

    void draw(LONG x, LONG y, std::wstring_view text, ScriptToken token) const {
        SetTextColor(device_, colours[static_cast<std::size_t>(token)]);
        TextOutW(device_, x, y, text.data(), static_cast<int>(text.size()));
    }

private:
    HWND view_;
    HDC device_;
};

} // namespace

void paintScriptColours(const TextView& view, const VisibleLines& lines) {
    const HWND window = view.window();
    // A disabled view, and a screen in colours of the user's own, stay as they are.
    if (!IsWindowEnabled(window) || GetSysColor(COLOR_WINDOW) != RGB(255, 255, 255) ||
        GetWindowTextLengthW(window) > longText)
        return;
    RECT area{};
    GetClientRect(window, &area);
    CHARRANGE selection{};
    SendMessageW(window, EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&selection));
    const VisibleScript script(window, lines.firstCharacter);
    const auto isSelected = [&](std::size_t at) {
        const LONG character = lines.firstCharacter + static_cast<LONG>(at - script.first);
        return character >= selection.cpMin && character < selection.cpMax;
    };
    const TextDevice device(view);
    const LONG width = view.font().characterWidth(window);
    LONG column = 0;
    LONG y = lines.place.y;
    bool isKnown = true; // the place, up to a character of another font
    for (std::size_t at = script.first; at < script.text.size() && y < area.bottom;) {
        const wchar_t c = script.text[at];
        if (c == L'\r') {
            column = 0;
            y = lines.height > 0 ? y + lines.height : area.bottom;
            isKnown = true;
        } else if (c == L'\t') {
            column += TextView::tabWidth - column % TextView::tabWidth;
            isKnown &= column <= TextView::tabWidth * MAX_TAB_STOPS;
        } else if (!isSimple(c)) {
            isKnown = false;
        }
        if (!isSimple(c)) {
            ++at;
            continue;
        }
        const std::size_t begin = at;
        while (at < script.text.size() && isSimple(script.text[at]) &&
               script.tokens[at] == script.tokens[begin] && isSelected(at) == isSelected(begin))
            ++at;
        if (script.tokens[begin] && isKnown && !isSelected(begin))
            device.draw(lines.place.x + column * width, y,
                        std::wstring_view(script.text).substr(begin, at - begin), *script.tokens[begin]);
        column += static_cast<LONG>(at - begin);
    }
}

} // namespace solvane
