#include "host/moving/BuildJson.hpp"

#include <fmt/format.h>

#include <bit>
#include <cmath>
#include <cstdio>
#include <limits>
#include <nlohmann/json.hpp>
#include <set>
#include <type_traits>
#include <utility>

#include "adapters/catalog/JsonLine.hpp"
#include "adapters/catalog/JsonNode.hpp"
#include "automation/OleDate.hpp"
#include "automation/Text.hpp"
#include "automation/Utf.hpp"
#include "host/HostError.hpp"

namespace hearthmake::host {

namespace {

using catalog::JsonMisfit;
using catalog::JsonNode;
using nlohmann::ordered_json;

constexpr const char* kFormat = "hearthmake build";
constexpr std::int64_t kVersion = 1;
// The document's own depth is 6.
constexpr std::size_t kDeepest = 32;

// ---- Printing

std::vector<std::string> Split(std::string_view text, std::string_view lineEnd) {
  std::vector<std::string> lines;
  std::size_t begin = 0;
  for (std::size_t end; (end = text.find(lineEnd, begin)) != std::string_view::npos;
       begin = end + lineEnd.size()) {
    lines.emplace_back(text.substr(begin, end - begin));
  }
  lines.emplace_back(text.substr(begin));
  return lines;
}

std::string Join(const std::vector<std::string>& lines, std::string_view lineEnd) {
  std::string text;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (i > 0) text += lineEnd;
    text += lines[i];
  }
  return text;
}

bool HasLineEnds(const std::vector<std::string>& lines) {
  for (const std::string& line : lines) {
    if (line.find_first_of("\r\n") != std::string::npos) return true;
  }
  return false;
}

// A text of one line, or with ends of both kinds, is a string; lines are a list, which end in CR LF unless it
// says so.
ordered_json TextJson(const std::string& text) {
  if (text.find_first_of("\r\n") == std::string::npos) return text;
  if (const auto lines = Split(text, "\r\n"); lines.size() > 1 && !HasLineEnds(lines)) return lines;
  if (const auto lines = Split(text, "\n"); lines.size() > 1 && !HasLineEnds(lines)) {
    return {{"lineEnd", "\n"}, {"lines", lines}};
  }
  return text;
}

bool IsSameNumber(double a, double b) {
  return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

// A date in words where they say all of it.
ordered_json DateJson(double date) {
  if (IsSameNumber(automation::JoinDate(automation::SplitDate(date)), date)) {
    return automation::FormatIsoDate(date);
  }
  return date;
}

ordered_json ValueJson(const StoredValue& value) {
  return std::visit(
      [](const auto& item) -> ordered_json {
        using Item = std::decay_t<decltype(item)>;
        if constexpr (std::is_same_v<Item, std::monostate>) return nullptr;
        if constexpr (std::is_same_v<Item, std::string>) return TextJson(item);
        if constexpr (std::is_same_v<Item, double>) return DateJson(item);
        if constexpr (std::is_same_v<Item, bool> || std::is_same_v<Item, std::int32_t>) return item;
      },
      value);
}

bool IsUtf8(std::string_view text) {
  while (!text.empty()) {
    const std::size_t length = automation::Utf8SequenceLength(text);
    if (length == 1 && static_cast<unsigned char>(text.front()) >= 0x80) return false;
    text.remove_prefix(length);
  }
  return true;
}

void RequirePrintable(const std::string& table, const std::string& column, const StoredValue& value) {
  const auto* text = std::get_if<std::string>(&value);
  const auto* date = std::get_if<double>(&value);
  const bool isPrintable = (text == nullptr || IsUtf8(*text)) && (date == nullptr || std::isfinite(*date));
  if (isPrintable) return;
  throw HostError(
      fmt::format("The build can't be exported: a value of the column {}.{} is damaged.", table, column),
      "Set it anew first.");
}

ordered_json RowJson(const std::string& table, const StoredRow& row, bool withPasswords) {
  auto json = ordered_json::object();
  const auto columns = DocumentColumns(table);
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (columns[i].name == "Password" && !withPasswords) continue;
    RequirePrintable(table, columns[i].name, row.at(i));
    json[columns[i].name] = ValueJson(row.at(i));
  }
  return json;
}

ordered_json RowsJson(const std::string& table, const std::vector<StoredRow>& rows, bool withPasswords) {
  auto list = ordered_json::array();
  for (const StoredRow& row : rows) list.push_back(RowJson(table, row, withPasswords));
  return list;
}

// A row that another one refers to, by its name where that is its own, else by its place.
ordered_json LinkJson(std::size_t place, const std::vector<std::string>& names) {
  if (place == 0 || names.at(place - 1).empty()) return place;
  return names.at(place - 1);
}

std::vector<StoredRow> RowsOf(const std::vector<StoredProject>& projects) {
  std::vector<StoredRow> rows;
  for (const StoredProject& project : projects) rows.push_back(project.row);
  return rows;
}

ordered_json ProjectsJson(const BuildDocument& document) {
  const auto projects = UniqueNames("Project", RowsOf(document.projects));
  const auto packages = UniqueNames("MTSPackages", document.packages);
  auto list = ordered_json::array();
  for (const StoredProject& project : document.projects) {
    ordered_json json = RowJson("Project", project.row, true);
    json["package"] = project.package ? LinkJson(*project.package, packages) : ordered_json(nullptr);
    auto references = ordered_json::array();
    for (const std::size_t place : project.references) references.push_back(LinkJson(place, projects));
    json["references"] = std::move(references);
    json["externalReferences"] = RowsJson("ExternalReferences", project.externalReferences, true);
    list.push_back(std::move(json));
  }
  return list;
}

// ---- Parsing

// Refuses the members that are not among these.
void RequireOnly(const JsonNode& node, const std::set<std::string>& names) {
  for (const auto& [name, value] : node.RequireObject().Json().items()) {
    if (!names.contains(name)) node.Member(name).Refuse("\"" + name + "\" is not known here");
  }
}

std::int64_t ReadWhole(const JsonNode& node, std::int64_t least, std::int64_t most) {
  const auto number = node.Whole(least, most);
  if (!number) node.Refuse(fmt::format("a whole number from {} to {} is expected", least, most));
  return *number;
}

std::string ReadText(const JsonNode& node) {
  const bool hasLines = node.Json().is_object();
  if (!hasLines && !node.Json().is_array()) return node.Text();
  std::string lineEnd = "\r\n";
  if (hasLines) {
    RequireOnly(node, {"lineEnd", "lines"});
    lineEnd = node.Member("lineEnd").Text();
    if (lineEnd != "\n" && lineEnd != "\r\n") node.Member("lineEnd").Refuse("this is no line end");
  }
  std::vector<std::string> lines;
  for (const JsonNode& line : (hasLines ? node.Member("lines") : node).Items()) lines.push_back(line.Text());
  return Join(lines, lineEnd);
}

double ReadDate(const JsonNode& node) {
  if (node.Json().is_number()) return node.Json().get<double>();
  const std::string text = node.Text();
  automation::DateParts parts;
  char end = 0;
  const int found = std::sscanf(text.c_str(), "%4d-%2d-%2d %2d:%2d:%2d%c", &parts.year, &parts.month,
                                &parts.day, &parts.hour, &parts.minute, &parts.second, &end);
  const bool areParts = found == 6 && parts.month >= 1 && parts.month <= 12 && parts.day >= 1 &&
                        parts.day <= 31 && parts.year >= 100 && parts.hour >= 0 && parts.minute >= 0 &&
                        parts.second >= 0 && parts.hour < 24 && parts.minute < 60 && parts.second < 60;
  const double date = areParts ? automation::JoinDate(parts) : 0;
  if (!areParts || automation::FormatIsoDate(date) != text)
    node.Refuse("a date (2001-03-24 13:05:00) is expected");
  return date;
}

StoredValue ReadValue(const JsonNode& node, ValueType type) {
  if (node.IsNull() && type != ValueType::YesNo) return {};
  switch (type) {
    case ValueType::YesNo: return node.YesNo();
    case ValueType::Long:
      return static_cast<std::int32_t>(ReadWhole(node, std::numeric_limits<std::int32_t>::min(),
                                                 std::numeric_limits<std::int32_t>::max()));
    case ValueType::Date: return ReadDate(node);
    case ValueType::Text: break;
  }
  return ReadText(node);
}

// Columns that are left out get their defaults.
StoredRow ReadRow(const JsonNode& node, const std::string& table, std::set<std::string> others = {}) {
  StoredRow row;
  for (const DocumentColumn& column : DocumentColumns(table)) {
    const StoredValue standard = column.type == ValueType::YesNo ? StoredValue(false) : StoredValue();
    row.push_back(node.Has(column.name) ? ReadValue(node.Member(column.name), column.type) : standard);
    others.insert(column.name);
  }
  RequireOnly(node, others);
  return row;
}

std::vector<StoredRow> ReadRows(const JsonNode& node, const std::string& table) {
  std::vector<StoredRow> rows;
  for (const JsonNode& item : node.Items()) rows.push_back(ReadRow(item, table));
  return rows;
}

std::size_t ReadLink(const JsonNode& node, const std::vector<std::string>& names, const char* what) {
  if (!node.Json().is_string()) {
    const auto least = std::string_view(what) == "package" ? 0 : 1;
    return static_cast<std::size_t>(ReadWhole(node, least, static_cast<std::int64_t>(names.size())));
  }
  const std::string name = automation::Lower(node.Text());
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (!names[i].empty() && automation::Lower(names[i]) == name) return i + 1;
  }
  node.Refuse(fmt::format("there is no single {} of the name \"{}\"", what, node.Text()));
}

std::vector<StoredProject> ReadProjects(const JsonNode& node, const std::vector<StoredRow>& packages) {
  std::vector<StoredProject> projects;
  const std::vector<JsonNode> items = node.Items();
  for (const JsonNode& item : items) {
    projects.push_back(
        {ReadRow(item, "Project", {"package", "references", "externalReferences"}), {}, {}, {}});
  }
  const auto names = UniqueNames("Project", RowsOf(projects));
  const auto packageNames = UniqueNames("MTSPackages", packages);
  for (std::size_t i = 0; i < items.size(); ++i) {
    const JsonNode package = items[i].Member("package");
    if (!package.IsNull()) projects[i].package = ReadLink(package, packageNames, "package");
    for (const JsonNode& link : items[i].Member("references").Items()) {
      projects[i].references.push_back(ReadLink(link, names, "project"));
    }
    projects[i].externalReferences = ReadRows(items[i].Member("externalReferences"), "ExternalReferences");
  }
  return projects;
}

BuildDocument ReadDocument(const JsonNode& root) {
  const bool isOurs =
      root.Json().is_object() && root.Has("format") && root.Member("format").Json() == kFormat;
  if (!isOurs) root.Refuse("this is no exported build");
  if (const JsonNode version = root.Member("version"); version.Json() != kVersion) {
    version.Refuse("a newer hearthmake has written this build");
  }
  RequireOnly(
      root, {"format", "version", "passwords", "build", "scripts", "sourceProjects", "packages", "projects"});
  BuildDocument document;
  document.hasPasswords = root.Member("passwords").YesNo();
  document.build = ReadRow(root.Member("build"), "Build");
  if (const JsonNode scripts = root.Member("scripts"); !scripts.IsNull())
    document.scripts = ReadRow(scripts, "Scripts");
  document.sourceProjects = ReadRows(root.Member("sourceProjects"), "SSProjects");
  document.packages = ReadRows(root.Member("packages"), "MTSPackages");
  document.projects = ReadProjects(root.Member("projects"), document.packages);
  return document;
}

[[noreturn]] void Refuse(std::size_t line, const std::string& what) {
  throw HostError(fmt::format("line {}: {}.", line, what));
}

// Of two members of one name the parser would keep one without a word.
ordered_json ParseJson(std::string_view text) {
  std::vector<std::set<std::string>> open;
  std::string twice;
  const auto watch = [&](int /*depth*/, ordered_json::parse_event_t event, ordered_json& parsed) {
    if (event == ordered_json::parse_event_t::object_start) open.emplace_back();
    if (event == ordered_json::parse_event_t::object_end) open.pop_back();
    if (event == ordered_json::parse_event_t::key && twice.empty() &&
        !open.back().insert(parsed.get<std::string>()).second) {
      twice = parsed.get<std::string>();
    }
    return true;
  };
  ordered_json json = ordered_json::parse(text, watch);
  if (!twice.empty()) throw JsonMisfit{"", "\"" + twice + "\" stands twice in one object"};
  return json;
}

}  // namespace

std::string PrintBuild(const BuildDocument& document) {
  const bool withPasswords = document.hasPasswords;
  const ordered_json json = {
      {"format", kFormat},
      {"version", kVersion},
      {"passwords", withPasswords},
      {"build", RowJson("Build", document.build, true)},
      {"scripts", document.scripts ? RowJson("Scripts", *document.scripts, true) : ordered_json(nullptr)},
      {"sourceProjects", RowsJson("SSProjects", document.sourceProjects, withPasswords)},
      {"packages", RowsJson("MTSPackages", document.packages, withPasswords)},
      {"projects", ProjectsJson(document)}};
  return json.dump(2) + "\n";
}

BuildDocument ParseBuild(std::string_view text) {
  if (const std::size_t byte = catalog::ByteTooDeep(text, kDeepest); byte != 0) {
    Refuse(catalog::LineAt(text, byte), "this is nested deeper than any build");
  }
  try {
    const ordered_json root = ParseJson(text);
    return ReadDocument(JsonNode(root));
  } catch (const ordered_json::parse_error&) {
    Refuse(catalog::LineOfDamage(text), "this is damaged, cut off or no JSON");
  } catch (const ordered_json::out_of_range&) {
    Refuse(catalog::LineOfDamage(text), "the number is too large");
  } catch (const JsonMisfit& misfit) {
    Refuse(catalog::LineOfPlace(text, misfit.place), misfit.what);
  }
}

}  // namespace hearthmake::host
