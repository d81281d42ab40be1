#include "vbscript/objects/Shell.hpp"

#include <chrono>

#include "support/SystemObjectTest.hpp"
#include "vbscript/objects/StandardObjects.hpp"

namespace hearthmake::vbscript {
namespace {

using automation::Object;
using automation::Ref;
using automation::Variant;

constexpr std::int32_t kNoFile = static_cast<std::int32_t>(0x80070002);

class ShellTest : public SystemObjectTest {
 protected:
  Ref<Object> Environment() { return ToObject(shell->Get("Environment", {Text("Process")})); }

  Ref<Object> shell = CreateShell(context);
};

TEST_F(ShellTest, RunsAndGivesTheExitCode) {
  EXPECT_EQ(ToText(shell->Call("Run", {Text("/bin/sh -c \"exit 7\""), Number(0), Flag(true)})), "7");
  EXPECT_EQ(ToText(shell->Call("Run", {Text("/bin/sh -c \"exit 7\"")})), "0");
  EXPECT_EQ(ErrorOf([&] { shell->Call("Run", {Text("C:\\nonesuch.exe")}); }), kNoFile);
}

TEST_F(ShellTest, AWaitingRunEndsWithTheScriptsTime) {
  const auto start = std::chrono::steady_clock::now();
  context.budget.StartTimeout(100);
  EXPECT_THROW(shell->Call("Run", {Text("/bin/sleep 60"), Number(0), Flag(true)}), Interrupted);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
}

TEST_F(ShellTest, ExecTalksWithAChild) {
  const auto child = ToObject(shell->Call("Exec", {Text("/bin/sh -c \"tr a-z A-Z; echo bad >&2; exit 3\"")}));
  EXPECT_EQ(ToText(child->Get("Status")), "0");
  EXPECT_GT(automation::ToLong(child->Get("ProcessID")), 0);
  const auto input = ToObject(child->Get("StdIn"));
  input->Call("WriteLine", {Text("one")});
  input->Call("Close");
  EXPECT_EQ(ToText(ToObject(child->Get("StdOut"))->Call("ReadAll")), "ONE\n");
  EXPECT_EQ(ToText(ToObject(child->Get("StdErr"))->Call("ReadLine")), "bad");
  for (int i = 0; i < 1000 && ToText(child->Get("Status")) == "0"; ++i) {
    host.Platform().clock->Sleep(std::chrono::milliseconds(5));
  }
  EXPECT_EQ(ToText(child->Get("Status")), "1");
  EXPECT_EQ(ToText(child->Get("ExitCode")), "3");
  EXPECT_EQ(ErrorOf([&] { shell->Call("Exec", {Text("nonesuch")}); }), kNoFile);
}

TEST_F(ShellTest, ExecEndsAChildAndAReadEndsWithTheTime) {
  const auto child = ToObject(shell->Call("Exec", {Text("/bin/sleep 60")}));
  context.budget.StartTimeout(100);
  EXPECT_THROW(ToObject(child->Get("StdOut"))->Call("ReadLine"), Interrupted);
  child->Call("Terminate");
  EXPECT_EQ(ToText(child->Get("Status")), "1");
}

TEST_F(ShellTest, AWriteThatNobodyTakesEndsWithTheTime) {
  const auto child = ToObject(shell->Call("Exec", {Text("/bin/sleep 60")}));
  context.budget.StartTimeout(100);
  const auto input = ToObject(child->Get("StdIn"));
  EXPECT_THROW(input->Call("Write", {Text(std::string(200'000, 'x'))}), Interrupted);
  child->Call("Terminate");
}

TEST_F(ShellTest, WritesMuchToAChildThatReads) {
  const auto child = ToObject(shell->Call("Exec", {Text("/bin/sh -c \"wc -c\"")}));
  const auto input = ToObject(child->Get("StdIn"));
  input->Call("Write", {Text(std::string(1'000'000, 'x'))});
  input->Call("Close");
  EXPECT_EQ(ToText(ToObject(child->Get("StdOut"))->Call("ReadLine")), "1000000");
}

TEST_F(ShellTest, KeepsTheProcessEnvironment) {
  const auto environment = Environment();
  environment->Let("Item", {Text("VBS_TEST"), Text("one")});
  EXPECT_EQ(ToText(environment->Get("Item", {Text("vbs_test")})), "one");
  EXPECT_EQ(ToText(shell->Call("ExpandEnvironmentStrings", {Text("<%Vbs_Test%> %nosuchname% %")})),
            "<one> %nosuchname% %");
  environment->Call("Remove", {Text("VBS_TEST")});
  EXPECT_EQ(ToText(environment->Get("Item", {Text("VBS_TEST")})), "");
  EXPECT_GT(automation::ToLong(environment->Get("Count")), 0);
  const auto system = ToObject(shell->Get("Environment"));
  EXPECT_EQ(ErrorOf([&] { system->Let("Item", {Text("A"), Text("b")}); }), 70);
}

TEST_F(ShellTest, ChangesTheCurrentFolder) {
  const support::CurrentFolderOverride back("/");
  shell->Let("CurrentDirectory", {Text("C:\\temp")});
  EXPECT_EQ(ToText(shell->Get("CurrentDirectory")), "C:\\temp");
  EXPECT_EQ(ErrorOf([&] { shell->Let("CurrentDirectory", {Text("C:\\none")}); }), kNoFile);
}

TEST_F(ShellTest, ReadsAndWritesTheRegistry) {
  const auto write = [&](const std::string& name, const Variant& value, const char* type) {
    shell->Call("RegWrite", {Text("HKCU\\Software\\Shop\\" + name), value, Text(type)});
  };
  const auto read = [&](const std::string& name) {
    return shell->Call("RegRead", {Text("HKEY_CURRENT_USER\\software\\shop\\" + name)});
  };
  write("text", Text("ä"), "REG_SZ");
  write("number", Number(-5), "REG_DWORD");
  write("bytes", Number(258), "REG_BINARY");
  write("", Text("default"), "REG_SZ");
  EXPECT_EQ(ToText(read("Text")), "ä");
  EXPECT_EQ(read("number").Type(), automation::VariantType::Long);
  EXPECT_EQ(read("number").AsLong(), -5);
  EXPECT_EQ(read("bytes").AsArray()->Elements().size(), 4U);
  EXPECT_EQ(ToText(read("")), "default");
  EXPECT_EQ(ErrorOf([&] { read("none"); }), kNoFile);
  EXPECT_EQ(ErrorOf([&] { shell->Call("RegRead", {Text("HKXX\\a\\b")}); }), kNoFile);
  shell->Call("RegDelete", {Text("HKCU\\Software\\Shop\\text")});
  EXPECT_EQ(ErrorOf([&] { read("text"); }), kNoFile);
  EXPECT_EQ(ErrorOf([&] { shell->Call("RegDelete", {Text("HKCU\\Software\\")}); }), kNoFile);
  shell->Call("RegDelete", {Text("HKCU\\Software\\Shop\\")});
  EXPECT_EQ(ErrorOf([&] { read("number"); }), kNoFile);
}

TEST_F(ShellTest, AsksTheHostToShowMessages) {
  host.button = 6;
  EXPECT_EQ(ToText(shell->Call("Popup", {Text("Go on?"), Number(5), Text("Title"), Number(4)})), "6");
  EXPECT_EQ(host.messages, std::vector<std::string>{"Go on?"});
}

TEST_F(ShellTest, KnowsWhereFoldersUsuallyAre) {
  const support::EnvironmentOverride profile("USERPROFILE", "C:\\users\\me");
  EXPECT_EQ(ToText(shell->Get("SpecialFolders", {Text("desktop")})), "C:\\users\\me\\Desktop");
  EXPECT_EQ(ToText(shell->Get("SpecialFolders", {Text("foo")})), "");
}

TEST_F(ShellTest, RefusesWhatNeedsADesktop) {
  EXPECT_EQ(ErrorOf([&] { shell->Call("SendKeys", {Text("x")}); }), 445);
  EXPECT_EQ(ErrorOf([&] { shell->Call("CreateShortcut", {Text("x.lnk")}); }), 445);
  EXPECT_FALSE(automation::ToBoolean(shell->Call("LogEvent", {Number(0), Text("x")})));
}

}  // namespace
}  // namespace hearthmake::vbscript
