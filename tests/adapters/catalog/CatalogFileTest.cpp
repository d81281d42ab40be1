#include "adapters/catalog/CatalogFile.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "support/CatalogBench.hpp"
#include "support/ErrorExpect.hpp"

namespace hearthmake::catalog {
namespace {

using automation::Variant;
using support::ErrorOf;
using testing::HasSubstr;

Package Named(const std::string& name) {
  Package package;
  package.key = "{" + name + "}";
  package.properties.Set("Name", Variant::FromText(name));
  return package;
}

TEST(CatalogFile, IsEmptyWhereThereIsNoFile) {
  const support::CatalogBench bench;
  EXPECT_TRUE(bench.File()->Read().packages.empty());
  EXPECT_FALSE(std::filesystem::exists(bench.Path()));
}

TEST(CatalogFile, ChangesAsAWhole) {
  const support::CatalogBench bench;
  bench.File()->Change([](CatalogData& data) { data.packages.push_back(Named("Orders")); });
  bench.File()->Change([](CatalogData& data) { data.applications.push_back(Named("Stock")); });
  const CatalogData data = bench.File()->Read();
  EXPECT_EQ(data.packages.at(0).Name(), "Orders");
  EXPECT_EQ(data.applications.at(0).Name(), "Stock");
}

TEST(CatalogFile, StaysAsItIsWhenTheChangeFails) {
  const support::CatalogBench bench;
  bench.File()->Change([](CatalogData& data) { data.packages.push_back(Named("Orders")); });
  const std::string before = bench.Text();
  EXPECT_EQ(ErrorOf([&] {
              bench.File()->Change([](CatalogData& data) {
                data.packages.clear();
                automation::Raise(70, "Test", "no");
              });
            }).Number(),
            70);
  EXPECT_EQ(bench.Text(), before);
  bench.File()->Change([](CatalogData&) {});  // the lock was given back
}

TEST(CatalogFile, RefusesToGrowBeyondWhatItReads) {
  const support::CatalogBench bench;
  const auto error = ErrorOf([&] {
    bench.File()->Change([](CatalogData& data) {
      data.packages.push_back(Named(std::string(static_cast<std::size_t>(CatalogFile::kLargest), 'x')));
    });
  });
  EXPECT_EQ(error.Number(), 45);
  EXPECT_THAT(error.Description(), HasSubstr(bench.Path() + ": there is no room for more"));
  EXPECT_FALSE(std::filesystem::exists(bench.Path()));
}

TEST(CatalogFile, IsForItsUserAlone) {
  const support::CatalogBench bench;
  bench.File()->Change([](CatalogData& data) { data.packages.push_back(Named("Orders")); });
  EXPECT_EQ(bench.root.Mode("catalog.json"), 0600U);
}

}  // namespace
}  // namespace hearthmake::catalog
