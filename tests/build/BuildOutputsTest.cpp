// Build: group files and register files.

#include <gtest/gtest.h>

#include "support/BuildScene.hpp"
#include "support/ErrorExpect.hpp"

namespace hearthmake {
namespace {

using automation::Make;
using automation::Ref;
using support::BuildScene;

class OutputScene : public BuildScene {
 public:
  Ref<Project> AddTo(const std::string& folder, const std::string& name, const std::string& type) const {
    const std::string path = folder + name + ".vbp";
    const std::string extension = type == "Control" ? "ocx" : type == "OleDll" ? "dll" : "exe";
    Write(path, "Type=" + type + "\nStartup=\"(None)\"\nName=\"" + name + "\"\nTitle=\"" + name +
                    "\"\nExeName32=\"" + name + "." + extension + "\"\nMajorVer=1\nMinorVer=0\n");
    return build->Projects().Add(path);
  }
  std::string Generate(bool relative, const std::string& folder) const {
    std::string generated;
    EXPECT_TRUE(build->GenerateRegisterBATfile(relative, folder, generated));
    return generated;
  }
};

TEST(CreateProjectGroupFile, ListsTheProjectsInTheirOrderAndMarksTheStartUpProject) {
  const OutputScene scene;
  scene.AddTo("C:\\src\\a\\", "Lib", "OleDll");
  const auto main = scene.AddTo("C:\\src\\b\\", "Main", "Exe");
  scene.AddTo("C:\\src\\", "Tool", "Exe");
  scene.build->CreateProjectGroupFile("C:\\src\\all.vbg", main.Get());
  EXPECT_EQ(
      scene.Read("C:\\src\\all.vbg"),
      "VBGROUP "
      "5.0\r\nProject=\"a\\Lib.vbp\"\r\nStartUpProject=\"b\\Main.vbp\"\r\nProject=\"..\\src\\Tool.vbp\"\r\n");
}

TEST(CreateProjectGroupFile, LeavesProjectsOutThatAreNotCompiled) {
  const OutputScene scene;
  scene.AddTo("C:\\src\\", "Lib", "OleDll")->SetCompileMe(false);
  scene.AddTo("C:\\src\\", "Main", "Exe");
  scene.build->CreateProjectGroupFile("C:\\src\\all.vbg", nullptr);
  EXPECT_EQ(scene.Read("C:\\src\\all.vbg"), "VBGROUP 5.0\r\nProject=\"..\\src\\Main.vbp\"\r\n");
}

TEST(CreateProjectGroupFile, AStartUpProjectOfAnotherBuildMarksNone) {
  const OutputScene scene;
  scene.AddTo("C:\\src\\", "Lib", "OleDll");
  const auto stranger = Make<Project>();
  stranger->LoadFromFile(scene.WriteProject("Stranger"));
  scene.build->CreateProjectGroupFile("C:\\src\\all.vbg", stranger.Get());
  EXPECT_EQ(scene.Read("C:\\src\\all.vbg"), "VBGROUP 5.0\r\nProject=\"..\\src\\Lib.vbp\"\r\n");
}

TEST(CreateProjectGroupFile, ComparesTheNameOfTheStartUpProjectWithRegardToCase) {
  const OutputScene scene;
  scene.AddTo("C:\\src\\", "Lib", "OleDll");
  const auto other = Make<Project>();
  other->LoadFromFile(scene.WriteProject("LIB2", "OleDll", ""));
  scene.Write("C:\\other\\x.vbp", "Type=Exe\nName=\"LIB\"\n");
  other->LoadFromFile("C:\\other\\x.vbp");
  scene.build->CreateProjectGroupFile("C:\\src\\all.vbg", other.Get());
  EXPECT_EQ(scene.Read("C:\\src\\all.vbg"), "VBGROUP 5.0\r\nProject=\"..\\src\\Lib.vbp\"\r\n");
}

TEST(CreateProjectGroupFile, ReplacesAFileAndOpensAgainThroughAdd) {
  const OutputScene scene;
  scene.AddTo("C:\\src\\deep\\er\\", "Lib", "OleDll");
  scene.AddTo("C:\\src\\deep\\", "Main", "Exe");
  scene.Write("C:\\src\\deep\\er\\all.vbg", "something longer that was here before, in several words\n");
  scene.build->CreateProjectGroupFile("C:\\src\\deep\\er\\all.vbg", nullptr);
  const auto copy = BuildScene::Stored("Copy");
  copy->Projects().Add("C:\\src\\deep\\er\\all.vbg");
  ASSERT_EQ(copy->Projects().Count(), 2);
  EXPECT_EQ(copy->Projects().All()[0]->ProjectPath(), "C:\\src\\deep\\er\\Lib.vbp");
  EXPECT_EQ(copy->Projects().All()[1]->ProjectPath(), "C:\\src\\deep\\Main.vbp");
}

TEST(GenerateRegisterBATfile, WritesBothFilesForEveryTypeOfProject) {
  const OutputScene scene;
  scene.AddTo("C:\\src\\", "Lib", "OleDll");
  scene.AddTo("C:\\src\\", "Ctl", "Control");
  scene.AddTo("C:\\src\\", "Srv", "OleExe");
  scene.AddTo("C:\\src\\", "Main", "Exe");
  EXPECT_EQ(scene.Generate(false, ""), "C:\\data\\Suite_REGISTER.BAT\r\nC:\\data\\Suite_UNREGISTER.BAT");
  EXPECT_EQ(scene.Read("C:\\data\\Suite_REGISTER.BAT"),
            "@echo off\r\necho This file was created by Hearthmake\r\n"
            "echo It will register all ActiveX components for the build Suite\r\n"
            "REGSVR32.EXE /S \"C:\\src\\Lib.dll\"\r\nREGSVR32.EXE /S \"C:\\src\\Ctl.ocx\"\r\n"
            "\"C:\\src\\Srv.exe\" /RegServer\r\necho Ready!\r\npause\r\n");
  EXPECT_EQ(scene.Read("C:\\data\\Suite_UNREGISTER.BAT"),
            "@echo off\r\necho This file was created by Hearthmake\r\n"
            "echo It will unregister all ActiveX components for the build Suite\r\n"
            "REGSVR32.EXE /S /U \"C:\\src\\Lib.dll\"\r\nREGSVR32.EXE /S /U \"C:\\src\\Ctl.ocx\"\r\n"
            "\"C:\\src\\Srv.exe\" /UnregServer\r\necho Ready!\r\npause\r\n");
}

TEST(GenerateRegisterBATfile, WritesPathsRelativeToAFolderWithOrWithoutFinalBackslash) {
  const OutputScene scene;
  scene.AddTo("C:\\src\\bin\\", "Lib", "OleDll");
  const std::string files = "C:\\src\\Suite_REGISTER.BAT\r\nC:\\src\\Suite_UNREGISTER.BAT";
  EXPECT_EQ(scene.Generate(true, "C:\\src"), files);
  const std::string text = scene.Read("C:\\src\\Suite_REGISTER.BAT");
  EXPECT_EQ(scene.Generate(true, "C:\\src\\"), files);
  EXPECT_EQ(scene.Read("C:\\src\\Suite_REGISTER.BAT"), text);
  EXPECT_EQ(text,
            "@echo off\r\necho This file was created by Hearthmake\r\n"
            "echo It will register all ActiveX components for the build Suite\r\n"
            "echo This file must be in executed from the following path C:\\src\\\r\n"
            "REGSVR32.EXE /S \"bin\\Lib.dll\"\r\necho Ready!\r\npause\r\n");
}

TEST(GenerateRegisterBATfile, WritesRelativePathsForEveryTypeOfProject) {
  const OutputScene scene;
  scene.AddTo("C:\\src\\my bin\\", "Lib", "OleDll");
  scene.AddTo("C:\\src\\sub\\", "Ctl", "Control");
  scene.AddTo("C:\\other\\", "Srv", "OleExe");
  scene.AddTo("C:\\src\\sub\\", "Main", "Exe");
  scene.Generate(true, "C:\\src\\");
  const std::string place = "echo This file must be in executed from the following path C:\\src\\\r\n";
  EXPECT_EQ(scene.Read("C:\\src\\Suite_REGISTER.BAT"),
            "@echo off\r\necho This file was created by Hearthmake\r\n"
            "echo It will register all ActiveX components for the build Suite\r\n" +
                place +
                "REGSVR32.EXE /S \"my bin\\Lib.dll\"\r\nREGSVR32.EXE /S \"sub\\Ctl.ocx\"\r\n"
                "\"..\\other\\Srv.exe\" /RegServer\r\necho Ready!\r\npause\r\n");
  EXPECT_EQ(scene.Read("C:\\src\\Suite_UNREGISTER.BAT"),
            "@echo off\r\necho This file was created by Hearthmake\r\n"
            "echo It will unregister all ActiveX components for the build Suite\r\n" +
                place +
                "REGSVR32.EXE /S /U \"my bin\\Lib.dll\"\r\nREGSVR32.EXE /S /U \"sub\\Ctl.ocx\"\r\n"
                "\"..\\other\\Srv.exe\" /UnregServer\r\necho Ready!\r\npause\r\n");
}

TEST(GenerateRegisterBATfile, OfStandardProgramsHasTheHeaderAndTheEndOnly) {
  const OutputScene scene;
  scene.AddTo("C:\\src\\", "Main", "Exe");
  scene.Generate(false, "");
  EXPECT_EQ(scene.Read("C:\\data\\Suite_REGISTER.BAT"),
            "@echo off\r\necho This file was created by Hearthmake\r\n"
            "echo It will register all ActiveX components for the build Suite\r\necho Ready!\r\npause\r\n");
  EXPECT_EQ(scene.Read("C:\\data\\Suite_UNREGISTER.BAT"),
            "@echo off\r\necho This file was created by Hearthmake\r\n"
            "echo It will unregister all ActiveX components for the build Suite\r\necho Ready!\r\npause\r\n");
}

TEST(GenerateRegisterBATfile, AFolderThatIsMissingReachesTheCaller) {
  const OutputScene scene;
  std::string files = "before";
  EXPECT_EQ(support::ErrorOf([&] { scene.build->GenerateRegisterBATfile(true, "C:\\no", files); }).Number(),
            76);
  EXPECT_EQ(files, "before");
}

}  // namespace
}  // namespace hearthmake
