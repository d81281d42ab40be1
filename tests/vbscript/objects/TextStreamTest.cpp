#include "vbscript/objects/TextStream.hpp"

#include "support/SystemObjectTest.hpp"
#include "vbscript/objects/StandardObjects.hpp"

namespace hearthmake::vbscript {
namespace {

using namespace std::string_literals;
using automation::Object;
using automation::Ref;

class TextStreamTest : public SystemObjectTest {
 protected:
  Ref<Object> Open(const std::string& name, std::int32_t mode = 1, bool create = false,
                   std::int32_t format = 0) {
    return ToObject(
        files->Call("OpenTextFile", {Text("C:\\" + name), Number(mode), Flag(create), Number(format)}));
  }
  Ref<Object> Create(const std::string& name, bool unicode = false) {
    return ToObject(files->Call("CreateTextFile", {Text("C:\\" + name), Flag(true), Flag(unicode)}));
  }
  std::string Content(const std::string& name) { return root.Content("c/" + name); }
  Ref<Object> OpenWith(const std::string& content) {
    root.MakeFile("c/in.txt", content);
    return Open("in.txt");
  }

  Ref<Object> files = CreateFileSystemObject(context);
};

TEST_F(TextStreamTest, WritesLinesInTheCodePage) {
  const auto stream = Create("a.txt");
  stream->Call("WriteLine", {Text("é€")});
  stream->Call("Write", {Number(12)});
  stream->Call("WriteBlankLines", {Number(2)});
  EXPECT_EQ(ToText(stream->Get("Line")), "4");
  EXPECT_EQ(ToText(stream->Get("Column")), "1");
  stream->Call("WriteLine");
  stream->Call("Close");
  EXPECT_EQ(Content("a.txt"), "\xE9\x80\r\n12\r\n\r\n\r\n");
}

TEST_F(TextStreamTest, RefusesACharacterThatTheCodePageLacks) {
  const auto stream = Create("a.txt");
  stream->Call("Write", {Text("ok")});
  EXPECT_EQ(ErrorOf([&] { stream->Call("Write", {Text("x一")}); }), 5);
  stream->Call("Close");
  EXPECT_EQ(Content("a.txt"), "ok");
}

TEST_F(TextStreamTest, WritesWhatIsLeftWhenItGoes) {
  Create("a.txt")->Call("Write", {Text("left")});
  EXPECT_EQ(Content("a.txt"), "left");
}

TEST_F(TextStreamTest, WritesAndReadsUtf16WithAMark) {
  Create("u.txt", true)->Call("WriteLine", {Text("a一")});
  EXPECT_EQ(Content("u.txt"),
            "\xFF\xFE"
            "a\0\0\x4E\r\0\n\0"s);
  EXPECT_EQ(ToText(Open("u.txt", 1, false, -1)->Call("ReadLine")), "a一");
  EXPECT_EQ(ToText(Open("u.txt", 1, false, -2)->Call("ReadLine")), "a一");
  EXPECT_EQ(ToText(Open("u.txt", 1, false, 0)->Call("Read", {Number(3)})), "ÿþa");
  Open("u.txt", 8, false, -2)->Call("Write", {Text("二")});
  EXPECT_EQ(ToText(Open("u.txt", 1, false, -1)->Call("ReadAll")), "a一\r\n二");
}

TEST_F(TextStreamTest, ReadsLinesWithAndWithoutCarriageReturns) {
  const auto stream = OpenWith("a\rb\nc\r\n\r\nd");
  EXPECT_EQ(ToText(stream->Call("ReadLine")), "a\rb");
  EXPECT_EQ(ToText(stream->Get("Line")), "2");
  EXPECT_EQ(ToText(stream->Call("ReadLine")), "c");
  EXPECT_EQ(ToText(stream->Call("ReadLine")), "");
  EXPECT_FALSE(automation::ToBoolean(stream->Get("AtEndOfStream")));
  EXPECT_EQ(ToText(stream->Call("ReadLine")), "d");
  EXPECT_TRUE(automation::ToBoolean(stream->Get("AtEndOfStream")));
}

TEST_F(TextStreamTest, ReadsAndSkipsCharacters) {
  const auto stream = OpenWith("abc\r\nde\r\nfg");
  EXPECT_EQ(ToText(stream->Call("Read", {Number(3)})), "abc");
  EXPECT_TRUE(automation::ToBoolean(stream->Get("AtEndOfLine")));
  EXPECT_EQ(ToText(stream->Get("Column")), "4");
  stream->Call("Skip", {Number(2)});
  EXPECT_EQ(ToText(stream->Get("Line")), "2");
  EXPECT_EQ(ToText(stream->Get("Column")), "1");
  stream->Call("SkipLine");
  EXPECT_EQ(ToText(stream->Call("Read", {Number(99)})), "fg");
}

TEST_F(TextStreamTest, EndsWithAnErrorBehindTheEnd) {
  const auto stream = OpenWith("x");
  stream->Call("ReadAll");
  for (const char* member : {"ReadAll", "ReadLine", "SkipLine"}) {
    EXPECT_EQ(ErrorOf([&] { stream->Call(member); }), 62) << member;
  }
  EXPECT_EQ(ErrorOf([&] { stream->Call("Read", {Number(1)}); }), 62);
  EXPECT_EQ(ErrorOf([&] { stream->Call("Skip", {Number(1)}); }), 62);
  EXPECT_EQ(ErrorOf([&] { stream->Call("Read", {Number(-1)}); }), 5);
  EXPECT_EQ(ErrorOf([&] { OpenWith("")->Call("ReadAll"); }), 62);
}

TEST_F(TextStreamTest, KnowsItsDirectionAndItsEnd) {
  const auto writing = Create("a.txt");
  EXPECT_EQ(ErrorOf([&] { writing->Call("ReadLine"); }), 54);
  EXPECT_EQ(ErrorOf([&] { writing->Get("AtEndOfStream"); }), 54);
  const auto reading = OpenWith("x");
  EXPECT_EQ(ErrorOf([&] { reading->Call("Write", {Text("y")}); }), 54);
  reading->Call("Close");
  reading->Call("Close");
  EXPECT_EQ(ErrorOf([&] { reading->Call("ReadLine"); }), 91);
}

TEST_F(TextStreamTest, OpensInTheModesAndWithTheErrorsOfTheOriginal) {
  EXPECT_EQ(ErrorOf([&] { Open("none.txt"); }), 53);
  EXPECT_EQ(ErrorOf([&] { Open("none.txt", 2); }), 53);
  EXPECT_EQ(ErrorOf([&] { Open("none\\none.txt", 2, true); }), 76);
  EXPECT_EQ(ErrorOf([&] { Open("temp", 1); }), 70);
  EXPECT_EQ(ErrorOf([&] { Open("a.txt", 3); }), 5);
  Open("a.txt", 8, true)->Call("Write", {Text("one")});
  Open("a.txt", 8)->Call("Write", {Text(" two")});
  EXPECT_EQ(Content("a.txt"), "one two");
  Open("a.txt", 2)->Call("Write", {Text("x")});
  EXPECT_EQ(Content("a.txt"), "x");
  EXPECT_EQ(ErrorOf([&] { files->Call("CreateTextFile", {Text("C:\\a.txt"), Flag(false)}); }), 58);
}

TEST_F(TextStreamTest, ReadsLinesLongerThanAPiece) {
  const std::string line(300'000, 'x');
  const auto stream = OpenWith(line + "\r\n" + line + "y");
  EXPECT_EQ(ToText(stream->Call("ReadLine")), line);
  EXPECT_EQ(ToText(stream->Call("ReadAll")), line + "y");
}

TEST_F(TextStreamTest, EndlessBlankLinesEndWithTheTime) {
  const auto stream = Create("a.txt");
  context.budget.LimitSteps(100'000);
  EXPECT_THROW(stream->Call("WriteBlankLines", {Number(2'000'000'000)}), Interrupted);
}

}  // namespace
}  // namespace hearthmake::vbscript
