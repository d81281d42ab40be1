// A program that builds a suite of Visual Basic projects itself, with the library inside:
//   embed DATA-FOLDER COMPILER SUITE-FOLDER

#include <hearthmake/automation/Error.hpp>
#include <hearthmake/build/Build.hpp>
#include <hearthmake/embedding/Embedded.hpp>
#include <hearthmake/foundation/Settings.hpp>

#include <iostream>
#include <string>

namespace {

using hearthmake::Build;
using hearthmake::Project;
using hearthmake::automation::Make;
using hearthmake::automation::Ref;
using hearthmake::embedding::Embedded;

// What this program wants to hear of a build.
class Teller final : public hearthmake::BuildEvents {
 public:
  explicit Teller(Build& build) : m_build(&build) { m_build->AddSink(*this); }
  Teller(const Teller&) = delete;
  Teller& operator=(const Teller&) = delete;
  ~Teller() override { m_build->RemoveSink(*this); }

  void WillCompile(Project& project, bool& /*cancel*/) override {
    std::cout << project.Name() << " ... " << std::flush;
  }
  void ProjectCompiled(Project& project) override {
    std::cout << project.MajorVer() << '.' << project.MinorVer() << ", " << project.FileSizeExe32()
              << " bytes\n";
  }
  void BuildFaild(Project* /*project*/, const std::string& message, bool /*isCompileError*/) override {
    std::cout << "failed\n" << message << '\n';
  }

 private:
  Ref<Build> m_build;
};

void UseCompiler(const std::string& dosPath) {
  const auto settings = Make<hearthmake::Settings>();
  settings->BeginEdit();
  settings->SetVBExe(dosPath);
  settings->ApplyEdit();
}

Ref<Build> NewBuild(const std::string& name) {
  auto build = Make<Build>();
  build->BeginEdit();
  build->SetName(name);
  build->ApplyEdit();
  return build;
}

bool BuildSuite(const Embedded& library, const std::string& compiler, const std::string& folder) {
  UseCompiler(library.ToDosPath(compiler));
  const auto build = NewBuild("Embedded");
  build->CreateBuildFromPath(library.ToDosPath(folder), false);
  build->Projects().SetCompileOrder();
  std::cout << build->Projects().Count() << " projects\n";
  const Teller teller(*build);
  return build->Projects().Build(false);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) {
    std::cerr << "embed DATA-FOLDER COMPILER SUITE-FOLDER\n";
    return 2;
  }
  try {
    hearthmake::embedding::Options options;
    options.dataFolder = argv[1];
    // The objects of the library are to go before it does.
    const Embedded library(options);
    const bool isDone = BuildSuite(library, argv[2], argv[3]);
    std::cout << (isDone ? "Done.\n" : "Not done.\n");
    return isDone ? 0 : 1;
  } catch (const hearthmake::automation::Error& error) {
    std::cerr << error.Source() << ": " << error.Description() << '\n';
    return 2;
  }
}
