#include "com/Failure.hpp"

#include <gtest/gtest.h>

#include <stdexcept>

namespace hearthmake::com {
namespace {

TEST(Failure, LetsNoExceptionOut) {
  EXPECT_EQ(Guarded(IID_NULL, []() -> HRESULT { throw std::bad_alloc(); }), static_cast<HRESULT>(0x800A0007));
  EXPECT_EQ(Guarded(IID_NULL, []() -> HRESULT { throw std::runtime_error("x"); }), E_FAIL);
  EXPECT_EQ(Guarded(IID_NULL, []() -> HRESULT { throw 3; }), E_FAIL);
}

}  // namespace
}  // namespace hearthmake::com
