#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/typelib/InfoCache.hpp"
#include "adapters/typelib/TypeLib.hpp"
#include "platform/FileSystem.hpp"
#include "platform/TypeLibReader.hpp"

namespace hearthmake::typelib {

// Reads type libraries through a FileSystem: MSFT and SLTG libraries, alone in a file or as a resource of
// a PE32 or PE32+ image. Of a large file only the bytes that matter are read.
//
// What was found of a library is remembered until the file's stamp changes, so that asking again costs one
// look at the stamp. A resource number behind a file that is a type library itself makes no difference, as
// with the loaders of Windows. Flags always have 8 (has disk image), as there.
class TypeLibFileReader final : public platform::TypeLibReader {
 public:
  static constexpr std::size_t kCacheCapacity = 65536;

  explicit TypeLibFileReader(std::shared_ptr<platform::FileSystem> files);

  platform::TypeLibInfo Read(std::string_view path) override;
  std::vector<platform::TypeDescription> ReadTypes(std::string_view path) override;

 private:
  // A path taken apart.
  struct Place {
    std::string file;
    std::optional<std::uint32_t> resource;
    platform::FileStamp stamp;
  };

  Place Find(std::string_view path);
  void Load(const Place& place, const std::function<void(const TypeLib&)>& use);

  std::shared_ptr<platform::FileSystem> m_files;
  InfoCache m_cache{kCacheCapacity};
};

}  // namespace hearthmake::typelib
