#include "vbscript/values/WideProduct.hpp"

#include <gtest/gtest.h>

namespace hearthmake::vbscript {
namespace {

void ExpectProduct(std::uint64_t a, std::uint64_t b, std::uint64_t high, std::uint64_t low) {
  const WideProduct product = MultiplyWide(a, b);
  EXPECT_EQ(product.high, high) << a << " * " << b;
  EXPECT_EQ(product.low, low) << a << " * " << b;
}

TEST(WideProduct, LosesNothing) {
  constexpr std::uint64_t kAll = ~std::uint64_t{0};
  ExpectProduct(0, kAll, 0, 0);
  ExpectProduct(1, kAll, 0, kAll);
  ExpectProduct(kAll, kAll, kAll - 1, 1);
  ExpectProduct(kAll, 2, 1, kAll - 1);
  ExpectProduct(std::uint64_t{1} << 32, std::uint64_t{1} << 32, 1, 0);
  ExpectProduct(0x123456789ABCDEF0, 0x0FEDCBA987654321, 0x0121FA00AD77D742, 0x2236D88FE5618CF0);
}

}  // namespace
}  // namespace hearthmake::vbscript
