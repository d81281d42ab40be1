#include "adapters/win32/AutomationFailure.hpp"

#include <gtest/gtest.h>

namespace hearthmake::win32 {
namespace {

TEST(AutomationFailure, GivesNumbersTheHresultsOfVisualBasic) {
  EXPECT_EQ(ToResult(45), static_cast<HRESULT>(0x800A002D));
  EXPECT_EQ(ToResult(1004), static_cast<HRESULT>(0x800A03EC));
  EXPECT_EQ(ToResult(static_cast<std::int32_t>(0x80040003)), static_cast<HRESULT>(0x80040003));
  EXPECT_EQ(ToResult(0x10000), E_FAIL);
  EXPECT_TRUE(FAILED(ToResult(0)));
}

TEST(AutomationFailure, TakesThemBack) {
  EXPECT_EQ(ToNumber(static_cast<HRESULT>(0x800A002D)), 45);
  EXPECT_EQ(ToNumber(DISP_E_MEMBERNOTFOUND), 438);
  EXPECT_EQ(ToNumber(DISP_E_TYPEMISMATCH), 13);
  EXPECT_EQ(ToNumber(E_OUTOFMEMORY), 7);
  EXPECT_EQ(ToNumber(static_cast<HRESULT>(0x80040154)), static_cast<std::int32_t>(0x80040154));
}

TEST(AutomationFailure, SaysSomethingOfEveryHresult) {
  EXCEPINFO record = {};
  EXPECT_EQ(FailureOf(DISP_E_MEMBERNOTFOUND, record).Description(),
            "Object doesn't support this property or method");
  EXPECT_FALSE(FailureOf(REGDB_E_CLASSNOTREG, record).Description().empty());
  EXPECT_EQ(FailureOf(static_cast<HRESULT>(0x8FFF1234), record).Description(), "Automation error 0x8FFF1234");
  record.wCode = 9;
  EXPECT_EQ(FailureOf(DISP_E_EXCEPTION, record).Number(), 9);
}

TEST(AutomationFailure, TakesTheRecordOfTheCallee) {
  EXCEPINFO record = {};
  record.scode = static_cast<SCODE>(0x800A002D);
  record.bstrSource = SysAllocString(L"The source");
  record.bstrDescription = SysAllocString(L"The text");
  record.bstrHelpFile = SysAllocString(L"help.chm");
  const automation::Error error = FailureOf(DISP_E_EXCEPTION, record);
  EXPECT_EQ(error.Number(), 45);
  EXPECT_EQ(error.Source(), "The source");
  EXPECT_EQ(error.Description(), "The text");
  EXPECT_EQ(record.bstrSource, nullptr);
  EXPECT_EQ(record.bstrHelpFile, nullptr);
}

TEST(AutomationFailure, LetsTheCalleeFillTheRecordInLater) {
  EXCEPINFO record = {};
  record.pfnDeferredFillIn = [](EXCEPINFO* later) -> HRESULT {
    later->scode = static_cast<SCODE>(0x80040003);
    later->bstrDescription = SysAllocString(L"Later");
    return S_OK;
  };
  const automation::Error error = FailureOf(DISP_E_EXCEPTION, record);
  EXPECT_EQ(error.Number(), static_cast<std::int32_t>(0x80040003));
  EXPECT_EQ(error.Description(), "Later");
}

}  // namespace
}  // namespace hearthmake::win32
