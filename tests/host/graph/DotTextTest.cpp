#include "host/graph/DotText.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace hearthmake::host {
namespace {

using testing::HasSubstr;
using testing::Not;

DotPicture Picture(std::vector<PicturedProject> projects, std::vector<Digraph::Nodes> references) {
  return {"Shop", std::move(projects), Digraph(std::move(references)), 0};
}

PicturedProject Named(const std::string& name, ProjectTypes type = ProjectTypes::StandardExe) {
  return {name, type, LastOutcome::Unknown, false};
}

TEST(DotText, NamesProjectsAndTheirReferences) {
  const std::string text =
      DotText(Picture({Named("App"), Named("Lib", ProjectTypes::ActiveXDll)}, {{1}, {}}));
  EXPECT_THAT(text, HasSubstr("digraph \"Shop\" {"));
  EXPECT_THAT(text, HasSubstr("\"App\" [label=\"App\", shape=box,"));
  EXPECT_THAT(text, HasSubstr("\"Lib\" [label=\"Lib\", shape=ellipse,"));
  EXPECT_THAT(text, HasSubstr("  \"App\" -> \"Lib\";\n"));
  EXPECT_THAT(text, HasSubstr("Shop: 2 projects, 1 reference\""));
}

TEST(DotText, GivesEachTypeItsShape) {
  const std::string text = DotText(Picture(
      {Named("Server", ProjectTypes::ActiveXExe), Named("Grid", ProjectTypes::UserControl)}, {{}, {}}));
  EXPECT_THAT(text, HasSubstr("\"Server\" [label=\"Server\", shape=house,"));
  EXPECT_THAT(text, HasSubstr("\"Grid\" [label=\"Grid\", shape=component,"));
  EXPECT_THAT(text, HasSubstr("legend: OLE server"));
  EXPECT_THAT(text, HasSubstr("legend: control"));
  EXPECT_THAT(text, Not(HasSubstr("legend: program")));
}

TEST(DotText, ColoursWhatFailedAndWhatChanged) {
  PicturedProject failed = Named("A");
  failed.last = LastOutcome::Failed;
  failed.isChanged = true;
  PicturedProject changed = Named("B");
  changed.isChanged = true;
  const std::string text = DotText(Picture({failed, changed}, {{}, {}}));
  EXPECT_THAT(text, HasSubstr("\"A\" [label=\"A\", shape=box, fillcolor=\"#f4a9a0\""));
  EXPECT_THAT(text, HasSubstr("\"B\" [label=\"B\", shape=box, fillcolor=\"#ffe08a\""));
  EXPECT_THAT(text, HasSubstr("legend: failed in the last run"));
  EXPECT_THAT(text, HasSubstr("legend: to be compiled: changed"));
  EXPECT_THAT(DotText(Picture({Named("A")}, {{}})), Not(HasSubstr("failed")));
}

TEST(DotText, DrawsCyclesInRed) {
  const std::string text = DotText(Picture({Named("A"), Named("B"), Named("C")}, {{1}, {0, 2}, {}}));
  EXPECT_THAT(text, HasSubstr("\"A\" -> \"B\" [color=\"#d0021b\""));
  EXPECT_THAT(text, HasSubstr("\"B\" -> \"A\" [color=\"#d0021b\""));
  EXPECT_THAT(text, HasSubstr("\"B\" -> \"C\";"));
  EXPECT_THAT(text, HasSubstr("with a cycle (red)"));
}

TEST(DotText, TellsHowManyReferencesAreLeftOut) {
  DotPicture picture = Picture({Named("A"), Named("B")}, {{1}, {}});
  picture.implied = 3;
  EXPECT_THAT(DotText(picture), HasSubstr("4 references (3 implied by others left out)"));
}

TEST(DotText, EscapesNames) {
  const std::string text = DotText(Picture({Named("a\"b\\n&lt;\n\xff\\")}, {{}}));
  EXPECT_THAT(
      text,
      HasSubstr("\"a\\\"b\\\\n&lt; \xEF\xBF\xBD\\\\\" [label=\"a\\\"b\\\\n&amp;lt; \xEF\xBF\xBD\\\\\""));
}

TEST(DotText, TellsProjectsOfOneNameApart) {
  const std::string text = DotText(Picture({Named("A"), Named("A")}, {{1}, {}}));
  EXPECT_THAT(text, HasSubstr("\"A\" -> \"A (2)\";"));
  EXPECT_THAT(text, HasSubstr("\"A (2)\" [label=\"A\","));
}

}  // namespace
}  // namespace hearthmake::host
