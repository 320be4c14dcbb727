#include "CodePage.h"

#include "link/EngineProtocol.h"

#include <iconv.h>

#include <array>
#include <cstdlib>

namespace solvane::gateway {

namespace {

/// The unit's code page can't be asked for from Linux: the automation server, which runs on the unit's side,
/// leaves its decimal number in the environment. Without it we take that of Western Europe.
constexpr char westernCodePage[] = "1252";

std::string codePageName() {
    const char* number = std::getenv(engine::codePageVariable);
    const std::string page = number && *number ? number : westernCodePage;
    return page == "65001" ? "UTF-8" : "CP" + page;
}

class Converter {
public:
    Converter(const std::string& to, const std::string& from)
        : handle_(iconv_open(to.c_str(), from.c_str())) {}
    ~Converter() {
        if (valid())
            iconv_close(handle_);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    /// Appends what could be converted to `result`; returns how many characters of `text` that were.
    std::size_t convert(std::string_view text, std::string& result) {
        char* source = const_cast<char*>(text.data());
        std::size_t sourceLeft = valid() ? text.size() : 0;
        const std::size_t sourceSize = sourceLeft;
        std::array<char, 512> buffer;
        bool more = sourceLeft > 0;
        while (more) {
            char* target = buffer.data();
            std::size_t targetLeft = buffer.size();
            const std::size_t before = sourceLeft;
            iconv(handle_, &source, &sourceLeft, &target, &targetLeft);
            result.append(buffer.data(), target);
            more = sourceLeft > 0 && sourceLeft < before;
        }
        return sourceSize - sourceLeft;
    }

private:
    bool valid() const { return handle_ != reinterpret_cast<iconv_t>(-1); }

    iconv_t handle_;
};

} // namespace

bool utf8ToCodePage(std::string_view text, std::string& bytes) {
    bytes.clear();
    return Converter(codePageName(), "UTF-8").convert(text, bytes) == text.size();
}

std::string codePageToUtf8(std::string_view bytes) {
    Converter converter("UTF-8", codePageName());
    std::string text;
    // A byte that the code page doesn't define shows as a question mark.
    for (bytes.remove_prefix(converter.convert(bytes, text)); !bytes.empty();
         bytes.remove_prefix(converter.convert(bytes, text))) {
        text += '?';
        bytes.remove_prefix(1);
    }
    return text;
}

} // namespace solvane::gateway
