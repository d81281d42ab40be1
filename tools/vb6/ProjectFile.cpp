#include "vb6/ProjectFile.hpp"

#include <algorithm>
#include <array>
#include <utility>

#include "automation/Error.hpp"
#include "automation/Utf.hpp"
#include "vb6/Text.hpp"

namespace hearthmake::vb6 {
namespace {

constexpr unsigned kHighestRevision = 9999;

struct ComponentKey {
  std::string_view key;
  ComponentKind kind;
  bool named;  // the row is "name; file"
};

constexpr std::array<ComponentKey, 6> kComponentKeys = {{
    {"Class", ComponentKind::Class, true},
    {"Module", ComponentKind::Module, true},
    {"Form", ComponentKind::Form, false},
    {"UserControl", ComponentKind::UserControl, false},
    {"PropertyPage", ComponentKind::PropertyPage, false},
    {"Designer", ComponentKind::Designer, false},
}};

[[noreturn]] void FailAtLine(unsigned line, const std::string& problem) {
  automation::Raise(automation::kInvalidValue, "vb6", "line " + std::to_string(line) + ": " + problem);
}

ProjectKind KindOf(std::string_view type) {
  constexpr std::array<std::pair<std::string_view, ProjectKind>, 4> kKinds = {{
      {"Exe", ProjectKind::StandardExe},
      {"OleExe", ProjectKind::ActiveXExe},
      {"OleDll", ProjectKind::ActiveXDll},
      {"Control", ProjectKind::UserControl},
  }};
  for (const auto& [name, kind] : kKinds) {
    if (EqualNoCase(type, name)) return kind;
  }
  automation::Raise(
      automation::kInvalidValue, "vb6",
      type.empty() ? "not a project file: it has no Type row" : "unknown Type '" + std::string(type) + "'");
}

// Takes one row off the front of the text, without its line end.
std::string_view TakeRow(std::string_view& text) {
  const std::size_t end = text.find('\n');
  std::string_view row = text.substr(0, end);
  text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  if (row.ends_with('\r')) row.remove_suffix(1);
  return row;
}

}  // namespace

ProjectFile ProjectFile::Parse(std::string_view bytes) {
  const std::string decoded = automation::Windows1252ToUtf8(bytes);
  std::string_view text = decoded;
  ProjectFile project;
  for (unsigned line = 1; !text.empty(); ++line) {
    const std::string_view row = Trim(TakeRow(text));
    if (row.starts_with('[')) break;  // data of other tools
    if (!row.empty()) project.AddRow(row, line);
  }
  project.m_kind = KindOf(project.Value("Type"));
  return project;
}

void ProjectFile::AddRow(std::string_view row, unsigned line) {
  const std::size_t equals = row.find('=');
  if (equals == std::string_view::npos) return;  // the development environment passes such rows over too
  const std::string_view key = Trim(row.substr(0, equals));
  const std::string_view value = Trim(row.substr(equals + 1));
  if (EqualNoCase(key, "Reference")) return AddReference(value, line);
  if (EqualNoCase(key, "Object")) return AddControl(value, line);
  if (AddComponent(key, value, line)) return;
  m_settings.push_back({std::string(key), std::string(Unquote(value))});
}

void ProjectFile::AddReference(std::string_view value, unsigned line) {
  if (StartsWithNoCase(value, "*\\A")) {
    m_references.push_back({ReferenceKind::Project, {}, {}, std::string(value.substr(3)), {}});
    return;
  }
  const auto fields = Split(value, '#');
  if (!StartsWithNoCase(value, "*\\G") || fields.size() < 4) {
    FailAtLine(line, "invalid Reference row '" + std::string(value) + "'");
  }
  // A description may hold the separator itself.
  const std::size_t description =
      static_cast<std::size_t>(fields[3].data() - value.data()) + fields[3].size();
  m_references.push_back({ReferenceKind::TypeLibrary, std::string(fields[0].substr(3)),
                          std::string(fields[1]), std::string(fields[3]),
                          std::string(description < value.size() ? value.substr(description + 1) : "")});
}

void ProjectFile::AddControl(std::string_view value, unsigned line) {
  if (StartsWithNoCase(value, "*\\A")) {
    m_references.push_back({ReferenceKind::Project, {}, {}, std::string(value.substr(3)), {}});
    return;
  }
  const auto fields = Split(Unquote(value), '#');
  const std::size_t separator = value.rfind(';');
  if (fields.size() < 3 || separator == std::string_view::npos) {
    FailAtLine(line, "invalid Object row '" + std::string(value) + "'");
  }
  m_references.push_back({ReferenceKind::Control,
                          std::string(fields[0]),
                          std::string(fields[1]),
                          std::string(Trim(value.substr(separator + 1))),
                          {}});
}

bool ProjectFile::AddComponent(std::string_view key, std::string_view value, unsigned line) {
  const auto known = std::find_if(kComponentKeys.begin(), kComponentKeys.end(),
                                  [&](const ComponentKey& k) { return EqualNoCase(k.key, key); });
  if (known == kComponentKeys.end()) return false;
  Component component{known->kind, {}, std::string(Unquote(value))};
  if (const std::size_t separator = value.find(';'); known->named && separator != std::string_view::npos) {
    component.name = Trim(value.substr(0, separator));
    component.file = Trim(value.substr(separator + 1));
  }
  if (component.file.empty()) FailAtLine(line, std::string(key) + " row without a file");
  m_components.push_back(std::move(component));
  return true;
}

std::string_view ProjectFile::Value(std::string_view key) const {
  const auto found = std::find_if(m_settings.rbegin(), m_settings.rend(),
                                  [&](const Setting& s) { return EqualNoCase(s.key, key); });
  return found == m_settings.rend() ? std::string_view() : std::string_view(found->value);
}

unsigned ProjectFile::Number(std::string_view key, unsigned defaultValue) const {
  return ParseNumber(Value(key)).value_or(defaultValue);
}

std::string_view ProjectFile::Extension() const {
  switch (m_kind) {
    case ProjectKind::ActiveXDll: return "dll";
    case ProjectKind::UserControl: return "ocx";
    case ProjectKind::StandardExe:
    case ProjectKind::ActiveXExe: break;
  }
  return "exe";
}

std::string ProjectFile::WithNextRevision(std::string_view bytes) {
  constexpr std::string_view kRevision = "RevisionVer=";
  bool counting = false;
  std::string_view revision;
  for (std::string_view text = bytes; !text.empty();) {
    const std::string_view row = Trim(TakeRow(text));
    if (row.starts_with('[')) break;
    if (EqualNoCase(row, "AutoIncrementVer=1")) counting = true;
    if (StartsWithNoCase(row, kRevision)) revision = row.substr(kRevision.size());
  }
  std::string result(bytes);
  const auto number = ParseNumber(revision);
  if (counting && number && *number < kHighestRevision) {
    result.replace(static_cast<std::size_t>(revision.data() - bytes.data()), revision.size(),
                   std::to_string(*number + 1));
  }
  return result;
}

}  // namespace hearthmake::vb6
