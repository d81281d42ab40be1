#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace hearthmake {
namespace {

namespace fs = std::filesystem;

// The folders of src from the ground up. A folder may include its own level and those below; folders of
// one level marked apart know nothing of each other.
struct Layer {
  std::string folder;
  int level;
  bool isApart;
};

const std::vector<Layer>& Layers() {
  static const std::vector<Layer> kLayers = {
      {"automation", 0, false},
      {"platform", 1, false},
      {"adapters/posix", 2, true},
      {"adapters/win32", 2, true},
      {"adapters/sqlite", 2, true},
      {"adapters/typelib", 2, true},
      {"adapters/vbs", 2, true},
      {"adapters/catalog", 2, true},
      {"adapters/git", 2, true},
      {"adapters/jet", 2, true},
      {"adapters/componentservices", 2, true},
      {"adapters/dao", 2, true},
      {"adapters/scriptcontrol", 2, true},
      {"adapters/sourcesafe", 2, true},
      {"foundation", 2, true},
      {"vbscript", 2, true},
      {"build", 3, false},
      {"project", 3, false},
      {"sourcecontrol", 3, false},
      {"scripting", 3, false},
      {"deployment", 3, false},
      {"interfaces", 4, false},
      {"embedding", 5, true},
      {"host/windows", 7, true},
      {"host", 6, true},
      {"com", 6, true},
  };
  return kLayers;
}

bool IsAdapter(const Layer& layer) { return layer.folder.starts_with("adapters/"); }

// The adapters over automation objects of a Windows machine call them with what adapters/win32 has for it.
bool IsLateBound(const Layer& layer) {
  return layer.folder == "adapters/componentservices" || layer.folder == "adapters/dao" ||
         layer.folder == "adapters/scriptcontrol" || layer.folder == "adapters/sourcesafe";
}

// What a folder may use of the layers below beside the level rule: an adapter never knows the core, and the
// script engine is reached through its adapter.
bool MayInclude(const Layer& from, const Layer& to) {
  if (from.folder == to.folder) return true;
  // The command of Windows gets its way to the machine's objects from the COM face.
  const bool isHost = from.folder == "host" || from.folder == "host/windows";
  if (to.folder == "vbscript") return from.folder == "adapters/vbs" || isHost;
  if (to.folder == "adapters/win32" && IsLateBound(from)) return true;
  if (IsAdapter(to)) return isHost || from.folder == "com" || from.folder == "embedding";
  if (to.level == from.level) return !from.isApart && !to.isApart;
  return to.level < from.level;
}

const Layer* LayerOf(const std::string& path) {
  for (const Layer& layer : Layers()) {
    if (path.starts_with(layer.folder + "/")) return &layer;
  }
  return nullptr;
}

struct IncludeLine {
  fs::path file;
  std::string target;
  bool isSystem;
};

std::vector<IncludeLine> IncludeLines(const fs::path& root) {
  static const std::regex kInclude(R"(^\s*#\s*include\s*([<"])([^>"]+)[>"])");
  std::vector<IncludeLine> lines;
  for (const auto& entry : fs::recursive_directory_iterator(root)) {
    if (entry.path().extension() != ".hpp" && entry.path().extension() != ".cpp") continue;
    std::ifstream file(entry.path());
    for (std::string line; std::getline(file, line);) {
      std::smatch match;
      if (std::regex_search(line, match, kInclude))
        lines.push_back({entry.path(), match[2], match[1] == "<"});
    }
  }
  return lines;
}

const fs::path kSources = fs::path(SOURCE_DIRECTORY) / "src";

TEST(IncludeDirection, EveryFolderHasItsLayer) {
  int files = 0;
  for (const auto& entry : fs::recursive_directory_iterator(kSources)) {
    if (entry.path().extension() != ".hpp" && entry.path().extension() != ".cpp") continue;
    ++files;
    EXPECT_NE(LayerOf(fs::relative(entry.path(), kSources).string()), nullptr) << entry.path();
  }
  EXPECT_GT(files, 0);
}

TEST(IncludeDirection, IncludesGoDownwardsOnly) {
  for (const IncludeLine& line : IncludeLines(kSources)) {
    if (line.isSystem) continue;
    const Layer* from = LayerOf(fs::relative(line.file, kSources).string());
    const Layer* to = LayerOf(line.target);
    ASSERT_NE(from, nullptr) << line.file;
    ASSERT_NE(to, nullptr) << line.file << " includes " << line.target << ", which is no path below src";
    EXPECT_TRUE(MayInclude(*from, *to)) << line.file << " includes " << line.target;
  }
}

// The folder below src/host that a path leads into; empty for the host's own files and for others.
std::string HostFolderOf(const std::string& path) {
  static const std::regex kFolder(R"(^host/([a-z]+)/)");
  std::smatch match;
  return std::regex_search(path, match, kFolder) ? match[1] : std::string();
}

// Takes away what needs nothing, until nothing or a cycle is left.
std::map<std::string, std::set<std::string>> CyclesOf(std::map<std::string, std::set<std::string>> needs) {
  const auto needsNothing = [&](const auto& entry) {
    return std::none_of(entry.second.begin(), entry.second.end(),
                        [&](const std::string& folder) { return needs.contains(folder); });
  };
  for (auto found = needs.begin();
       (found = std::find_if(needs.begin(), needs.end(), needsNothing)) != needs.end();)
    needs.erase(found);
  return needs;
}

TEST(IncludeDirection, FoldersOfTheHostHaveNoCycles) {
  std::map<std::string, std::set<std::string>> needs;
  for (const IncludeLine& line : IncludeLines(kSources / "host")) {
    const std::string from = HostFolderOf(fs::relative(line.file, kSources).string());
    const std::string to = HostFolderOf(line.target);
    if (!from.empty() && !to.empty() && from != to) needs[from].insert(to);
  }
  EXPECT_TRUE(needs.contains("commands"));
  const auto cycles = CyclesOf(needs);
  for (const auto& [folder, others] : cycles) {
    for (const std::string& other : others) {
      if (cycles.contains(other)) ADD_FAILURE() << "host/" << folder << " needs host/" << other;
    }
  }
}

// The core must build on any machine with a compiler: no header of a package or of an operating system.
TEST(IncludeDirection, TheCoreUsesTheStandardLibraryAlone) {
  for (const IncludeLine& line : IncludeLines(kSources)) {
    const Layer* from = LayerOf(fs::relative(line.file, kSources).string());
    ASSERT_NE(from, nullptr);
    const bool isCore =
        !from->folder.starts_with("adapters/") && !from->folder.starts_with("host") && from->folder != "com";
    // The script engine stands beside the core, and has one package.
    const bool isOfEngine = from->folder == "vbscript" && line.target == "pcre2.h";
    const bool isStandard = line.target.find_first_of("./") == std::string::npos || isOfEngine;
    if (!isCore || !line.isSystem) continue;
    EXPECT_TRUE(isStandard) << line.file << " includes <" << line.target << ">";
  }
}

// Code for one operating system has a folder of its own.
TEST(IncludeDirection, TheCoreHasNoPlatformConditions) {
  static const std::regex kMacro(R"(\b_WIN32\b)");
  for (const auto& entry : fs::recursive_directory_iterator(kSources)) {
    if (entry.path().extension() != ".hpp" && entry.path().extension() != ".cpp") continue;
    std::ifstream file(entry.path());
    const std::string text(std::istreambuf_iterator<char>(file), {});
    EXPECT_FALSE(std::regex_search(text, kMacro)) << entry.path();
  }
}

}  // namespace
}  // namespace hearthmake
