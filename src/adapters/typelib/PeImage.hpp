#pragma once

#include <cstdint>
#include <optional>

#include "adapters/typelib/ByteView.hpp"

namespace hearthmake::typelib {

// A 32- or 64-bit Windows image (PE32, PE32+), as far as its type libraries go. Reads only headers, the
// section table and the way down the resource directory, however large the image is.
class PeImage {
 public:
  // Whether the file starts like an image of any age ("MZ").
  static bool Recognize(const ByteView& file);

  // Raises error 45, source "TypeLibReader", for images of other kinds (16-bit ones above all) and for
  // damaged headers.
  explicit PeImage(const ByteView& file);

  // The bytes of the type library with this resource number. Without a number: number 1, which is where
  // loaders look, or the first there is. Raises error 45, source "TypeLibReader", when the image holds no
  // such library or its resource directory is damaged.
  ByteView TypeLibrary(std::optional<std::uint32_t> number) const;

 private:
  // A directory's entry: where it leads is an offset from the start of the resources.
  struct Entry {
    std::uint32_t id = 0;
    std::uint32_t target = 0;
  };

  std::optional<std::uint32_t> TypeLibraryDirectory() const;
  std::optional<std::uint32_t> LibraryDirectory(std::uint32_t typeDirectory,
                                                std::optional<std::uint32_t> number) const;
  ByteView Data(std::uint32_t languageDirectory) const;

  std::uint32_t EntryCount(std::uint32_t directory) const;
  std::uint32_t NamedEntryCount(std::uint32_t directory) const;
  Entry EntryAt(std::uint32_t directory, std::uint32_t index) const;
  std::uint32_t Subdirectory(const Entry& entry) const;
  bool IsTypeLibName(std::uint32_t id) const;

  // Where in the file the image's address lies.
  std::uint64_t FileOffset(std::uint32_t address, PartName what) const;

  ByteView m_file;
  std::uint64_t m_sections = 0;  // offset of the section table
  std::uint16_t m_sectionCount = 0;
  std::uint32_t m_headersSize = 0;
  bool m_sectorAligned = true;
  std::optional<std::uint64_t> m_resources;  // file offset of the resource directory
};

}  // namespace hearthmake::typelib
