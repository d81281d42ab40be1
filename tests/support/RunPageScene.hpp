#pragma once

#include <cstdint>
#include <string>

#include "host/page/RunPage.hpp"

namespace hearthmake::support {

// Everything that breaks a page when it is not escaped, or not cleaned.
inline const std::string kNastyText =
    "</script><script>document.body.dataset.broken='1'</script><img src=x onerror=\"document.body.dataset."
    "broken='1'\">'\"&amp;<!--\x01\x1b[31m\xff\xe9 \xe2\x80\xae end";

// The page of a run of so many projects, every outcome among them: each project references some before it.
inline host::RunPage MakeRunPage(std::size_t count) {
  using host::ProjectOutcome;
  host::RunPage page;
  page.buildName = "Suite";
  page.result = host::RunResult::Failed;
  page.began = 1'000'000'000;
  page.lastBegan = 999'000'000;
  std::vector<host::Digraph::Nodes> targets(count);
  double at = 0;
  for (std::size_t i = 0; i < count; ++i) {
    host::PageProject project;
    project.record.id = static_cast<std::int32_t>(i) + 1;
    project.record.name = "Project" + std::to_string(i);
    project.record.type = i % 7 == 3 ? "UserControl" : i % 5 == 4 ? "StandardExe" : "ActiveXDll";
    project.record.outcome = static_cast<ProjectOutcome>(i % 8);
    project.path = "/src/" + project.record.name + ".vbp";
    if (project.record.outcome == ProjectOutcome::Compiled ||
        project.record.outcome == ProjectOutcome::Failed) {
      project.record.start = at;
      project.record.seconds = 0.1 + static_cast<double>(i % 11) / 10;
      at += project.record.seconds;
    }
    if (project.record.outcome == ProjectOutcome::Failed) {
      project.record.isCompileError = true;
      project.record.log = "Compile Error in File 'C:\\src\\Shelf.cls', Line 12 : Variable not defined\r\n";
      project.errors.push_back({{"C:\\src\\Shelf.cls", 12, "Variable not defined"},
                                {{{11, "Public Sub Fill()"}, {12, "  m_Cont = 1"}, {13, "End Sub"}}}});
    }
    project.facts.before = {"1.0.1", 24'576, "{11111111-1111-1111-1111-111111111111}", "1.0"};
    project.facts.after = {"1.0.2", 24'576 + static_cast<std::int64_t>(i),
                           "{11111111-1111-1111-1111-111111111111}", "1.0"};
    project.change.emplace();
    project.change->sizeChange = static_cast<std::int64_t>(i);
    project.change->last.facts = project.facts.before;
    for (const std::size_t distance : {std::size_t{1}, std::size_t{7}, std::size_t{31}})
      if (i % 3 != 0 && i >= distance) targets[i].push_back(i - distance);
    page.projects.push_back(std::move(project));
  }
  page.seconds = at;
  page.references = host::Digraph(std::move(targets));
  return page;
}

}  // namespace hearthmake::support
