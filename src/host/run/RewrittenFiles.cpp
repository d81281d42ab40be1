#include "host/run/RewrittenFiles.hpp"

#include <fmt/format.h>

#include <utility>

#include "automation/Error.hpp"
#include "host/text/Json.hpp"
#include "project/Project.hpp"

namespace hearthmake::host {

namespace {

using nlohmann::json;

// Some bytes for each project; a file beyond this is none of ours.
constexpr std::int64_t kLargest = std::int64_t{64} * 1024 * 1024;

bool IsNumber(const json& value) { return value.is_number_integer(); }

}  // namespace

std::string RewrittenFiles::FileName(std::int32_t idBuild) { return fmt::format("stamps-{}.json", idBuild); }

RewrittenFiles::RewrittenFiles(platform::FileSystem& files, std::string path)
    : m_files(files), m_path(std::move(path)) {
  Read();
}

void RewrittenFiles::Read() {
  const std::int64_t size = m_files.Stamp(m_path).size;
  if (size <= 0 || size > kLargest) return;
  json rows;
  try {
    rows = json::parse(m_files.Read(m_path), nullptr, false);
  } catch (const automation::Error&) {
    return;  // can't be read: then nothing is known
  }
  if (!rows.is_array()) return;
  for (const json& row : rows) {
    if (!row.is_array() || row.size() != 3) continue;
    if (!IsNumber(row[0]) || !IsNumber(row[1]) || !IsNumber(row[2])) continue;
    m_stamps[row[0].get<std::int32_t>()] = {row[1].get<std::int64_t>(), row[2].get<std::int64_t>()};
  }
}

bool RewrittenFiles::IsAsCompiled(std::int32_t idProject, const platform::FileStamp& projectFile,
                                  const platform::FileStamp& binary) const {
  const auto known = m_stamps.find(idProject);
  return known != m_stamps.end() && known->second == Stamps{projectFile.modified, binary.modified};
}

void RewrittenFiles::ProjectCompiled(Project& objProject) {
  const platform::FileStamp projectFile = m_files.Stamp(objProject.ProjectPath());
  const platform::FileStamp binary = m_files.Stamp(objProject.FullPath32());
  if (projectFile.modified <= binary.modified) {
    m_isDirty |= m_stamps.erase(objProject.Id()) > 0;
    return;
  }
  const Stamps stamps{projectFile.modified, binary.modified};
  const auto [known, isNew] = m_stamps.try_emplace(objProject.Id(), stamps);
  if (!isNew && known->second == stamps) return;
  known->second = stamps;
  m_isDirty = true;
}

void RewrittenFiles::Save() {
  if (!m_isDirty) return;
  json rows = json::array();
  for (const auto& [id, stamps] : m_stamps) rows.push_back({id, stamps.projectFile, stamps.binary});
  try {
    m_files.Replace(m_path, rows.dump() + "\n");
    m_isDirty = false;
  } catch (const automation::Error&) {
    return;  // see the class
  }
}

}  // namespace hearthmake::host
