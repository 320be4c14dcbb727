// The gateway in a process that has neither of Matlab's libraries: this program itself exports the functions,
// as a Windows Octave does, under plain names and with characters of one byte. It has mexGetArray, as Matlab
// had before 6.5, and no mxCreateCellMatrix.
#include "Caller.h"
#include "UnitSide.h"

#include <gtest/gtest.h>

extern "C" StandInHooks standInHooks;

using solvane::wireOf;

namespace {

TEST(GatewayLookup, findsTheFunctionsOfAnyModuleAndNamesAMissingOne) {
    UnitSide unit(2048);
    useGateway(standInHooks, 2, {});
    ASSERT_EQ(call(0, {1, narrowText(unit.id())}), "");

    unit.answer(wireOf(0u, "caf\xe9"));
    EXPECT_EQ(call(1, {narrowText("getUnitName")}), "'caf\xc3\xa9'");
    unit.answer(wireOf(1u, "pas de caf\xe9"));
    EXPECT_EQ(call(1, {narrowText("getPropertyUnit"), narrowText("caf\xc3\xa9")}),
              "error: pas de caf\xc3\xa9");
    EXPECT_EQ(unit.takeRequest(), wireOf(11u, "caf\xe9").bytes());
    EXPECT_EQ(call(0, {narrowText("logMessage"), narrowText("\xe9t\xe9")}),
              "error: logMessage: text holds a character that is not in the system's ANSI code page. "
              "Usage: logMessage(text)");

    unit.answer(wireOf(0u, 0, 300., 1e5));
    EXPECT_EQ(call(5, {narrowText("getFeedEquilibrium"), 1}),
              "error: CapeOpenUnitMex: the interpreter that loaded it has no mxCreateCellMatrix");
    EXPECT_EQ(call(0, {2}), "");
}

} // namespace
