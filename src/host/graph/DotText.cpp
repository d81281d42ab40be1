#include "host/graph/DotText.hpp"

#include <fmt/format.h>

#include <map>
#include <set>

#include "automation/Text.hpp"
#include "host/text/CleanText.hpp"
#include "host/text/Numbers.hpp"

namespace hearthmake::host {

namespace {

using automation::ReplaceAll;

struct Look {
  const char* shape;
  const char* legend;
};

Look LookOf(ProjectTypes type) {
  switch (type) {
    case ProjectTypes::StandardExe: return {"box", "program"};
    case ProjectTypes::ActiveXDll: return {"ellipse", "ActiveX library"};
    case ProjectTypes::ActiveXExe: return {"house", "OLE server"};
    case ProjectTypes::UserControl: return {"component", "control"};
  }
  return {"box", "project"};
}

// Fills that carry black text, and tell from each other in grey too.
constexpr const char* kFailedLook = "fillcolor=\"#f4a9a0\", color=\"#a3160b\", penwidth=2";
constexpr const char* kChangedLook = "fillcolor=\"#ffe08a\", color=\"#8a5a00\"";
constexpr const char* kPlainLook = "fillcolor=\"#eef3f8\", color=\"#4a5b6c\"";
constexpr const char* kCycleEdge = "color=\"#d0021b\", penwidth=2";

const char* ColoursOf(const PicturedProject& project) {
  if (project.last == LastOutcome::Failed) return kFailedLook;
  return project.isChanged ? kChangedLook : kPlainLook;
}

// Inside double quotes. A line end would end nothing, but make the text hard to read.
std::string Quoted(const std::string& text) {
  return "\"" + ReplaceAll(ReplaceAll(CleanLine(text), "\\", "\\\\"), "\"", "\\\"") + "\"";
}

// Labels, unlike ids, are read for entities.
std::string Label(const std::string& text) { return Quoted(ReplaceAll(text, "&", "&amp;")); }

// Ids are the names, so that other tools find them; names that occur again get a number.
std::vector<std::string> IdsOf(const std::vector<PicturedProject>& projects) {
  std::set<std::string> taken;
  std::vector<std::string> ids;
  for (const PicturedProject& project : projects) {
    std::string id = project.name;
    for (int number = 2; !taken.insert(id).second; ++number)
      id = fmt::format("{} ({})", project.name, number);
    ids.push_back(Quoted(id));
  }
  return ids;
}

std::string Title(const DotPicture& picture, bool hasCycle) {
  std::string title = fmt::format("{}: {}, {}", picture.title, Counted(picture.projects.size(), "project"),
                                  Counted(picture.references.EdgeCount() + picture.implied, "reference"));
  if (picture.implied > 0) title += fmt::format(" ({} implied by others left out)", picture.implied);
  if (hasCycle) title += ", with a cycle (red)";
  return title;
}

std::string Nodes(const DotPicture& picture, const std::vector<std::string>& ids) {
  std::string text;
  for (std::size_t i = 0; i < ids.size(); ++i) {
    const PicturedProject& project = picture.projects[i];
    text += fmt::format("  {} [label={}, shape={}, {}];\n", ids[i], Label(project.name),
                        LookOf(project.type).shape, ColoursOf(project));
  }
  return text;
}

std::string Edges(const DotPicture& picture, const std::vector<std::string>& ids,
                  const std::vector<std::vector<bool>>& cyclic) {
  std::string text;
  for (std::size_t from = 0; from < ids.size(); ++from) {
    const Digraph::Nodes& targets = picture.references.Targets(from);
    for (std::size_t i = 0; i < targets.size(); ++i) {
      text += fmt::format("  {} -> {}{};\n", ids[from], ids[targets[i]],
                          cyclic[from][i] ? fmt::format(" [{}]", kCycleEdge) : "");
    }
  }
  return text;
}

// Shapes and colours that the picture has, each once.
std::string Legend(const DotPicture& picture) {
  std::map<ProjectTypes, Look> types;
  bool hasFailed = false;
  bool hasChanged = false;
  for (const PicturedProject& project : picture.projects) {
    types.emplace(project.type, LookOf(project.type));
    hasFailed |= project.last == LastOutcome::Failed;
    hasChanged |= project.last != LastOutcome::Failed && project.isChanged;
  }
  if (types.empty()) return {};
  std::string text = "  subgraph cluster_legend {\n    label=\"Legend\"; fontsize=11; color=\"#b0b8c0\";\n";
  const auto add = [&](const std::string& name, const char* shape, const char* colours) {
    text += fmt::format("    \"legend: {}\" [label=\"{}\", shape={}, fontsize=10, {}];\n", name, name, shape,
                        colours);
  };
  for (const auto& [type, look] : types) add(look.legend, look.shape, kPlainLook);
  if (hasChanged) add("to be compiled: changed", "box", kChangedLook);
  if (hasFailed) add("failed in the last run", "box", kFailedLook);
  return text + "  }\n";
}

bool HasAny(const std::vector<std::vector<bool>>& cyclic) {
  for (const auto& edges : cyclic) {
    for (const bool isCyclic : edges) {
      if (isCyclic) return true;
    }
  }
  return false;
}

}  // namespace

std::string TypeName(ProjectTypes type) { return LookOf(type).legend; }

std::string DotText(const DotPicture& picture) {
  const std::vector<std::string> ids = IdsOf(picture.projects);
  const auto cyclic = picture.references.CyclicEdges();
  // Right to left: what is compiled first stands left, and arrows point to what is referenced.
  return fmt::format(
      "digraph {} {{\n"
      "  rankdir=RL; ranksep=0.9; nodesep=0.16; labelloc=t; fontname=\"Helvetica\"; fontsize=16;\n"
      "  label={};\n"
      "  node [style=filled, fontname=\"Helvetica\", fontsize=12, height=0.3, margin=\"0.12,0.05\"];\n"
      "  edge [color=\"#7c8a99\", arrowsize=0.7];\n"
      "{}{}{}}}\n",
      Quoted(picture.title), Label(Title(picture, HasAny(cyclic))), Nodes(picture, ids),
      Edges(picture, ids, cyclic), Legend(picture));
}

}  // namespace hearthmake::host
