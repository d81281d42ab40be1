#include "host/sources/SourceProjects.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <nlohmann/json.hpp>

#include "automation/Text.hpp"
#include "automation/Variant.hpp"
#include "host/HostError.hpp"
#include "host/sources/SourceFlagNames.hpp"
#include "host/text/Numbers.hpp"

namespace hearthmake::host {

namespace {

using nlohmann::ordered_json;

// Without the root, final slashes and regard to the kind of slash: Suite/Lib
std::string BareSpec(const std::string& spec) {
  std::string text = automation::ReplaceAll(automation::Trim(spec), "\\", "/");
  if (text.starts_with('$')) text.erase(0, 1);
  text.erase(0, std::min(text.find_first_not_of('/'), text.size()));
  while (text.ends_with('/')) text.pop_back();
  return text;
}

std::string NamesOf(const SourceList& sources) {
  std::string names;
  for (const auto& source : sources)
    names += fmt::format("{}{} ({})", names.empty() ? "" : ", ", source->Project(), source->Id());
  return names;
}

std::string AddAdvice(const Build& build) {
  return fmt::format("Add one with: hearthmake sourceprojects '{}' add '$/PATH' --ini FILE --folder DIR",
                     build.Name());
}

}  // namespace

SourceList AllSources(Build& build) {
  SourceList sources;
  SSProjects& all = build.SSProjects();
  for (std::int32_t i = 1; i <= all.Count(); ++i)
    sources.push_back(all.Item(automation::Variant::FromLong(i)));
  return sources;
}

automation::Ref<SSProject> FindSource(Build& build, const std::string& pathOrId) {
  const SourceList all = AllSources(build);
  const std::string wanted = BareSpec(pathOrId);
  SourceList found;
  for (const auto& source : all) {
    if (automation::EqualsIgnoreCase(BareSpec(source->Project()), wanted)) found.push_back(source);
  }
  if (found.size() == 1) return found.front();
  if (found.size() > 1) {
    throw HostError(
        fmt::format("The build '{}' has {} source projects '{}'.", build.Name(), found.size(), pathOrId),
        "Say which one by its id: " + NamesOf(found));
  }
  for (const auto& source : all) {
    if (IsDigits(pathOrId) && automation::Decimal(source->Id()) == pathOrId) return source;
  }
  throw HostError(fmt::format("The build '{}' has no source project '{}'.", build.Name(), pathOrId),
                  all.empty() ? AddAdvice(build) : "It has: " + NamesOf(all));
}

SourceList ChosenSources(Build& build, const std::vector<std::string>& names) {
  if (names.empty()) {
    SourceList all = AllSources(build);
    if (all.empty())
      throw HostError(fmt::format("The build '{}' has no source projects.", build.Name()), AddAdvice(build));
    return all;
  }
  SourceList chosen;
  for (const std::string& name : names) {
    auto source = FindSource(build, name);
    if (std::find(chosen.begin(), chosen.end(), source) == chosen.end()) chosen.push_back(std::move(source));
  }
  return chosen;
}

std::string SourceLines(Session& session, Build& build) {
  std::string text;
  for (const auto& source : AllSources(build)) {
    const std::string folder = source->WorkingFolder();
    text += fmt::format(
        "{:>4}  {} -> {}{}\n      from {}, user {}{}, flags {}\n", source->Id(), Printable(source->Project()),
        folder.empty() ? "the folder that the database has for the user"
                       : Printable(session.PosixPath(folder)),
        source->Database().empty() ? "" : fmt::format("  ({})", Printable(source->Database())),
        Printable(session.PosixPath(source->SrcSafeIni())),
        source->User().empty() ? "-" : Printable(source->User()),
        source->Password().empty() ? "" : " with a password", SourceFlagsText(source->Flags()));
  }
  return text;
}

ordered_json SourcesJson(Build& build) {
  auto list = ordered_json::array();
  for (const auto& source : AllSources(build)) {
    list.push_back({{"id", source->Id()},
                    {"project", source->Project()},
                    {"workingFolder", source->WorkingFolder()},
                    {"srcSafeIni", source->SrcSafeIni()},
                    {"user", source->User()},
                    {"hasPassword", !source->Password().empty()},
                    {"flags", source->Flags()},
                    {"database", source->Database()}});
  }
  return list;
}

}  // namespace hearthmake::host
