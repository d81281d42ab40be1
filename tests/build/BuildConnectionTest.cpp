#include "build/BuildConnection.hpp"

#include <gtest/gtest.h>

#include <map>

#include "automation/Error.hpp"
#include "support/BuildScene.hpp"

namespace hearthmake {
namespace {

using automation::Variant;
using support::BuildScene;

// Writes the events down as a script's handlers would hear them.
class ListeningSink final : public automation::EventSink {
 public:
  void Raise(std::string_view event, std::span<Variant> arguments) override {
    std::string text(event);
    for (const Variant& argument : arguments) {
      const Variant& value = argument.Target();
      text += value.IsObject()
                  ? (value.AsObject() == nullptr ? " Nothing" : " " + value.AsObject()->Declaration().Name())
                  : " " + automation::ToText(value);
    }
    heard.push_back(text);
    if (const auto answer = answers.find(std::string(event)); answer != answers.end())
      arguments[1].Target() = answer->second;
  }
  std::vector<std::string> heard;
  std::map<std::string, Variant> answers;  // to the second argument
};

TEST(BuildConnection, TellsTheEventsOfARunByName) {
  const BuildScene scene;
  const auto sink = std::make_shared<ListeningSink>();
  const std::uint32_t connection = scene.build->Advise(sink);
  EXPECT_NE(connection, 0U);
  scene.Add("Good");
  scene.Add("Bad");
  scene.FailOn("Bad");
  scene.build->Projects().Build(false);
  EXPECT_EQ(sink->heard,
            (std::vector<std::string>{
                "ProjectAdded Project", "ProjectAdded Project", "BuildStart False",
                "MTSEvent Shutting down COM+ Applications False", "WillCompile Project False",
                "ProjectCompiled Project", "WillCompile Project False",
                "BuildFaild Project Compile failed: Variable not defined\r\nBuild failed. True"}));
}

TEST(BuildConnection, BringsTheAnswerOfAHandlerBack) {
  const BuildScene scene;
  const auto sink = std::make_shared<ListeningSink>();
  sink->answers["WillCompile"] = Variant::FromBoolean(true);
  scene.build->Advise(sink);
  scene.Add("Lib");
  EXPECT_TRUE(scene.build->Projects().Build(false));
  EXPECT_EQ(sink->heard.back(), "BuildCancled Project");
}

TEST(BuildConnection, ASecondArgumentOfScriptNotifyIsTheCallersOwn) {
  const BuildScene scene;
  const auto sink = std::make_shared<ListeningSink>();
  sink->answers["ScriptNotify"] = Variant::FromLong(7);
  scene.build->Advise(sink);
  Variant cancel = Variant::FromText("old");
  scene.build->RaiseScriptNotify("half", cancel, 50);
  EXPECT_EQ(automation::ToText(cancel), "7");
  EXPECT_EQ(sink->heard, std::vector<std::string>{"ScriptNotify half old 50"});
}

TEST(BuildConnection, HearsNothingAfterUnadvise) {
  const BuildScene scene;
  const auto sink = std::make_shared<ListeningSink>();
  const std::uint32_t connection = scene.build->Advise(sink);
  scene.build->Unadvise(connection);
  scene.build->Unadvise(connection);
  scene.build->RaiseBuildComplete();
  EXPECT_TRUE(sink->heard.empty());
}

TEST(BuildConnection, SeveralListenersHearInTheirOrder) {
  const BuildScene scene;
  const auto first = std::make_shared<ListeningSink>();
  const auto second = std::make_shared<ListeningSink>();
  first->answers["MTSEvent"] = Variant::FromBoolean(true);
  scene.build->Advise(first);
  scene.build->Advise(second);
  bool cancel = false;
  scene.build->RaiseMTSEvent("info", cancel);
  EXPECT_TRUE(cancel);
  EXPECT_EQ(second->heard, std::vector<std::string>{"MTSEvent info True"});
}

TEST(BuildConnection, AnAnswerThatIsNoFlagIsATypeMismatchOfTheStep) {
  const BuildScene scene;
  const auto sink = std::make_shared<ListeningSink>();
  sink->answers["WillCompile"] = Variant::FromText("perhaps");
  scene.build->Advise(sink);
  scene.Add("Lib");
  EXPECT_FALSE(scene.build->Projects().Build(false));
  EXPECT_EQ(sink->heard.back(), "BuildFaild Project Type mismatch False");
}

}  // namespace
}  // namespace hearthmake
