#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "build/Build.hpp"
#include "host/builds/Properties.hpp"
#include "project/Project.hpp"
#include "support/HostCommand.hpp"

// show and set of single properties: every one that the declarations have.

namespace hearthmake::host {
namespace {

using automation::Member;
using automation::MemberKind;
using automation::ValueKind;
using nlohmann::json;
using support::CommandResult;
using support::HostCommand;
using testing::ElementsAre;
using testing::HasSubstr;

class PropertyCommands : public testing::Test {
 protected:
  PropertyCommands() { command.MakeShop(); }

  CommandResult Show(const std::string& property) { return command.Run({"show", "Shop", "Lib", property}); }

  HostCommand command;
};

// A value that the property takes, as it is typed and shown.
std::string SampleOf(const Member& property) {
  if (property.name == "ProjectPath") return "Z:\\Elsewhere\\Lib.vbp";
  if (property.name == "DllBaseAddress" || property.name == "StartDllBaseAddress") return "&H22000000";
  switch (property.value.kind) {
    case ValueKind::Boolean: return "True";
    case ValueKind::Enum: return property.value.enumeration().members.back().first;
    case ValueKind::Integer:
    case ValueKind::Long: return "7";
    default: return "Sample";
  }
}

TEST_F(PropertyCommands, SetReachesAllThatTheProjectsInterfaceLetsBeSet) {
  int count = 0;
  for (const Member& member : Project::Describe().Members()) {
    if (member.kind != MemberKind::Let) continue;
    ++count;
    const std::string sample = SampleOf(member);
    const CommandResult result = command.Run({"set", "Shop", "Lib", member.name, sample});
    EXPECT_EQ(result.status, 0) << member.name << ": " << result.err;
    EXPECT_EQ(result.out, "Lib." + member.name + " = " + sample + "\n");
    EXPECT_EQ(Show(member.name).out, sample + "\n") << member.name;
  }
  EXPECT_GT(count, 40);
}

TEST_F(PropertyCommands, SetReachesAllThatTheBuildsInterfaceLetsBeSet) {
  std::string build = "Shop";
  for (const Member& member : Build::Describe().Members()) {
    if (member.kind != MemberKind::Let) continue;
    const std::string sample = SampleOf(member);
    const CommandResult result = command.Run({"set", build, member.name, sample});
    EXPECT_EQ(result.status, 0) << member.name << ": " << result.err;
    EXPECT_EQ(result.out, build + "." + member.name + " = " + sample + "\n");
    if (member.name == "Name") build = sample;
    EXPECT_EQ(command.Run({"show", build, member.name}).out, sample + "\n") << member.name;
  }
  EXPECT_EQ(build, "Sample");
}

TEST_F(PropertyCommands, ShowListsAllThatTheProjectsInterfaceLetsBeRead) {
  const std::string text = "\n" + command.Run({"show", "Shop", "Lib"}).out;
  const json all = json::parse(command.Run({"show", "Shop", "Lib", "--json"}).out);
  for (const Member& member : Project::Describe().Members()) {
    if (member.kind != MemberKind::Get) continue;
    EXPECT_THAT(text, HasSubstr("\n" + member.name + " ")) << member.name;
    EXPECT_TRUE(all.contains(member.name)) << member.name;
    const CommandResult one = Show(member.name);
    // Who broke the compile can't be told of a project that compiled.
    EXPECT_EQ(one.status, member.name == "LastCheckInInfo" ? 2 : 0) << member.name << ": " << one.err;
  }
}

TEST_F(PropertyCommands, ShowTellsObjectsInAFewWords) {
  const std::string text = command.Run({"show", "Shop", "App"}).out;
  EXPECT_THAT(text, HasSubstr("Properties               43: Name to NoControlUpgrade\n"));
  EXPECT_THAT(text, HasSubstr("References               1 (see below)\n"));
  EXPECT_THAT(command.Run({"show", "Shop", "App", "References"}).out, HasSubstr("Lib"));
  EXPECT_EQ(support::LinesOf(Show("properties").out).size(), 43U);
}

TEST_F(PropertyCommands, ShowPrintsOnePropertyBare) {
  EXPECT_EQ(Show("majorver").out, "1\n");
  EXPECT_EQ(command.Run({"show", "Shop", "Lib", "CompileMe", "--json"}).out, "true\n");
  EXPECT_EQ(command.Run({"show", "Shop", "Lib", "ProjectType", "--json"}).out, "\"ActiveXDll\"\n");
  EXPECT_EQ(command.Run({"show", "Shop", "id"}).out, "1\n");
}

TEST_F(PropertyCommands, WrongNamesListWhatThereIs) {
  CommandResult result = Show("Nope");
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(result.err,
              HasSubstr("There is no property 'Nope'.\nThere are: FileSizeExe32, Id, Properties"));
  result = command.Run({"show", "Shop", "Nope"});
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(result.err, HasSubstr("App, Lib, Tool"));
  EXPECT_THAT(result.err, HasSubstr("Properties of the build: Name, StartDllBaseAddress, Id"));
  result = command.Run({"set", "Shop", "Id", "3"});
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(result.err, HasSubstr("Id can be read only.\nThese can be set: Name, StartDllBaseAddress"));
}

TEST_F(PropertyCommands, ABuildIsRenamedToAFreeNameOnly) {
  command.Run({"new", "Bank"});
  EXPECT_THAT(command.Run({"set", "Shop", "Name", "bank"}).err, HasSubstr("There is a build 'Bank' already"));
  EXPECT_THAT(command.Run({"set", "Shop", "Name", std::string(31, 'x')}).err, HasSubstr("is too long"));
  EXPECT_THAT(command.Run({"set", "Shop", "Name", " "}).err, HasSubstr("Invalid name"));
  EXPECT_EQ(command.Run({"list"}).out, "   1  Shop\n   2  Bank\n");
  EXPECT_EQ(command.Run({"set", "Shop", "Name", "SHOP"}).status, 0);
  EXPECT_EQ(command.Run({"list"}).out, "   1  SHOP\n   2  Bank\n");
}

}  // namespace
}  // namespace hearthmake::host
