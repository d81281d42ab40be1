#include "com/Failure.hpp"

#include <gtest/gtest.h>

#include <stdexcept>

namespace hearthmake::com {
namespace {

TEST(Failure, GivesNumbersTheHresultsOfVisualBasic) {
  EXPECT_EQ(ToResult(45), static_cast<HRESULT>(0x800A002D));
  EXPECT_EQ(ToResult(1004), static_cast<HRESULT>(0x800A03EC));
  EXPECT_EQ(ToResult(static_cast<std::int32_t>(0x80040003)), static_cast<HRESULT>(0x80040003));
  EXPECT_EQ(ToResult(0x10000), E_FAIL);
  EXPECT_TRUE(FAILED(ToResult(0)));
}

TEST(Failure, TakesThemBack) {
  EXPECT_EQ(ToNumber(static_cast<HRESULT>(0x800A002D)), 45);
  EXPECT_EQ(ToNumber(DISP_E_MEMBERNOTFOUND), 438);
  EXPECT_EQ(ToNumber(DISP_E_TYPEMISMATCH), 13);
  EXPECT_EQ(ToNumber(E_OUTOFMEMORY), 7);
  EXPECT_EQ(ToNumber(static_cast<HRESULT>(0x80040154)), static_cast<std::int32_t>(0x80040154));
}

TEST(Failure, SaysSomethingOfEveryHresult) {
  EXCEPINFO record = {};
  EXPECT_EQ(FailureOf(DISP_E_MEMBERNOTFOUND, record).Description(),
            "Object doesn't support this property or method");
  EXPECT_FALSE(FailureOf(REGDB_E_CLASSNOTREG, record).Description().empty());
  EXPECT_EQ(FailureOf(static_cast<HRESULT>(0x8FFF1234), record).Description(), "Automation error 0x8FFF1234");
  record.wCode = 9;
  EXPECT_EQ(FailureOf(DISP_E_EXCEPTION, record).Number(), 9);
}

TEST(Failure, LetsNoExceptionOut) {
  EXPECT_EQ(Guarded(IID_NULL, []() -> HRESULT { throw std::bad_alloc(); }), static_cast<HRESULT>(0x800A0007));
  EXPECT_EQ(Guarded(IID_NULL, []() -> HRESULT { throw std::runtime_error("x"); }), E_FAIL);
  EXPECT_EQ(Guarded(IID_NULL, []() -> HRESULT { throw 3; }), E_FAIL);
}

}  // namespace
}  // namespace hearthmake::com
