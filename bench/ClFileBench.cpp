// Rewriting the rows of a project file in memory, as every compile does.

#include <benchmark/benchmark.h>

#include "foundation/clFile.hpp"
#include "foundation/mTypes.hpp"

namespace hearthmake {
namespace {

std::string ProjectText() {
  std::string text = "Type=OleDll\r\n";
  for (int i = 0; i < 60; ++i)
    text += "Class=Class" + std::to_string(i) + "; Class" + std::to_string(i) + ".cls\r\n";
  for (const SettingInfo& info : AllSettings()) text += std::string(info.marker) + "\"1\"\r\n";
  return text + "\r\n[MS Transaction Server]\r\nAutoRefresh=1\r\n";
}

void ReplaceEverySetting(benchmark::State& state) {
  const std::string text = ProjectText();
  clFile file;
  for (auto _ : state) {
    file.SetContent(text);
    for (const SettingInfo& info : AllSettings()) {
      std::int32_t position = 1;
      file.ReplaceRow(info.marker, std::string(info.marker) + "\"2\"", position);
    }
    benchmark::DoNotOptimize(file.InFile("AutoRefresh"));
  }
}
BENCHMARK(ReplaceEverySetting)->Unit(benchmark::kMicrosecond);

void MoveReferenceRows(benchmark::State& state) {
  const std::string text = ProjectText();
  const std::string row =
      "Reference=*\\G{385734C5-38B0-4296-BBB8-DB7D923CF244}#1.3#0#C:\\Suite\\Bin\\Constants.dll#Constants";
  clFile file;
  for (auto _ : state) {
    file.SetContent(text);
    for (int i = 0; i < 20; ++i) file.InsertNewRow(row, "Type=", false);
    while (file.InFile("Reference=") != 0) {
      std::int32_t position = 1;
      file.RemoveRow("Reference=", position);
    }
    benchmark::DoNotOptimize(file.InFile("AutoRefresh"));
  }
}
BENCHMARK(MoveReferenceRows)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace hearthmake
