#pragma once

#include <cstdint>
#include <string>
#include <utility>

#include "automation/Object.hpp"
#include "automation/OleDate.hpp"
#include "vbscript/intrinsics/Context.hpp"

namespace hearthmake::vbscript {

class Drive;
class Folder;

// What files and folders have in common for scripts: a path, and what the disk knows of it now.
class FileEntry : public automation::Object {
 public:
  // An absolute path; the context outlives the object.
  FileEntry(Context& context, std::string path) : m_context(context), m_path(std::move(path)) {}

  std::string Path() const { return m_path; }
  std::string Name() const;
  // Renames it where it is. Error 58 when the name is taken, 5 for one that can't be.
  void SetName(const std::string& name);
  // There are no other names than the one: the same as Name and Path.
  std::string ShortName() const { return Name(); }
  std::string ShortPath() const { return m_path; }
  automation::Ref<vbscript::Drive> Drive();
  automation::Ref<Folder> ParentFolder();
  std::int32_t Attributes();
  // Only the bits of read-only, hidden, system and archive count.
  void SetAttributes(std::int32_t attributes);
  automation::Date DateCreated();
  automation::Date DateLastModified();
  automation::Date DateLastAccessed();

 protected:
  platform::FileSystem& Files() const { return *m_context.host.Platform().files; }
  platform::FileDetails Details() const;

  Context& m_context;
  std::string m_path;
};

// A number of bytes: Long where it fits, else Double.
automation::Variant ByteCount(std::uint64_t bytes);

}  // namespace hearthmake::vbscript
