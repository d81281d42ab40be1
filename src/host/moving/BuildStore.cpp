#include "host/moving/BuildStore.hpp"

#include <fmt/format.h>

#include <map>
#include <memory>
#include <type_traits>

namespace hearthmake::host {

namespace {

using platform::Database;
using platform::Recordset;
using Places = std::map<std::int32_t, std::size_t>;  // of ids, counted from 1

std::unique_ptr<Recordset> Select(Database& database, const std::string& table, const std::string& key,
                                  std::int32_t id) {
  return database.OpenRecordset(fmt::format("SELECT * FROM {} WHERE {} = {}", table, key, id),
                                platform::RecordsetType::Dynaset);
}

// One without rows, to add some.
std::unique_ptr<Recordset> ForAdding(Database& database, const std::string& table) {
  return database.OpenRecordset(fmt::format("SELECT * FROM {} WHERE 1 = 0", table),
                                platform::RecordsetType::Dynaset);
}

StoredValue ReadValue(const Recordset& rows, const DocumentColumn& column) {
  if (column.type == ValueType::YesNo) return rows.GetBoolean(column.name);
  if (rows.IsNull(column.name)) return {};
  switch (column.type) {
    case ValueType::Long: return rows.GetLong(column.name);
    case ValueType::Date: return rows.GetDate(column.name);
    default: return rows.GetText(column.name);
  }
}

StoredRow ReadRow(const Recordset& rows, const std::string& table, bool withPasswords) {
  StoredRow row;
  for (const DocumentColumn& column : DocumentColumns(table)) {
    const bool isHidden = column.name == "Password" && !withPasswords;
    row.push_back(isHidden ? StoredValue() : ReadValue(rows, column));
  }
  return row;
}

std::vector<StoredRow> ReadRows(Database& database, const std::string& table, const std::string& key,
                                std::int32_t id, bool withPasswords, Places* places = nullptr) {
  std::vector<StoredRow> list;
  for (const auto rows = Select(database, table, key, id); !rows->AtEnd(); rows->MoveNext()) {
    list.push_back(ReadRow(*rows, table, withPasswords));
    if (places != nullptr) places->emplace(rows->GetLong("Id"), list.size());
  }
  return list;
}

std::string Named(const StoredRow& project) {
  const std::string name = NameOf("Project", project);
  return name.empty() ? "A project without a name" : "The project " + name;
}

void ReadProjects(Database& database, std::int32_t idBuild, const Places& packages, BuildDocument& document,
                  std::vector<std::string>& notes) {
  Places places;
  std::vector<std::int32_t> ids;
  for (const auto rows = Select(database, "Project", "idBuild", idBuild); !rows->AtEnd(); rows->MoveNext()) {
    StoredProject project{ReadRow(*rows, "Project", true), {}, {}, {}};
    if (!rows->IsNull("MTSPackage")) {
      const std::int32_t id = rows->GetLong("MTSPackage");
      const auto found = packages.find(id);
      project.package = found == packages.end() ? 0 : found->second;
      if (id != 0 && found == packages.end()) {
        notes.push_back(fmt::format("{} is in a package that is gone.", Named(project.row)));
      }
    }
    ids.push_back(rows->GetLong("Id"));
    document.projects.push_back(std::move(project));
    places.emplace(ids.back(), ids.size());
  }
  for (std::size_t i = 0; i < ids.size(); ++i) {
    StoredProject& project = document.projects[i];
    for (const auto rows = Select(database, "References", "idReferencing", ids[i]); !rows->AtEnd();
         rows->MoveNext()) {
      const auto found = places.find(rows->GetLong("idReferenced"));
      if (found == places.end()) {
        notes.push_back(fmt::format("{} references a project that is not in the build.", Named(project.row)));
      } else {
        project.references.push_back(found->second);
      }
    }
    project.externalReferences = ReadRows(database, "ExternalReferences", "ProjectID", ids[i], true);
  }
}

void WriteValue(Recordset& rows, const std::string& column, const StoredValue& value) {
  std::visit(
      [&](const auto& item) {
        using Item = std::decay_t<decltype(item)>;
        if constexpr (std::is_same_v<Item, std::monostate>) rows.SetNull(column);
        if constexpr (std::is_same_v<Item, bool>) rows.SetBoolean(column, item);
        if constexpr (std::is_same_v<Item, std::int32_t>) rows.SetLong(column, item);
        if constexpr (std::is_same_v<Item, double>) rows.SetDate(column, item);
        if constexpr (std::is_same_v<Item, std::string>) rows.SetText(column, item);
      },
      value);
}

void WriteRow(Recordset& rows, const std::string& table, const StoredRow& row) {
  const auto columns = DocumentColumns(table);
  for (std::size_t i = 0; i < columns.size(); ++i) WriteValue(rows, columns[i].name, row.at(i));
}

// Gives the ids of tables that have one.
std::vector<std::int32_t> AddRows(Database& database, const std::string& table, const std::string& key,
                                  std::int32_t owner, const std::vector<StoredRow>& list, bool hasId) {
  std::vector<std::int32_t> ids;
  const auto rows = ForAdding(database, table);
  for (const StoredRow& row : list) {
    rows->AddNew();
    rows->SetLong(key, owner);
    WriteRow(*rows, table, row);
    if (hasId) ids.push_back(rows->GetLong("Id"));
    rows->Update();
  }
  return ids;
}

void RemoveRowsOf(Database& database, std::int32_t idBuild) {
  std::vector<std::int32_t> projects;
  for (const auto rows = Select(database, "Project", "idBuild", idBuild); !rows->AtEnd(); rows->MoveNext()) {
    projects.push_back(rows->GetLong("Id"));
  }
  for (const std::int32_t id : projects) {
    database.Execute(fmt::format("DELETE FROM ExternalReferences WHERE ProjectID = {}", id));
    database.Execute(fmt::format("DELETE FROM References WHERE idReferencing = {}", id));
    database.Execute(fmt::format("DELETE FROM References WHERE idReferenced = {}", id));
  }
  for (const char* table : {"Project", "SSProjects", "MTSPackages"}) {
    database.Execute(fmt::format("DELETE FROM {} WHERE idBuild = {}", table, idBuild));
  }
  database.Execute(fmt::format("DELETE FROM Scripts WHERE BuildID = {}", idBuild));
}

std::int32_t StoreBuildRow(Database& database, const StoredRow& build,
                           std::optional<std::int32_t> replacedId) {
  const auto rows = replacedId ? Select(database, "Build", "Id", *replacedId) : ForAdding(database, "Build");
  if (replacedId) {
    rows->Edit();
  } else {
    rows->AddNew();
  }
  WriteRow(*rows, "Build", build);
  const std::int32_t id = rows->GetLong("Id");
  rows->Update();
  return id;
}

void StoreProjects(Database& database, std::int32_t idBuild, const std::vector<StoredProject>& projects,
                   const std::vector<std::int32_t>& packages) {
  std::vector<std::int32_t> ids;
  const auto rows = ForAdding(database, "Project");
  for (const StoredProject& project : projects) {
    rows->AddNew();
    rows->SetLong("idBuild", idBuild);
    WriteRow(*rows, "Project", project.row);
    if (project.package) {
      rows->SetLong("MTSPackage", *project.package == 0 ? 0 : packages.at(*project.package - 1));
    }
    ids.push_back(rows->GetLong("Id"));
    rows->Update();
  }
  const auto references = ForAdding(database, "References");
  for (std::size_t i = 0; i < projects.size(); ++i) {
    for (const std::size_t place : projects[i].references) {
      references->AddNew();
      references->SetLong("idReferencing", ids[i]);
      references->SetLong("idReferenced", ids.at(place - 1));
      references->Update();
    }
    AddRows(database, "ExternalReferences", "ProjectID", ids[i], projects[i].externalReferences, false);
  }
}

}  // namespace

BuildDocument LoadDocument(Database& database, std::int32_t idBuild, bool withPasswords,
                           std::vector<std::string>& notes) {
  BuildDocument document;
  document.hasPasswords = withPasswords;
  document.build = ReadRow(*Select(database, "Build", "Id", idBuild), "Build", true);
  const auto scripts = ReadRows(database, "Scripts", "BuildID", idBuild, true);
  if (!scripts.empty()) document.scripts = scripts.front();
  document.sourceProjects = ReadRows(database, "SSProjects", "idBuild", idBuild, withPasswords);
  Places packages;
  document.packages = ReadRows(database, "MTSPackages", "idBuild", idBuild, withPasswords, &packages);
  ReadProjects(database, idBuild, packages, document, notes);
  return document;
}

std::vector<std::pair<std::int32_t, std::string>> StoredBuilds(Database& database) {
  std::vector<std::pair<std::int32_t, std::string>> builds;
  const auto rows = database.OpenRecordset("SELECT * FROM Build", platform::RecordsetType::Dynaset);
  for (; !rows->AtEnd(); rows->MoveNext()) builds.emplace_back(rows->GetLong("Id"), rows->GetText("Name"));
  return builds;
}

std::int32_t StoreDocument(Database& database, const BuildDocument& document,
                           std::optional<std::int32_t> replacedId) {
  if (replacedId) RemoveRowsOf(database, *replacedId);
  const std::int32_t id = StoreBuildRow(database, document.build, replacedId);
  if (document.scripts) AddRows(database, "Scripts", "BuildID", id, {*document.scripts}, false);
  AddRows(database, "SSProjects", "idBuild", id, document.sourceProjects, true);
  const auto packages = AddRows(database, "MTSPackages", "idBuild", id, document.packages, true);
  StoreProjects(database, id, document.projects, packages);
  return id;
}

}  // namespace hearthmake::host
