#include "vb6/DosPath.hpp"

#include <gtest/gtest.h>

namespace hearthmake::vb6 {
namespace {

TEST(DosPath, FoldsStepsAndKeepsRoots) {
  EXPECT_EQ(JoinPath("C:\\src\\Lib", "..\\bin"), "C:\\src\\bin");
  EXPECT_EQ(JoinPath("C:\\src", "D:\\x\\.\\y"), "D:\\x\\y");
  EXPECT_EQ(JoinPath("C:\\src", "..\\..\\..\\x"), "C:\\x");
  EXPECT_EQ(JoinPath("C:\\src", "\\x"), "C:\\x");
  EXPECT_EQ(JoinPath("C:\\src", ""), "C:\\src");
  EXPECT_EQ(JoinPath("C:\\src", "\\\\server\\share\\..\\x"), "\\\\server\\share\\x");
  EXPECT_EQ(FolderOf("C:\\a\\b.vbp"), "C:\\a");
  EXPECT_EQ(BaseNameOf("C:\\a\\b.c.vbp"), "b.c");
}

}  // namespace
}  // namespace hearthmake::vb6
