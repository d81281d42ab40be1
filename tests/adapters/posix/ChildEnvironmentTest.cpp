#include "adapters/posix/ChildEnvironment.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/PosixFolder.hpp"

namespace hearthmake::posix {
namespace {

using support::EnvironmentOverride;
using ::testing::Contains;
using ::testing::Not;

std::vector<std::string> Entries(ChildEnvironment& environment) {
  std::vector<std::string> entries;
  for (char* const* entry = environment.Block(); *entry != nullptr; ++entry) entries.emplace_back(*entry);
  return entries;
}

TEST(ChildEnvironment, ReplacesVariablesOfTheParent) {
  const EnvironmentOverride mine("MINE", "old");
  const EnvironmentOverride longer("MINE2", "kept");
  ChildEnvironment environment({{"MINE", "new"}, {"EMPTY", ""}});
  const auto entries = Entries(environment);
  EXPECT_THAT(entries, Contains("MINE=new").Times(1));
  EXPECT_THAT(entries, Not(Contains("MINE=old")));
  EXPECT_THAT(entries, Contains("MINE2=kept"));
  EXPECT_THAT(entries, Contains("EMPTY="));
}

TEST(ChildEnvironment, IsPutTogetherOnceAndAgainAfterAChange) {
  const std::vector<std::pair<std::string, std::string>> variables = {{"A", "1"}};
  ChildEnvironment environment(variables);
  char* const* const block = environment.Block();
  EXPECT_EQ(environment.Block(), block);
  const EnvironmentOverride later("LATER", "x");
  EXPECT_THAT(Entries(environment), Contains("LATER=x"));
}

}  // namespace
}  // namespace hearthmake::posix
