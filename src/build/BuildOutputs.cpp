// Build: the files that let a developer work with the whole build outside the library.

#include "automation/Error.hpp"
#include "automation/Text.hpp"
#include "build/Build.hpp"
#include "build/Projects.hpp"
#include "foundation/Apartment.hpp"
#include "foundation/Paths.hpp"
#include "foundation/clFile.hpp"
#include "project/Project.hpp"

namespace hearthmake {

namespace {

constexpr std::string_view kLineEnd = "\r\n";

// A text file that is written whole, in the place of one that is there.
void WriteFile(const std::string& path, const std::string& text) {
  clFile file;
  file.SetFile(path);
  file.OpenFile();
  file.SetContent(text);
  file.Save();
  file.CloseFile();
}

std::string WithoutLineEnd(std::string path) {
  if (path.ends_with(kLineEnd)) path.resize(path.size() - kLineEnd.size());
  return path;
}

std::string WithBackslash(std::string folder) {
  if (!folder.ends_with('\\')) folder += '\\';
  return folder;
}

// The two batch files, written side by side.
class BatchFiles {
 public:
  void Both(const std::string& line) { Lines(line, line); }
  void Lines(const std::string& registerLine, const std::string& unregisterLine) {
    m_register.append(registerLine).append(kLineEnd);
    m_unregister.append(unregisterLine).append(kLineEnd);
  }
  void Component(const Project& project, const std::string& quotedPath) {
    if (project.IsInprocess()) {
      Lines("REGSVR32.EXE /S " + quotedPath, "REGSVR32.EXE /S /U " + quotedPath);
    } else {
      Lines(quotedPath + " /RegServer", quotedPath + " /UnregServer");
    }
  }
  const std::string& Register() const { return m_register; }
  const std::string& Unregister() const { return m_unregister; }

 private:
  std::string m_register;
  std::string m_unregister;
};

}  // namespace

void Build::CreateProjectGroupFile(const std::string& strFileName, Project* objStartUpProject) {
  std::string text = "VBGROUP 5.0";
  text += kLineEnd;
  for (const auto& project : Projects().All()) {
    if (!project->CompileMe()) continue;
    const bool isStartUp = objStartUpProject != nullptr && project->Name() == objStartUpProject->Name();
    text += isStartUp ? "StartUpProject" : "Project";
    text += "=\"" + RelativePath(strFileName, WithoutLineEnd(project->ProjectPath())) + "\"";
    text += kLineEnd;
  }
  WriteFile(strFileName, text);
}

bool Build::GenerateRegisterBATfile(bool bRelativePath, const std::string& strRelateivePath,
                                    std::string& strGeneratedFiles) {
  const std::string folder =
      bRelativePath ? WithBackslash(strRelateivePath) : Ports().system->ComponentFolder() + "\\";
  BatchFiles files;
  files.Both("@echo off");
  files.Both("echo This file was created by Hearthmake");
  files.Lines("echo It will register all ActiveX components for the build " + Name(),
              "echo It will unregister all ActiveX components for the build " + Name());
  if (bRelativePath) files.Both("echo This file must be in executed from the following path " + folder);
  for (const auto& project : Projects().All()) {
    if (!project->ISActiveX()) continue;
    const std::string binary = project->FullPath32();
    files.Component(*project, QuotePath(bRelativePath ? RelativePath(folder, binary) : binary));
  }
  files.Both("echo Ready!");
  files.Both("pause");
  const std::string registerFile = folder + Name() + "_REGISTER.BAT";
  const std::string unregisterFile = folder + Name() + "_UNREGISTER.BAT";
  WriteFile(registerFile, files.Register());
  WriteFile(unregisterFile, files.Unregister());
  strGeneratedFiles = registerFile + std::string(kLineEnd) + unregisterFile;
  return true;
}

void Build::FixReferencesInProjectGroup() {
  for (const auto& project : Projects().All()) {
    if (project->CompileMe()) project->FixReferencesInProjectGroup();
  }
}

}  // namespace hearthmake
