#include "host/builds/ProjectSources.hpp"

#include <algorithm>
#include <array>

#include "automation/Text.hpp"
#include "automation/Utf.hpp"
#include "foundation/Paths.hpp"

namespace hearthmake::host {

namespace {

// A row that names a file.
struct SourceKey {
  std::string_view key;
  bool isNamed = false;  // the row is "name; file"
  std::array<std::string_view, 2> companions{};
  bool mayBeMissing = false;
};

constexpr std::array<SourceKey, 9> kKeys = {{
    {"Class", true, {}},
    {"Module", true, {}},
    {"Form", false, {".frx"}},
    {"UserControl", false, {".ctx"}},
    {"PropertyPage", false, {".pgx"}},
    {"UserDocument", false, {".dox"}},
    {"Designer", false, {".dsx", ".dca"}},
    {"ResFile32", false, {}},
    {"RelatedDoc", false, {}, true},
}};

const SourceKey* FindKey(std::string_view text) {
  const auto found = std::find_if(kKeys.begin(), kKeys.end(), [text](const SourceKey& known) {
    return automation::EqualsIgnoreCaseAscii(known.key, text);
  });
  return found == kKeys.end() ? nullptr : &*found;
}

// Takes one row off the front of the text, without its line end.
std::string_view TakeRow(std::string_view& text) {
  const std::size_t end = std::min(text.find('\n'), text.size());
  std::string_view row = text.substr(0, end);
  text.remove_prefix(std::min(end + 1, text.size()));
  if (row.ends_with('\r')) row.remove_suffix(1);
  return row;
}

std::string_view Unquoted(std::string_view text) {
  const bool isQuoted = text.size() >= 2 && text.starts_with('"') && text.ends_with('"');
  return isQuoted ? text.substr(1, text.size() - 2) : text;
}

std::string_view FileOf(std::string_view value, const SourceKey& key) {
  if (key.isNamed) value.remove_prefix(std::min(value.find(';') + 1, value.size()));
  return automation::Trim(Unquoted(automation::Trim(value)));
}

std::string WithExtension(const std::string& path, std::string_view extension) {
  const std::size_t nameStart = path.size() - FileNamePart(path).size();
  return path.substr(0, nameStart).append(FileStem(path)).append(extension);
}

void AddSources(std::string_view row, std::string_view folder, std::vector<ProjectSource>& sources) {
  const std::size_t equals = row.find('=');
  if (equals == std::string_view::npos) return;
  const SourceKey* key = FindKey(automation::Trim(row.substr(0, equals)));
  if (key == nullptr) return;
  const std::string_view file = FileOf(row.substr(equals + 1), *key);
  if (file.empty()) return;
  const std::string path = AbsolutePath(folder, automation::Windows1252ToUtf8(file));
  sources.push_back({path, key->mayBeMissing});
  for (const std::string_view extension : key->companions) {
    if (!extension.empty()) sources.push_back({WithExtension(path, extension), true});
  }
}

}  // namespace

std::vector<ProjectSource> SourcesOf(std::string_view bytes, std::string_view folder) {
  std::vector<ProjectSource> sources;
  while (!bytes.empty()) {
    const std::string_view row = automation::Trim(TakeRow(bytes));
    if (row.starts_with('[')) break;
    AddSources(row, folder, sources);
  }
  return sources;
}

}  // namespace hearthmake::host
