#pragma once

#include <optional>

#include "vbscript/objects/FileEntry.hpp"

namespace hearthmake::vbscript {

class Files;
class Folders;
class TextStream;

// A folder. Members raise error 76 when it is gone.
class Folder final : public FileEntry {
 public:
  using FileEntry::FileEntry;
  const automation::Interface& Declaration() const override;

  // The bytes of all files below.
  automation::Variant Size();
  std::string Type();
  bool IsRootFolder() const;
  automation::Ref<vbscript::Files> Files();
  automation::Ref<Folders> SubFolders();
  void Copy(const std::string& target, std::optional<bool> mayReplace);
  void Move(const std::string& target);
  void Delete(std::optional<bool> force);
  automation::Ref<TextStream> CreateTextFile(const std::string& name, std::optional<bool> mayReplace,
                                             std::optional<bool> isUnicode);
};

// By absolute path. Error 76 when there is no such folder.
automation::Ref<Folder> OpenFolder(Context& context, const std::string& path);

}  // namespace hearthmake::vbscript
