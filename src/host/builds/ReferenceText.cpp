#include "host/builds/ReferenceText.hpp"

#include <fmt/format.h>

#include "automation/Error.hpp"
#include "automation/Text.hpp"
#include "host/text/Json.hpp"

namespace hearthmake::host {

namespace {

using nlohmann::ordered_json;

std::string NameOfProject(Build& build, std::int32_t id) {
  try {
    return build.Projects().Item(automation::Variant::FromText(automation::Decimal(id)))->Name();
  } catch (const automation::Error&) {
    return fmt::format("(project {} is not in the build)", id);
  }
}

std::string LineOf(Build& build, const Reference& reference, std::size_t position) {
  if (!reference.IsExternal()) {
    return fmt::format("{:>4}  project  {}\n", position, NameOfProject(build, reference.ReferencedProject()));
  }
  // A row that could not be taken apart has no id; its text says what it is.
  if (reference.GUID().empty())
    return fmt::format("{:>4}  row      {}\n", position, reference.ReferenceString());
  const std::string description = reference.Description();
  return fmt::format("{:>4}  {}  {}{}{} {}\n", position, reference.IsUserControl() ? "control" : "library",
                     description, description.empty() ? "" : ", ", reference.Path(),
                     reference.BinaryVersion());
}

}  // namespace

std::string ReferenceLines(Build& build, const Project& project) {
  std::string text;
  std::size_t position = 0;
  for (const auto& reference : AllReferences(project))
    text += Printable(LineOf(build, *reference, ++position)) + "\n";
  return text.empty() ? "      none\n" : text;
}

ordered_json ReferencesJson(Build& build, const Project& project) {
  auto list = ordered_json::array();
  for (const auto& reference : AllReferences(project)) {
    ordered_json entry = {{"index", list.size() + 1}};
    if (reference->IsExternal()) {
      entry["kind"] = reference->GUID().empty() ? "row" : reference->IsUserControl() ? "control" : "library";
      entry["guid"] = reference->GUID();
      entry["version"] = reference->BinaryVersion();
      entry["description"] = reference->Description();
      entry["path"] = reference->Path();
      entry["row"] = reference->ReferenceString();
    } else {
      entry["kind"] = "project";
      entry["id"] = reference->ReferencedProject();
      entry["project"] = NameOfProject(build, reference->ReferencedProject());
    }
    list.push_back(std::move(entry));
  }
  return list;
}

}  // namespace hearthmake::host
