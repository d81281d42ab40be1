#include "vb6/CommandLine.hpp"

#include <gtest/gtest.h>

namespace hearthmake::vb6 {
namespace {

TEST(CommandLine, TakesTheSwitchesOfMakeMode) {
  const auto line = CommandLine::Parse({"C:\\a\\Lib.vbp", "/makedll", "/out", "C:\\CR.txt"});
  EXPECT_TRUE(line.make);
  EXPECT_EQ(line.project, "C:\\a\\Lib.vbp");
  EXPECT_EQ(line.log, "C:\\CR.txt");
  EXPECT_EQ(line.problem, "");
  EXPECT_TRUE(CommandLine::Parse({"-M", "x.VBP"}).make);
  EXPECT_EQ(CommandLine::Parse({"/tmp/x.vbp", "/make", "/out", "/tmp/log"}).project, "/tmp/x.vbp");
  EXPECT_EQ(CommandLine::Parse({"x.vbp", "/make", "/out"}).problem, "nothing follows '/out'");
  EXPECT_EQ(CommandLine::Parse({"x.vbp", "/make", "/frob"}).problem, "unknown argument '/frob'");
  EXPECT_EQ(CommandLine::Parse({"/make"}).problem, "no project file (.vbp) is named");
}

}  // namespace
}  // namespace hearthmake::vb6
