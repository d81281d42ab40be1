#include <memory>
#include <string>
#include <vector>

#include "adapters/sourcesafe/SourceSafe.hpp"
#include "adapters/win32/Win32FileSystem.hpp"
#include "platform/SourceControlConformance.hpp"
#include "support/SourceSafeBench.hpp"

namespace hearthmake::platform {
namespace {

SourceControlPlayground MakePlayground(const SeedFiles& seed) {
  const auto bench = std::make_shared<support::SourceSafeBench>();
  std::vector<std::string> files;
  for (const auto& [path, bytes] : seed) {
    files.push_back("$/" + path);
    bench->memory[bench->kIni].Change(files.back(), bytes, "Ann", "First");
  }
  bench->base.projects = doubles::ProjectsAbove(files);
  SourceControlPlayground playground;
  playground.control = std::make_shared<sourcesafe::SourceSafe>();
  playground.files = std::make_shared<win32::Win32FileSystem>();
  playground.ini = bench->kIni;
  playground.folder = bench->folder.MakeFolder("room");
  playground.keepAlive = bench;
  playground.versionsAreOfAll = false;
  playground.takesAnyLabel = false;
  return playground;
}

INSTANTIATE_TEST_SUITE_P(Safe, SourceControlConformance, ::testing::Values(MakePlayground));

}  // namespace
}  // namespace hearthmake::platform
