#include "com/Border.h"

#include <gtest/gtest.h>

#include <cmath>
#include <stdexcept>

namespace solvane {
namespace {

TEST(Border, turnsExceptionsIntoResults) {
    EXPECT_EQ(border([]() -> HRESULT { return S_FALSE; }), S_FALSE);
    EXPECT_EQ(border([]() -> HRESULT { throw std::bad_alloc(); }), E_OUTOFMEMORY);
    EXPECT_EQ(border([]() -> HRESULT { throw std::runtime_error("lost"); }), E_UNEXPECTED);
    EXPECT_EQ(border([]() -> HRESULT { throw "a plain text"; }), E_UNEXPECTED);
}

/// Unmasks invalid operation, division by zero and overflow in both units, as Fortran and Delphi hosts do.
class UnmaskedTraps {
public:
    UnmaskedTraps() {
        __asm__ volatile("stmxcsr %0\n\tfnstcw %1" : "=m"(sse_), "=m"(x87_));
        load(sseUnmasked, x87Unmasked);
    }
    ~UnmaskedTraps() { load(sse_, x87_); }
    UnmaskedTraps(const UnmaskedTraps&) = delete;
    UnmaskedTraps& operator=(const UnmaskedTraps&) = delete;

    static constexpr unsigned sseUnmasked = 0x1900;
    static constexpr unsigned short x87Unmasked = 0x0372;

private:
    static void load(unsigned sse, unsigned short x87) {
        __asm__ volatile("fnclex\n\tfldcw %0\n\tldmxcsr %1" : : "m"(x87), "m"(sse));
    }

    unsigned sse_;
    unsigned short x87_;
};

TEST(Border, masksTrapsInsideAndRestoresTheHostsMask) {
    volatile double zero = 0;
    volatile long double extendedZero = 0;
    volatile double result = 0;
    volatile long double extendedResult = 0;
    unsigned sseAfter = 0;
    unsigned short x87After = 0;
    {
        const UnmaskedTraps traps;
        border([&]() -> HRESULT {
            result = 1 / zero + zero / zero; // any of these traps would end the process
            extendedResult = 1 / extendedZero;
            return S_OK;
        });
        extendedResult = extendedResult + 1; // a remaining flag would trap here
        __asm__ volatile("stmxcsr %0\n\tfnstcw %1" : "=m"(sseAfter), "=m"(x87After));
    }
    EXPECT_TRUE(std::isnan(result));
    EXPECT_TRUE(std::isinf(extendedResult));
    EXPECT_EQ(sseAfter, UnmaskedTraps::sseUnmasked);
    EXPECT_EQ(x87After, UnmaskedTraps::x87Unmasked);
}

TEST(PrepareMessage, freesAndNullsTheFormerText) {
    BSTR message = SysAllocString(L"of an earlier call");
    EXPECT_TRUE(prepareMessage(&message));
    EXPECT_EQ(message, nullptr);
    EXPECT_FALSE(prepareMessage(nullptr));
}

} // namespace
} // namespace solvane
