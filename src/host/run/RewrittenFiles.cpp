#include "host/run/RewrittenFiles.hpp"

#include <fmt/format.h>

#include <charconv>
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

// Takes a text apart from its front.
class Front {
 public:
  explicit Front(std::string_view text) : m_rest(text) {}

  bool Skip(std::string_view text) {
    if (!m_rest.starts_with(text)) return false;
    m_rest.remove_prefix(text.size());
    return true;
  }
  template <class Number>
  bool Take(Number& number) {
    const auto [end, error] = std::from_chars(m_rest.data(), m_rest.data() + m_rest.size(), number);
    if (error != std::errc()) return false;
    m_rest.remove_prefix(static_cast<std::size_t>(end - m_rest.data()));
    return true;
  }
  bool IsAtEnd() const { return m_rest.empty(); }

 private:
  std::string_view m_rest;
};

}  // namespace

std::string RewrittenFiles::FileName(std::int32_t idBuild) { return fmt::format("stamps-{}.json", idBuild); }

RewrittenFiles::RewrittenFiles(platform::FileSystem& files, std::string path)
    : m_files(files), m_path(std::move(path)) {
  Read();
}

void RewrittenFiles::Read() {
  const std::int64_t size = m_files.Stamp(m_path).size;
  if (size <= 0 || size > kLargest) return;
  try {
    const std::string text = m_files.Read(m_path);
    if (ReadPlain(text)) return;
    m_stamps.clear();
    ReadJson(text);
  } catch (const automation::Error&) {
    return;  // can't be read: then nothing is known
  }
}

// The way Save writes it, which each run reads before its first compile; a general reader takes far longer.
bool RewrittenFiles::ReadPlain(std::string_view text) {
  Front front(text);
  if (!front.Skip("[")) return false;
  do {
    std::int32_t id = 0;
    Stamps stamps;
    const bool isRow = front.Skip("[") && front.Take(id) && front.Skip(",") &&
                       front.Take(stamps.projectFile) && front.Skip(",") && front.Take(stamps.binary) &&
                       front.Skip("]");
    if (!isRow) return false;
    m_stamps.insert_or_assign(m_stamps.end(), id, stamps);
  } while (front.Skip(","));
  return front.Skip("]\n") && front.IsAtEnd();
}

void RewrittenFiles::ReadJson(std::string_view text) {
  const json rows = json::parse(text, nullptr, false);
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
