#include "adapters/git/Message.hpp"

#include <gtest/gtest.h>

namespace hearthmake::git {
namespace {

TEST(Message, WhatWasPrintedIsRead) {
  for (const std::string& comment : {std::string(), std::string("one"),
                                     std::string("two\nlines\n\nand: more"), std::string("Label: false")}) {
    const Message message = ParseMessage(PrintMessage(comment, {{"Label", "1\n2 %41 é"}, {"Path", "$/A"}}));
    EXPECT_EQ(message.comment, comment);
    EXPECT_EQ(message.Find("Label"), "1\n2 %41 é");
    EXPECT_EQ(message.Find("Path"), "$/A");
    EXPECT_EQ(message.Find("None"), std::nullopt);
  }
}

TEST(Message, LineEndsBecomeThoseOfGit) {
  EXPECT_EQ(PrintMessage("a\r\nb\rc\r\n\r\n", {}), "a\nb\nc\n");
  EXPECT_EQ(PrintMessage("", {}), "");
  EXPECT_EQ(PrintMessage("a", {{"B", "c"}}), "a\n\nB: c\n");
}

TEST(Message, AParagraphThatIsNotAllTrailersIsComment) {
  const Message message = ParseMessage("Subject\n\nLabel: x\nand words\n");
  EXPECT_EQ(message.comment, "Subject\n\nLabel: x\nand words");
  EXPECT_TRUE(message.trailers.empty());
}

TEST(Message, TextIsUtf8OrWindows1252) {
  EXPECT_EQ(ReadableText("é"), "é");
  EXPECT_EQ(ReadableText("\xE9"), "é");
}

}  // namespace
}  // namespace hearthmake::git
