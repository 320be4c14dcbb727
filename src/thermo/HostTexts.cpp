#include "HostTexts.h"

#include "com/CapeError.h"
#include "com/Text.h"

namespace solvane {

const HostTexts hostTexts;

BSTR unspecifiedSolution() {
    static const Bstr text(L"unspecified");
    return text.get();
}

Bstr hostText(std::string_view text) {
    return Bstr(widen(text, CP_THREAD_ACP));
}

std::string scriptText(std::wstring_view text) {
    return narrow(text, CP_THREAD_ACP);
}

std::string describeFailure(IUnknown& object, HRESULT hr) {
    return scriptText(DescribeCapeError(&object, hr));
}

} // namespace solvane
