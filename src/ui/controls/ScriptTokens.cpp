#include "ScriptTokens.h"

#include <algorithm>
#include <array>
#include <cwctype>
#include <utility>

namespace solvane {

namespace {

// Of Matlab and of Octave.
constexpr std::array<std::wstring_view, 32> keywords{
    L"break",
    L"case",
    L"catch",
    L"continue",
    L"do",
    L"else",
    L"elseif",
    L"end",
    L"end_try_catch",
    L"end_unwind_protect",
    L"endfor",
    L"endfunction",
    L"endif",
    L"endswitch",
    L"endwhile",
    L"for",
    L"function",
    L"global",
    L"if",
    L"otherwise",
    L"parfor",
    L"persistent",
    L"return",
    L"spmd",
    L"switch",
    L"try",
    L"unwind_protect",
    L"until",
    L"while",
    L"arguments",
    L"unwind_protect_cleanup",
    L"endparfor",
};

bool isDigit(wchar_t c) {
    return c >= L'0' && c <= L'9';
}
bool isWordPart(wchar_t c) {
    return c == L'_' || isDigit(c) || (c < 128 && std::iswalpha(c));
}

/// Reads a script from its begin to its end.
class Scanner {
public:
    explicit Scanner(std::wstring_view script) : script_(script) {}

    std::vector<ScriptSpan> run() {
        while (at_ < script_.size())
            takeLine();
        return std::move(spans_);
    }

private:
    wchar_t peek(std::size_t ahead = 0) const {
        return at_ + ahead < lineEnd_ ? script_[at_ + ahead] : L'\0';
    }
    /// The character before the place, in the same line.
    wchar_t previous() const { return at_ > lineBegin_ ? script_[at_ - 1] : L'\0'; }
    void add(std::size_t begin, ScriptToken token) { spans_.push_back({begin, at_, token}); }

    void takeLine() {
        lineBegin_ = at_;
        lineEnd_ = std::min(script_.find_first_of(L"\r\n", at_), script_.size());
        const std::wstring_view line = trimmed();
        if (line == L"%{" || line == L"#{")
            ++blockDepth_;
        const bool isComment = blockDepth_ > 0;
        if (isComment && (line == L"%}" || line == L"#}"))
            --blockDepth_;
        if (isComment)
            takeRest();
        while (at_ < lineEnd_)
            takePart();
        at_ = lineEnd_ + 1;
        if (!isContinued_)
            bracketDepth_ = 0; // whatever an unfinished line left open
        isContinued_ = false;
    }

    std::wstring_view trimmed() const {
        const std::wstring_view line = script_.substr(lineBegin_, lineEnd_ - lineBegin_);
        const std::size_t first = line.find_first_not_of(L" \t");
        return first == line.npos ? L"" : line.substr(first, line.find_last_not_of(L" \t") - first + 1);
    }

    void takeRest() {
        const std::size_t begin = std::exchange(at_, lineEnd_);
        if (begin < at_)
            add(begin, ScriptToken::comment);
    }

    void takePart() {
        const wchar_t c = peek();
        if (c == L'%' || c == L'#')
            return takeRest();
        if (c == L'.' && peek(1) == L'.' && peek(2) == L'.') {
            isContinued_ = true;
            return takeRest();
        }
        if (c == L'"' || (c == L'\'' && !isTranspose()))
            return takeText(c);
        if (isDigit(c) || (c == L'.' && isDigit(peek(1)) && !isWordPart(previous())))
            return takeNumber();
        if (isWordPart(c))
            return takeWord();
        if (c == L'(' || c == L'[' || c == L'{')
            ++bracketDepth_;
        if ((c == L')' || c == L']' || c == L'}') && bracketDepth_ > 0)
            --bracketDepth_;
        isContinued_ = bracketDepth_ > 0;
        ++at_;
    }

    bool isTranspose() const {
        const wchar_t before = previous();
        return isWordPart(before) || before == L')' || before == L']' || before == L'}' || before == L'\'' ||
               before == L'.';
    }

    /// A quote within the text is doubled.
    void takeText(wchar_t quote) {
        const std::size_t begin = at_++;
        while (at_ < lineEnd_) {
            const bool isEscape = quote == L'"' && peek() == L'\\' && peek(1) != L'\0';
            const bool isDoubled = peek() == quote && peek(1) == quote;
            if (isEscape || isDoubled)
                ++at_;
            else if (peek() == quote)
                break;
            ++at_;
        }
        at_ = std::min(at_ + 1, lineEnd_);
        add(begin, ScriptToken::text);
    }

    void takeNumber() {
        const std::size_t begin = at_;
        while (isWordPart(peek()) || (peek() == L'.' && isDigit(peek(1))) || isExponentsSign())
            ++at_;
        add(begin, ScriptToken::number);
    }
    bool isExponentsSign() const {
        const wchar_t before = previous();
        return (peek() == L'-' || peek() == L'+') && isDigit(peek(1)) &&
               (before == L'e' || before == L'E' || before == L'd' || before == L'D');
    }

    /// "end" within brackets is an index, and a word after a point is a field.
    void takeWord() {
        const bool isField = previous() == L'.';
        const std::size_t begin = at_;
        while (isWordPart(peek()))
            ++at_;
        if (!isField && bracketDepth_ == 0 &&
            std::ranges::find(keywords, script_.substr(begin, at_ - begin)) != keywords.end())
            add(begin, ScriptToken::keyword);
    }

    std::wstring_view script_;
    std::vector<ScriptSpan> spans_;
    std::size_t at_ = 0;
    std::size_t lineBegin_ = 0;
    std::size_t lineEnd_ = 0;
    int blockDepth_ = 0; ///< of comments within comments
    int bracketDepth_ = 0;
    bool isContinued_ = false;
};

} // namespace

std::vector<ScriptSpan> spansOf(std::wstring_view script) {
    return Scanner(script).run();
}

} // namespace solvane
