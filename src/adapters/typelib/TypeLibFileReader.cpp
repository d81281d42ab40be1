#include "adapters/typelib/TypeLibFileReader.hpp"

#include <charconv>
#include <utility>

#include "adapters/typelib/ByteView.hpp"
#include "adapters/typelib/PagedFile.hpp"
#include "adapters/typelib/PeImage.hpp"
#include "automation/Error.hpp"

namespace hearthmake::typelib {

namespace {

// Where the backslash before a resource number stands and the number; nothing when the path has none.
struct ResourceSuffix {
  std::size_t backslash = 0;
  std::uint32_t number = 0;
};

std::optional<ResourceSuffix> FindResourceSuffix(std::string_view path) {
  const std::size_t backslash = path.rfind('\\');
  if (backslash == std::string_view::npos || backslash + 1 == path.size()) return std::nullopt;
  ResourceSuffix suffix{backslash, 0};
  const char* const end = path.data() + path.size();
  const auto parsed = std::from_chars(path.data() + backslash + 1, end, suffix.number);
  if (parsed.ec != std::errc() || parsed.ptr != end) return std::nullopt;
  return suffix;
}

// The file system's errors keep number and text; the source is the part that the caller asked.
template <typename Action>
auto AsTypeLibReader(const Action& action) {
  try {
    return action();
  } catch (const automation::Error& error) {
    automation::Raise(error.Number(), "TypeLibReader", error.Description());
  }
}

std::unique_ptr<TypeLib> Recognize(const ByteView& file, std::optional<std::uint32_t> resource) {
  if (file.Size() == 0) file.Fail("is empty");
  if (auto library = TypeLib::Recognize(file)) return library;
  if (!PeImage::Recognize(file)) file.Fail("is neither a type library nor an image that could hold one");
  auto library = TypeLib::Recognize(PeImage(file).TypeLibrary(resource));
  if (!library) file.Fail("is damaged: what its resources give as a type library is none");
  return library;
}

}  // namespace

TypeLibFileReader::TypeLibFileReader(std::shared_ptr<platform::FileSystem> files)
    : m_files(std::move(files)) {}

platform::TypeLibInfo TypeLibFileReader::Read(std::string_view path) {
  // While the file without the number is unchanged, the path with the number can't have become a file.
  const InfoCache::Entry* known = m_cache.Find(path);
  if (known != nullptr && m_files->Stamp(known->file) == known->stamp) return known->info;

  // The stamp is taken before the file is read: a change in between makes the entry stale, never wrong.
  const Place place = Find(path);
  platform::TypeLibInfo info;
  Load(place, [&](const TypeLib& library) { info = library.Info(); });
  m_cache.Put(path, {place.file, place.stamp, info});
  return info;
}

std::vector<platform::TypeDescription> TypeLibFileReader::ReadTypes(std::string_view path) {
  std::vector<platform::TypeDescription> types;
  const Place place = Find(path);
  platform::TypeLibInfo info;
  Load(place, [&](const TypeLib& library) {
    types = library.Types();
    info = library.Info();
  });
  m_cache.Put(path, {place.file, place.stamp, std::move(info)});
  return types;
}

TypeLibFileReader::Place TypeLibFileReader::Find(std::string_view path) {
  Place whole{std::string(path), std::nullopt, m_files->Stamp(path)};
  const std::optional<ResourceSuffix> suffix = FindResourceSuffix(path);
  if (whole.stamp.size >= 0 || !suffix) return whole;
  const std::string_view file = path.substr(0, suffix->backslash);
  const platform::FileStamp stamp = m_files->Stamp(file);
  // When neither is a file, the error had better name the path as it was given.
  if (stamp.size < 0) return whole;
  return {std::string(file), suffix->number, stamp};
}

void TypeLibFileReader::Load(const Place& place, const std::function<void(const TypeLib&)>& use) {
  AsTypeLibReader([&] {
    const auto file = m_files->Open(place.file);
    PagedFile pages(*file, place.file);
    use(*Recognize(ByteView(pages), place.resource));
  });
}

}  // namespace hearthmake::typelib
