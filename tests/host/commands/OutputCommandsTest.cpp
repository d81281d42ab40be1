#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <nlohmann/json.hpp>

#include "adapters/posix/RegistryStore.hpp"
#include "support/HostCommand.hpp"

// group, regfiles, register, unregister, distribute, and what show tells of a binary.

namespace hearthmake::host {
namespace {

using nlohmann::json;
using platform::RegistryRoot;
using support::CommandResult;
using support::HostCommand;
using testing::HasSubstr;

// Keys (ending in a backslash) and values of a registry, with their data.
using Contents = std::map<std::string, std::string>;

void Collect(platform::Registry& registry, RegistryRoot root, const std::string& key, Contents& contents) {
  contents[key + "\\"] = "";
  for (const std::string& name : registry.ValueNames(root, key)) {
    const auto value = registry.Query(root, key, name);
    contents[key + "\\=" + name] = value ? value->data : "(none)";
  }
  for (const std::string& name : registry.SubKeys(root, key)) {
    Collect(registry, root, key.empty() ? name : key + "\\" + name, contents);
  }
}

class OutputCommands : public testing::Test {
 protected:
  std::string DataFile(const std::string& name) const { return command.Data() + "/" + name; }
  std::string Text(const std::string& name) const { return command.root.Content(name); }
  // The folder of the sources, as the library names it.
  std::string DosSources() const { return Dos(command.root.Path("src")); }
  static std::string Dos(std::string path) {
    std::replace(path.begin(), path.end(), '/', '\\');
    return "Z:" + path;
  }
  // Relative paths from two levels below the root of a drive climb up to it first.
  std::string Name() const { return std::filesystem::path(command.root.Path()).filename(); }
  Contents Registry() const {
    posix::RegistryStore store(DataFile("registry.reg"));
    Contents contents;
    for (const RegistryRoot root : {RegistryRoot::CurrentUser, RegistryRoot::LocalMachine}) {
      Collect(store, root, "", contents);
    }
    return contents;
  }
  json Binary(const std::string& build, const std::string& project) {
    return json::parse(command.Run({"show", build, project, "--json"}).out)["Binary"];
  }

  HostCommand command;
};

TEST_F(OutputCommands, GroupWritesAFileThatAddTakes) {
  command.MakeShop();
  command.Run({"set", "Shop", "Tool", "CompileMe", "false"});
  const CommandResult result = command.Run({"group", "Shop", command.Source("Shop.vbg"), "--startup", "app"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(result.out, "Wrote " + command.Source("Shop.vbg") + ": 2 projects, App starts.\n");
  EXPECT_EQ(Text("src/Shop.vbg"), "VBGROUP 5.0\r\nStartUpProject=\"..\\..\\" + Name() +
                                      "\\src\\App.vbp\"\r\nProject=\"..\\..\\" + Name() +
                                      "\\src\\Lib.vbp\"\r\n");
  command.Run({"new", "Copy"});
  EXPECT_EQ(command.Run({"add", "Copy", command.Source("Shop.vbg")}).status, 0);
  EXPECT_THAT(command.Run({"show", "Copy"}).out, HasSubstr(DosSources() + "\\Lib.vbp"));
}

TEST_F(OutputCommands, GroupTakesDosPathsAndFixesReferencesWhenAsked) {
  command.MakeShop();
  const std::string file = DosSources() + "\\Shop.vbg";
  const std::string before = Text("src/App.vbp");
  EXPECT_EQ(command.Run({"group", "Shop", file}).out,
            "Wrote " + command.Source("Shop.vbg") + ": 3 projects.\n");
  EXPECT_EQ(Text("src/App.vbp"), before);
  // A build makes the row name the library; the group wants the project file.
  ASSERT_EQ(command.Run({"build", "Shop"}).status, 0);
  EXPECT_THAT(Text("src/App.vbp"), HasSubstr("Reference=*\\G"));
  const CommandResult fixed = command.Run({"group", "Shop", file, "--fix"});
  EXPECT_EQ(fixed.status, 0) << fixed.err;
  EXPECT_THAT(fixed.out, HasSubstr("name project files now"));
  EXPECT_THAT(Text("src/App.vbp"), HasSubstr("\r\nReference=*\\A..\\..\\" + Name() + "\\src\\Lib.vbp\r\n"));
}

TEST_F(OutputCommands, GroupRefusesWhatCanNotStartOrBeWritten) {
  command.MakeShop();
  const CommandResult unknown = command.Run({"group", "Shop", command.Source("x.vbg"), "--startup", "Nope"});
  EXPECT_EQ(unknown.status, 2);
  EXPECT_THAT(unknown.err, HasSubstr("has no project 'Nope'"));
  command.Run({"set", "Shop", "Tool", "CompileMe", "false"});
  const CommandResult off = command.Run({"group", "Shop", command.Source("x.vbg"), "--startup", "Tool"});
  EXPECT_EQ(off.status, 2);
  EXPECT_THAT(off.err, HasSubstr("Tool can't be the start-up project"));
  const CommandResult nowhere = command.Run({"group", "Shop", command.Source("no/x.vbg")});
  EXPECT_EQ(nowhere.status, 2);
  EXPECT_THAT(nowhere.err, HasSubstr("Path not found: " + DosSources() + "\\no\\x.vbg"));
  EXPECT_FALSE(std::filesystem::exists(command.Source("x.vbg")));
}

TEST_F(OutputCommands, RegfilesPrintsTheTwoFilesInTheDataFolder) {
  command.MakeShop();
  const CommandResult result = command.Run({"regfiles", "Shop"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(result.out, DataFile("Shop_REGISTER.BAT") + "\n" + DataFile("Shop_UNREGISTER.BAT") + "\n");
  EXPECT_EQ(Text("data/Shop_REGISTER.BAT"),
            "@echo off\r\necho This file was created by Hearthmake\r\n"
            "echo It will register all ActiveX components for the build Shop\r\n"
            "REGSVR32.EXE /S \"" +
                DosSources() + "\\Lib.dll\"\r\necho Ready!\r\npause\r\n");
}

TEST_F(OutputCommands, RegfilesWritesRelativePathsInCompileOrder) {
  command.WriteProject("Server", "OleExe", "Reference=*\\AControl.vbp\r\n");
  command.WriteProject("Control", "Control");
  command.Run({"new", "Shop"});
  command.Run({"add", "Shop", command.Source("Server.vbp"), command.Source("Control.vbp")});
  const CommandResult result = command.Run({"regfiles", "Shop", "--relative", command.root.Path()});
  EXPECT_EQ(result.out,
            command.root.Path("Shop_REGISTER.BAT") + "\n" + command.root.Path("Shop_UNREGISTER.BAT") + "\n");
  EXPECT_EQ(Text("Shop_UNREGISTER.BAT"),
            "@echo off\r\necho This file was created by Hearthmake\r\n"
            "echo It will unregister all ActiveX components for the build Shop\r\n"
            "echo This file must be in executed from the following path " +
                Dos(command.root.Path()) + "\\\r\nREGSVR32.EXE /S /U \"..\\" + Name() +
                "\\src\\Control.ocx\"\r\n\"..\\" + Name() +
                "\\src\\Server.exe\" /UnregServer\r\n"
                "echo Ready!\r\npause\r\n");
  const CommandResult missing = command.Run({"regfiles", "Shop", "--relative", command.root.Path("no")});
  EXPECT_EQ(missing.status, 2);
  EXPECT_THAT(missing.err, HasSubstr("There is no folder " + command.root.Path("no")));
}

TEST_F(OutputCommands, RegisterTellsOfEachProjectWhatWasDone) {
  command.MakeShop();
  const std::string binary = DosSources() + "\\Lib.dll";
  CommandResult result = command.Run({"register", "Shop"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.out, "Lib: there is no binary yet: " + binary +
                            "\nApp: nothing to do, it is not an ActiveX component\n"
                            "Tool: nothing to do, it is not an ActiveX component\n");
  EXPECT_EQ(command.Run({"register", "Shop", "Tool", "App", "tool"}).out,
            "Tool: nothing to do, it is not an ActiveX component\n"
            "App: nothing to do, it is not an ActiveX component\n");
  command.Run({"build", "Shop"});
  EXPECT_EQ(command.Run({"unregister", "Shop", "Lib"}).out, "Lib: unregistered " + binary + "\n");
  EXPECT_EQ(command.Run({"unregister", "Shop", "Lib"}).out, "Lib: it was not registered\n");
  result = command.Run({"register", "Shop", "Lib"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out, "Lib: registered " + binary + "\n");
  EXPECT_EQ(command.Run({"register", "Shop", "Lib"}).out, "Lib: registered again, " + binary + "\n");
}

TEST_F(OutputCommands, RegisterSaysWhyABinaryOrTheRegistryRefuses) {
  command.MakeShop();
  command.root.MakeFile("src/Lib.dll", "no binary at all");
  const CommandResult damaged = command.Run({"register", "Shop", "Lib"});
  EXPECT_EQ(damaged.status, 1);
  EXPECT_THAT(damaged.out, HasSubstr("Lib.dll is neither a type library nor an image"));
  EXPECT_THAT(command.Run({"show", "Shop", "Lib"}).out, HasSubstr("neither a type library nor an image"));
  std::filesystem::copy_file(SOURCE_DIRECTORY "/tests/adapters/typelib/data/Bare.tlb",
                             command.Source("Lib.dll"), std::filesystem::copy_options::overwrite_existing);
  std::filesystem::create_directory(DataFile("registry.reg"));
  const CommandResult refused = command.Run({"register", "Shop", "Lib"});
  EXPECT_EQ(refused.status, 1);
  EXPECT_THAT(refused.out, HasSubstr("Lib: the registry could not be changed for "));
}

TEST_F(OutputCommands, RegisterRefusesAnUnknownProjectBeforeItDoesAnything) {
  command.MakeShop();
  command.Run({"build", "Shop"});
  const CommandResult result = command.Run({"unregister", "Shop", "Lib", "Nope"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.out, "");
  EXPECT_TRUE(Binary("Shop", "Lib")["registered"].get<bool>());
}

TEST_F(OutputCommands, ShowTellsOfTheBinary) {
  command.MakeShop();
  const std::string binary = DosSources() + "\\Lib.dll";
  EXPECT_THAT(command.Run({"show", "Shop", "Lib"}).out,
              HasSubstr("Binary                   " + binary +
                        "  (not there yet)\nTypeLibrary              \nRegistered               False\n"));
  EXPECT_THAT(command.Run({"show", "Shop", "App"}).out,
              HasSubstr("Registered               (not an ActiveX component)\n"));
  command.Run({"build", "Shop"});
  const json registered = Binary("Shop", "Lib");
  EXPECT_EQ(registered["path"], binary);
  EXPECT_EQ(registered["exists"], true);
  EXPECT_EQ(registered["registered"], true);
  EXPECT_EQ(registered["registeredPath"], binary);
  EXPECT_THAT(command.Run({"show", "Shop", "Lib"}).out,
              HasSubstr("TypeLibrary              " + registered["typeLibrary"].get<std::string>() + " " +
                        registered["version"].get<std::string>() + "\nRegistered               True\n"));
  command.Run({"unregister", "Shop", "Lib"});
  EXPECT_EQ(Binary("Shop", "Lib")["registered"], false);
  EXPECT_EQ(Binary("Shop", "Lib")["registeredPath"], nullptr);
}

TEST_F(OutputCommands, ShowNamesAnotherFileThatIsRegisteredInItsPlace) {
  command.MakeShop();
  command.WriteProject("Copy", "OleDll");
  command.Run({"add", "Shop", command.Source("Copy.vbp")});
  command.Run({"build", "Shop"});  // the compiler gives both the same library
  command.Run({"register", "Shop", "Copy"});
  EXPECT_THAT(command.Run({"show", "Shop", "Lib"}).out,
              HasSubstr("Registered               False  (as " + DosSources() + "\\Copy.dll)\n"));
}

TEST_F(OutputCommands, DistributeTellsOfEachProjectWhatWasDone) {
  command.MakeShop();
  command.root.MakeFolder("out");
  command.Run({"build", "Shop"});
  command.Run({"set", "Shop", "Lib", "CopyPath", command.root.Path("out")});
  command.Run({"set", "Shop", "App", "CopyPath", command.root.Path("no")});
  CommandResult result = command.Run({"distribute", "Shop"});
  EXPECT_EQ(result.status, 1);
  const std::string out = Dos(command.root.Path("out"));
  const std::string no = Dos(command.root.Path("no"));
  EXPECT_EQ(result.out, "Lib: copied " + DosSources() + "\\Lib.dll to " + out + "\nApp: Failed to copy " +
                            DosSources() + "\\App.exe to the following path: " + no +
                            ". Error message: File not found: " + DosSources() +
                            "\\App.exe\nTool: nothing to do, its CopyPath is empty\n");
  EXPECT_EQ(Text("out/Lib.dll"), Text("src/Lib.dll"));
  command.root.MakeFile("src/App.exe", "MZ");
  result = command.Run({"distribute", "Shop", "App"});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.out, HasSubstr("Error message: Path not found: " + no));
  command.root.MakeFile("no", "a file in the place of the folder");
  EXPECT_EQ(command.Run({"distribute", "Shop", "App"}).status, 1);
  command.Run({"set", "Shop", "Lib", "RemoteServerFiles", "true"});
  EXPECT_THAT(command.Run({"distribute", "Shop", "Lib"}).out, HasSubstr("Lib.tlb"));
  command.root.MakeFile("src/Lib.tlb", "types");
  EXPECT_EQ(command.Run({"distribute", "Shop", "Lib"}).out,
            "Lib: copied " + DosSources() + "\\Lib.dll and " + DosSources() + "\\Lib.tlb to " + out + "\n");
  EXPECT_EQ(Text("out/Lib.tlb"), "types");
}

// The example suite, compiled by the compiler that comes along.
class OutputsOfTheExamples : public OutputCommands {
 protected:
  static constexpr int kProjects = 14;

  OutputsOfTheExamples() {
    std::filesystem::copy(SOURCE_DIRECTORY "/examples/suite", command.root.Path("suite"),
                          std::filesystem::copy_options::recursive);
    for (const char* folder : {"out", "data/drive_c/Suite/Bin"}) command.root.MakeFolder(folder);
    command.Run({"new", "Desk"});
    command.Run({"settings", "VBExe", BINARY_DIRECTORY "/tools/vb6/vb6"});
    command.Run({"scan", "Desk", command.root.Path("suite"), "--tests"});
    const json desk = json::parse(command.Run({"show", "Desk", "--json"}).out);
    for (const json& project : desk["projects"]) names.push_back(project["name"]);
    for (const std::string& name : names) {
      command.Run({"set", "Desk", name, "CopyPath", command.root.Path("out")});
    }
  }
  void Build() {
    const CommandResult result = command.Run({"build", "Desk"});
    ASSERT_EQ(result.status, 0) << result.out << result.err;
    EXPECT_THAT(result.out, HasSubstr("14 of 14 projects compiled"));
  }
  std::map<std::string, json> Binaries() {
    std::map<std::string, json> binaries;
    for (const std::string& name : names) binaries[name] = Binary("Desk", name);
    return binaries;
  }
  // From now on each component keeps its identity.
  void KeepIdentities() {
    for (const auto& [name, binary] : Binaries()) {
      if (binary["typeLibrary"].is_null()) continue;
      command.Run({"set", "Desk", name, "CompatibleEXE32", binary["path"]});
      command.Run({"set", "Desk", name, "CompatibleMode", "BinaryCompatibility"});
    }
  }

  std::vector<std::string> names;
};

TEST_F(OutputsOfTheExamples, ARunRegistersAndDistributesEverything) {
  ASSERT_EQ(names.size(), static_cast<std::size_t>(kProjects));
  Build();
  std::size_t components = 0;
  for (const auto& [name, binary] : Binaries()) {
    SCOPED_TRACE(name);
    EXPECT_TRUE(binary["exists"].get<bool>());
    EXPECT_EQ(binary["registered"].get<bool>(), !binary["typeLibrary"].is_null());
    components += binary["typeLibrary"].is_null() ? 0 : 1;
    const std::string path = binary["path"];
    EXPECT_TRUE(std::filesystem::exists(command.root.Path("out/" + path.substr(path.rfind('\\') + 1))));
  }
  EXPECT_EQ(components, 10U);
}

TEST_F(OutputsOfTheExamples, ASecondRunChangesNothingInTheRegistryForThoseThatKeepTheirIdentity) {
  Build();
  KeepIdentities();
  const auto before = Binaries();
  const std::string store = Text("data/registry.reg");
  Build();
  EXPECT_EQ(Binaries(), before);
  EXPECT_EQ(Text("data/registry.reg"), store);
}

TEST_F(OutputsOfTheExamples, UnregisteringEverythingLeavesTheRegistryAsItWasBeforeTheRun) {
  {
    posix::RegistryStore store(DataFile("registry.reg"));
    const auto set = [&](const std::string& key, const std::string& text) {
      store.Set(RegistryRoot::ClassesRoot, key, "", {platform::RegistryType::String, text});
    };
    set("TypeLib\\{00000000-0000-0000-0000-000000000001}\\1.0\\0\\win32", "C:\\other.dll");
    set("Other.Class\\Clsid", "{00000000-0000-0000-0000-000000000002}");
  }
  const Contents before = Registry();
  Build();
  EXPECT_GT(Registry().size(), before.size() + 100);
  const CommandResult result = command.Run({"unregister", "Desk"});
  EXPECT_EQ(result.status, 0) << result.out;
  EXPECT_EQ(support::LinesOf(result.out).size(), static_cast<std::size_t>(kProjects));
  EXPECT_EQ(Registry(), before);
}

}  // namespace
}  // namespace hearthmake::host
