#include "host/builds/ProjectGraph.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "build/Build.hpp"
#include "host/Session.hpp"
#include "support/Workbench.hpp"

namespace hearthmake::host {
namespace {

using testing::ElementsAre;

// A build of libraries; each text is a project and those that it references: "App: Lib Data".
class ProjectGraphTest : public testing::Test {
 protected:
  ProjectGraph Graph(const std::vector<std::pair<std::string, std::vector<std::string>>>& projects) {
    for (const auto& [name, targets] : projects) {
      std::string rows;
      for (const std::string& target : targets) rows += "Reference=*\\A" + target + ".vbp\n";
      bench.Write("C:\\src\\" + name + ".vbp", "Type=OleDll\n" + rows + "Name=\"" + name + "\"\n");
    }
    build = automation::Make<Build>();
    build->SetName("Shop");
    build->BeginEdit();
    build->ApplyEdit();
    for (const auto& [name, targets] : projects) build->Projects().Add("C:\\src\\" + name + ".vbp");
    build->AutoDetectReferences();
    return ProjectGraph(AllProjects(*build));
  }
  static std::vector<std::string> NamesOf(const ProjectList& projects) {
    std::vector<std::string> names;
    for (const auto& project : projects) names.push_back(project->Name());
    return names;
  }

  support::Workbench bench;
  automation::Ref<Build> build;
};

TEST_F(ProjectGraphTest, FindsNoCycleWhereThereIsNone) {
  EXPECT_THAT(NamesOf(Graph({{"A", {"B", "C"}}, {"B", {"C"}}, {"C", {}}}).FindCycle()), ElementsAre());
}

TEST_F(ProjectGraphTest, FindsACycleWithoutThoseThatLeadToIt) {
  EXPECT_THAT(NamesOf(Graph({{"User", {"A"}}, {"A", {"B"}}, {"B", {"C"}}, {"C", {"A"}}}).FindCycle()),
              ElementsAre("A", "B", "C"));
}

TEST_F(ProjectGraphTest, PutsUsersBeforeLibraries) {
  EXPECT_THAT(NamesOf(Graph({{"C", {}}, {"B", {"C"}}, {"A", {"B", "C"}}}).UsersFirst()),
              ElementsAre("A", "B", "C"));
}

TEST_F(ProjectGraphTest, TellsWhoReferencesAProject) {
  const ProjectGraph graph = Graph({{"A", {"C"}}, {"B", {"C"}}, {"C", {}}});
  EXPECT_THAT(NamesOf(graph.UsersOf(*FindProject(*build, "C"))), ElementsAre("A", "B"));
  EXPECT_THAT(NamesOf(graph.UsersOf(*FindProject(*build, "A"))), ElementsAre());
}

TEST_F(ProjectGraphTest, LeavesReferencesToOthersOut) {
  Graph({{"A", {"B"}}, {"B", {"C"}}, {"C", {"A"}}});
  const ProjectGraph part({FindProject(*build, "A"), FindProject(*build, "B")});
  EXPECT_THAT(NamesOf(part.FindCycle()), ElementsAre());
  EXPECT_THAT(NamesOf(part.UsersFirst()), ElementsAre("A", "B"));
}

}  // namespace
}  // namespace hearthmake::host
