#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "automation/Declare.hpp"
#include "support/IntrinsicBench.hpp"

namespace hearthmake::vbscript {
namespace {

using automation::Variant;
using testing::ElementsAre;

class Thing : public automation::Object {
 public:
  const automation::Interface& Declaration() const override {
    static const automation::Interface declaration = automation::Declare("Thing", "_Thing", "").build();
    return declaration;
  }
};

void Check(const std::vector<IntrinsicCase>& table) {
  IntrinsicBench bench;
  for (const IntrinsicCase& line : table) {
    EXPECT_EQ(bench.Tell(line.name, line.arguments), line.expected) << Describe(line);
  }
}

TEST(HostIntrinsics, ShowMessages) {
  IntrinsicBench bench;
  EXPECT_EQ(bench.Tell("MsgBox", {T(u"Grüße")}), "Integer 6");
  EXPECT_EQ(bench.Tell("MsgBox", {N(5), N(36), T(u"Title")}), "Integer 6");
  EXPECT_EQ(bench.Tell("MsgBox", {T(u"a"), Missing(), T(u"b"), T(u"help"), N(1)}), "Integer 6");
  EXPECT_THAT(bench.TheHost().asked, ElementsAre("Grüße|0|VBScript", "5|36|Title", "a|0|b"));
  EXPECT_EQ(bench.Tell("MsgBox", {NullValue()}), "error 94 Invalid use of Null: 'MsgBox'");
  EXPECT_EQ(bench.Tell("MsgBox", {T(u"a"), T(u"x")}), "error 13 Type mismatch: 'MsgBox'");
  EXPECT_EQ(bench.Tell("MsgBox", {T(u"a"), N(0), T(u"b"), T(u"help")}),
            "error 5 Invalid procedure call or argument: 'MsgBox'");
  EXPECT_EQ(bench.TheHost().asked.size(), 3u);
}

TEST(HostIntrinsics, AskForTexts) {
  IntrinsicBench bench;
  EXPECT_EQ(bench.Tell("InputBox", {T(u"Name?")}), "Empty");
  bench.TheHost().answer = "Zoë";
  EXPECT_EQ(bench.Tell("InputBox", {T(u"Name?"), T(u"Title"), N(7), N(1), N(2)}), "String Zoë");
  EXPECT_THAT(bench.TheHost().asked, ElementsAre("Name?|VBScript|", "Name?|Title|7"));
  EXPECT_EQ(bench.Tell("InputBox", {NullValue()}), "error 94 Invalid use of Null: 'InputBox'");
  EXPECT_EQ(bench.Tell("InputBox", {T(u"a"), T(u"b"), T(u"c"), T(u"x")}),
            "error 13 Type mismatch: 'InputBox'");
  EXPECT_EQ(bench.Tell("InputBox", {T(u"a"), T(u"b"), T(u"c"), N(1), N(1), Missing(), N(4)}),
            "error 5 Invalid procedure call or argument: 'InputBox'");
}

TEST(HostIntrinsics, CreateObjectsOfTheHostFirst) {
  IntrinsicBench bench;
  bench.TheHost().object = automation::Make<Thing>();
  EXPECT_EQ(bench.Call("CreateObject", {T(u"Host.Thing")}).AsObject(), bench.TheHost().object.Get());
  EXPECT_EQ(bench.Tell("CreateObject", {T(u"Host.Thing"), T(u"")}), "Object");
  EXPECT_EQ(bench.Tell("CreateObject", {T(u"Excel.Application")}),
            "error 429 ActiveX component can't create object: 'Excel.Application'");
  EXPECT_EQ(bench.Tell("CreateObject", {T(u"")}),
            "error 429 ActiveX component can't create object: 'CreateObject'");
  EXPECT_EQ(bench.Tell("CreateObject", {T(u"Host.Thing"), T(u"server")}),
            "error 462 The remote server machine does not exist or is unavailable: 'CreateObject'");
  EXPECT_EQ(bench.Tell("CreateObject", {NullValue()}), "error 94 Invalid use of Null: 'CreateObject'");
}

TEST(HostIntrinsics, GetObjectsByPathAndByClass) {
  IntrinsicBench bench;
  bench.TheHost().object = automation::Make<Thing>();
  EXPECT_EQ(bench.Tell("GetObject", {T(u"host:thing")}), "Object");
  EXPECT_EQ(bench.Tell("GetObject", {Missing(), T(u"Host.Running")}), "Object");
  EXPECT_EQ(bench.Tell("GetObject", {T(u""), T(u"Host.Thing")}), "Object");
  EXPECT_THAT(bench.TheHost().asked,
              ElementsAre("get host:thing|", "get |Host.Running", "create Host.Thing"));
  EXPECT_EQ(bench.Tell("GetObject", {T(u"C:\\none.xls")}),
            "error 432 File name or class name not found during Automation operation: 'GetObject'");
  EXPECT_EQ(bench.Tell("GetObject", {Missing(), T(u"Excel.Application")}),
            "error 429 ActiveX component can't create object: 'GetObject'");
  EXPECT_EQ(bench.Tell("GetObject", {T(u""), T(u"Excel.Application")}),
            "error 429 ActiveX component can't create object: 'Excel.Application'");
  EXPECT_EQ(bench.Tell("GetObject", {Missing()}), "error 5 Invalid procedure call or argument: 'GetObject'");
}

TEST(HostIntrinsics, TellAboutTheEngine) {
  Check({
      {"ScriptEngine", {}, "String VBScript"},
      {"ScriptEngineMajorVersion", {}, "Long 5"},
      {"ScriptEngineMinorVersion", {}, "Long 8"},
      {"ScriptEngineBuildVersion", {}, "Long 16384"},
      {"GetLocale", {}, "Long 1033"},
      {"GetUILanguage", {}, "Long 1033"},
      {"LoadPicture", {T(u"a.bmp")}, "error 481 Invalid picture: 'LoadPicture'"},
      {"LoadPicture", {NullValue()}, "error 94 Invalid use of Null: 'LoadPicture'"},
  });
}

TEST(HostIntrinsics, RememberTheLocale) {
  IntrinsicBench bench;
  EXPECT_EQ(bench.Tell("SetLocale", {T(u"de")}), "Long 1033");
  EXPECT_EQ(bench.Tell("GetLocale", {}), "Long 1031");
  EXPECT_EQ(bench.Tell("SetLocale", {T(u"EN-GB")}), "Long 1031");
  EXPECT_EQ(bench.Tell("SetLocale", {N(1036)}), "Long 2057");
  EXPECT_EQ(bench.Tell("SetLocale", {N(7)}), "Long 1036");
  EXPECT_EQ(bench.Tell("SetLocale", {T(u"1041")}), "Long 1031");
  EXPECT_EQ(bench.Tell("SetLocale", {N(0)}), "Long 1041");
  EXPECT_EQ(bench.Tell("SetLocale", {T(u"sv-fi")}), "Long 1033");
  EXPECT_EQ(bench.Tell("SetLocale", {T(u"")}), "Long 2077");
  EXPECT_EQ(bench.Tell("SetLocale", {}), "Long 1033");
  EXPECT_EQ(bench.Tell("SetLocale", {T(u"xx")}), "error 5 Invalid procedure call or argument: 'SetLocale'");
  EXPECT_EQ(bench.Tell("SetLocale", {N(12345)}),
            "error 447 Object doesn't support current locale setting: 'SetLocale'");
  EXPECT_EQ(bench.Tell("SetLocale", {NullValue()}), "error 94 Invalid use of Null: 'SetLocale'");
  EXPECT_EQ(bench.Tell("GetLocale", {}), "Long 1033");
}

TEST(HostIntrinsics, FormatInUsEnglishWhateverTheLocale) {
  IntrinsicBench bench;
  bench.Call("SetLocale", {T(u"de")});
  EXPECT_EQ(bench.Tell("FormatNumber", {D(1234.5)}), "String 1,234.50");
  EXPECT_EQ(bench.Tell("MonthName", {N(3)}), "String March");
}

}  // namespace
}  // namespace hearthmake::vbscript
