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

bool BeginsRow(std::string_view text, std::size_t place) {
  return place == 0 || text.substr(0, place).ends_with("\r\n");
}

// Whether each key of the file is found where it begins a row, and the rows of references hold no other
// one. Keys are searched as plain texts, so that in other files one row's edit can take another row away,
// which is then added anew the next time.
bool HasPlainKeys(std::string_view text) {
  for (const auto& info : hearthmake::AllSettings()) {
    const std::size_t place = text.find(info.marker);
    if (place != std::string_view::npos && !BeginsRow(text, place)) return false;
  }
  for (const std::string_view key : {"Reference=", "Object="}) {
    for (std::size_t hit = text.find(key); hit != std::string_view::npos; hit = text.find(key, hit + 1)) {
      if (!BeginsRow(text, hit)) return false;
      const std::string_view row = text.substr(hit, text.find("\r\n", hit) - hit);
      for (const auto& info : hearthmake::AllSettings()) {
        if (row.find(info.marker) != std::string_view::npos) return false;
      }
    }
  }
  return true;
}

// What a project tells of itself. Numbers that are none may raise.
void AskProject(Project& project) {
  try {
    project.FullPath32();
    project.RemoteServerFilePath();
    project.IReportItem_Details();
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
  if (HasPlainKeys(text) && apartment.Files().Read(kPath) != once) std::abort();
  return 0;
}
