#include "GeneratedSuite.hpp"

#include <fmt/format.h>

#include <filesystem>
#include <fstream>
#include <random>

namespace hearthmake::bench {

namespace {

namespace fs = std::filesystem;

constexpr int kProjectsAFolder = 50;
constexpr int kReferences = 4;
constexpr const char* kAnyGuid = "{00000000-0000-0000-0000-000000000001}";

std::string ProjectText(int number, std::mt19937& random) {
  std::string text = "Type=OleDll\r\n";
  text +=
      "Reference=*\\G{00020430-0000-0000-C000-000000000046}#2.0#0#C:\\WINDOWS\\system32\\stdole2.tlb#OLE "
      "Automation\r\n";
  for (int i = 0; i < kReferences && number > 0; ++i) {
    const auto target = random() % static_cast<unsigned>(number);
    text += fmt::format("Reference=*\\G{}#1.0#0#..\\bin\\Part{}.dll#Part{}\r\n", kAnyGuid, target, target);
  }
  for (int i = 0; i < 12; ++i) text += fmt::format("Class=c{0}_{1}; c{0}_{1}.cls\r\n", number, i);
  text += fmt::format(
      "Startup=\"(None)\"\r\nHelpFile=\"\"\r\nTitle=\"Part{0}\"\r\nExeName32=\"Part{0}.dll\"\r\nPath32=\".."
      "\\bin\"\r\n"
      "Command32=\"\"\r\nName=\"Part{0}\"\r\nHelpContextID=\"0\"\r\nDescription=\"Part {0} of the suite\"\r\n"
      "CompatibleMode=\"1\"\r\nMajorVer=1\r\nMinorVer=0\r\nRevisionVer=0\r\nAutoIncrementVer=0\r\n"
      "ServerSupportFiles=0\r\nVersionCompanyName=\"Suite\"\r\nCompilationType=0\r\nOptimizationType=0\r\n"
      "FavorPentiumPro(tm)=0\r\nCodeViewDebugInfo=0\r\nNoAliasing=0\r\nBoundsCheck=0\r\nOverflowCheck=0\r\n"
      "FlPointCheck=0\r\nFDIVCheck=0\r\nUnroundedFP=0\r\nStartMode=1\r\nUnattended=0\r\nRetained=0\r\n"
      "ThreadPerObject=0\r\nMaxNumberOfThreads=1\r\nThreadingModel=1\r\n\r\n[MS Transaction "
      "Server]\r\nAutoRefresh=1\r\n",
      number);
  return text;
}

}  // namespace

void GenerateSuite(const std::string& folder, int count, const std::string& binary) {
  std::mt19937 random(1);
  fs::create_directories(folder + "/bin");
  for (int number = 0; number < count; ++number) {
    const std::string part = fmt::format("{}/part{:04}", folder, number / kProjectsAFolder);
    if (number % kProjectsAFolder == 0) fs::create_directories(part);
    std::ofstream(fmt::format("{}/Part{}.vbp", part, number), std::ios::binary)
        << ProjectText(number, random);
    fs::create_hard_link(binary, fmt::format("{}/bin/Part{}.dll", folder, number));
  }
}

}  // namespace hearthmake::bench
