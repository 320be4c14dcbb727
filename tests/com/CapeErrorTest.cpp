#include "com/CapeError.h"

#include "CapeOpen.h"
#include "com/ClassFactory.h"
#include "com/Dispatch.h"

#include <gtest/gtest.h>

#include <array>

namespace solvane {
namespace {

/// An object with the error texts and error interfaces that a test gives it.
class ObjectWithErrors final : public DispatchImpl<ECapeRoot>, public DispatchImpl<ECapeUser> {
public:
    const wchar_t* name = nullptr;        ///< null: no ECapeRoot
    const wchar_t* description = nullptr; ///< null: no ECapeUser
    bool getterFails = false;

    STDMETHODIMP QueryInterface(REFIID iid, void** result) override {
        *result = nullptr;
        if (iid == __uuidof(ECapeRoot) && name)
            *result = static_cast<ECapeRoot*>(this);
        else if (iid == __uuidof(ECapeUser) && description)
            *result = static_cast<ECapeUser*>(this);
        return *result ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 1; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP get_name(BSTR* text) override { return give(name, text); }
    STDMETHODIMP get_description(BSTR* text) override { return give(description, text); }
    STDMETHODIMP get_code(LONG*) override { return E_NOTIMPL; }
    STDMETHODIMP get_scope(BSTR*) override { return E_NOTIMPL; }
    STDMETHODIMP get_interfaceName(BSTR*) override { return E_NOTIMPL; }
    STDMETHODIMP get_operation(BSTR*) override { return E_NOTIMPL; }
    STDMETHODIMP get_moreInfo(BSTR*) override { return E_NOTIMPL; }

private:
    HRESULT give(const wchar_t* text, BSTR* result) {
        if (getterFails)
            return E_FAIL;
        *result = SysAllocString(text);
        return S_OK;
    }
};

constexpr HRESULT capeCode(unsigned last) {
    return static_cast<HRESULT>(0x80040500u + last);
}

TEST(DescribeCapeError, prefersTheObjectsOwnDescription) {
    struct Row {
        const wchar_t* name;
        const wchar_t* description;
        bool getterFails;
        const wchar_t* expected;
    };
    constexpr const wchar_t* ofCode = L"index out of bounds";
    for (const Row& row : {
             Row{L"x", L"the compound is unknown", false, L"the compound is unknown"},
             Row{L"x", L"", false, L"x"},
             Row{L"x", nullptr, false, L"x"},
             Row{L"", L"", false, ofCode},
             Row{nullptr, nullptr, false, ofCode},
             Row{L"x", L"y", true, ofCode},
         }) {
        ObjectWithErrors object;
        object.name = row.name;
        object.description = row.description;
        object.getterFails = row.getterFails;
        EXPECT_EQ(DescribeCapeError(static_cast<ECapeRoot*>(&object), capeCode(0x07)), row.expected);
    }
}

TEST(DescribeCapeError, asksTheObjectOnlyForItsOwnCodes) {
    ObjectWithErrors object;
    object.description = L"not to be asked";
    IUnknown* unknown = static_cast<ECapeRoot*>(&object);
    for (const HRESULT code : {capeCode(0x00), capeCode(0x1B), E_OUTOFMEMORY})
        EXPECT_EQ(DescribeCapeError(unknown, code), FormatHresultText(code));
    EXPECT_EQ(DescribeCapeError(unknown, capeCode(0x01)), L"not to be asked");
    EXPECT_EQ(DescribeCapeError(unknown, capeCode(0x1A)), L"not to be asked");
}

TEST(DescribeCapeError, describesCodesWithoutAnObject) {
    std::wstring texts;
    for (unsigned code = 0x01; code <= 0x1A; ++code)
        texts += DescribeCapeError(nullptr, capeCode(code)) + L"|";
    EXPECT_EQ(texts, L"Failed to get error name for ECapeUnknown|invalid data|license problem|"
                     L"Bad Cape-Open parameter|Bad argument|Invalid argument|index out of bounds|"
                     L"current implementation related error|not implemented|implementation is limited|"
                     L"computation error|out of resources|out of memory|operation was timed out|"
                     L"initialization error|solution error|invalid order of invocations|invalid operation|"
                     L"storage / persistence error|illegal access|persistence error: not found|"
                     L"persistence system error|persistence overflow error|solver scope error|"
                     L"Hessian information not available|"
                     L"One or more of the requested thermodynamic properties are not set on the material|");
}

TEST(FormatHresultText, trimsSystemTextsAndPrintsUnknownCodesInHexadecimal) {
    const std::wstring known = FormatHresultText(HRESULT_FROM_WIN32(ERROR_ACCESS_DENIED));
    EXPECT_FALSE(known.empty());
    EXPECT_EQ(known.find_first_of(L"\r\n"), std::wstring::npos);
    EXPECT_EQ(FormatHresultText(static_cast<HRESULT>(0x80ABCDEF)), L"error code 0x80ABCDEF");
}

} // namespace
} // namespace solvane
