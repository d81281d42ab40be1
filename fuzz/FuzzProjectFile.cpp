// A project file is read into settings and references, and brought up to date.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "MemoryApartment.hpp"
#include "automation/Error.hpp"
#include "foundation/clFile.hpp"
#include "project/Project.hpp"
#include "project/clVBProject.hpp"

namespace {

using hearthmake::Project;
using hearthmake::automation::Error;

constexpr const char* kPath = "C:\\src\\fuzz.vbp";

void ReadRecord() {
  hearthmake::clFile file;
  file.SetFile(kPath);
  file.OpenFile();
  hearthmake::clVBProject record;
  record.Read(file);
  for (const auto& info : hearthmake::AllSettings()) {
    if (record.Stored(info.setting).find("\r\n") != std::string::npos) std::abort();
  }
}

// What a project tells of itself. Numbers that are none may raise.
void AskProject(Project& project) {
  try {
    project.FullPath32();
    project.RemoteServerFilePath();
    project.ReportItemDetails();
  } catch (const Error&) {
  }
  for (const auto& reference : project.ReferenceList().Items()) {
    if (reference->ReferenceString().find("\r\n") != std::string::npos) std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static hearthmake::fuzz::MemoryApartment apartment;
  const std::string text(reinterpret_cast<const char*>(data), size);
  apartment.Files().Replace(kPath, text);
  ReadRecord();
  const auto project = hearthmake::automation::Make<Project>();
  try {
    project->LoadFromFile(kPath);
  } catch (const Error&) {
    return 0;
  }
  AskProject(*project);
  if (apartment.Files().Read(kPath) != text) std::abort();
  project->UpdateVBP();
  const std::string once = apartment.Files().Read(kPath);
  project->UpdateVBP();
  if (apartment.Files().Read(kPath) != once) std::abort();
  return 0;
}
