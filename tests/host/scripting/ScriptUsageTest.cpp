#include "host/scripting/ScriptUsage.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/HostError.hpp"

namespace hearthmake::host {
namespace {

using testing::ElementsAre;

TEST(ScriptUsage, TellsTheFileFromItsArguments) {
  const ScriptUsage usage = ScriptUsage::Parse({"a.vbs", "/x:1", "--y", "b.vbs"});
  EXPECT_EQ(usage.file, "a.vbs");
  EXPECT_THAT(usage.arguments, ElementsAre("/x:1", "--y", "b.vbs"));
  EXPECT_EQ(usage.timeoutSeconds, 0);
  EXPECT_TRUE(usage.isInteractive);
}

TEST(ScriptUsage, TakesHostOptionsAnywhere) {
  const ScriptUsage usage = ScriptUsage::Parse({"//NoLogo", "//B", "a.vbs", "x", "//T:5", "//e:vbscript"});
  EXPECT_EQ(usage.file, "a.vbs");
  EXPECT_THAT(usage.arguments, ElementsAre("x"));
  EXPECT_EQ(usage.timeoutSeconds, 5);
  EXPECT_FALSE(usage.isInteractive);
}

TEST(ScriptUsage, RefusesWhatItDoesNotKnow) {
  const std::vector<std::vector<std::string>> wrong = {{},
                                                       {"//nologo"},
                                                       {"//foo", "a.vbs"},
                                                       {"//T:x", "a.vbs"},
                                                       {"//T:-1", "a.vbs"},
                                                       {"//E:jscript", "a.vbs"},
                                                       {"--data", "x", "a.vbs"}};
  for (const auto& words : wrong) EXPECT_THROW(ScriptUsage::Parse(words), HostError);
}

}  // namespace
}  // namespace hearthmake::host
