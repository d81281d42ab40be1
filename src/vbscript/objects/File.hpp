#pragma once

#include <optional>

#include "vbscript/objects/FileEntry.hpp"

namespace hearthmake::vbscript {

class TextStream;

// A file. Members raise error 53 when it is gone.
class File final : public FileEntry {
 public:
  using FileEntry::FileEntry;
  const automation::Interface& Declaration() const override;

  automation::Variant Size();
  // What the registry calls files of this extension, else "TXT File".
  std::string Type();
  void Copy(const std::string& target, std::optional<bool> mayReplace);
  // The object is that of the file at its new place.
  void Move(const std::string& target);
  void Delete(std::optional<bool> force);
  automation::Ref<TextStream> OpenAsTextStream(std::optional<std::int32_t> mode,
                                               std::optional<std::int32_t> format);
};

// By absolute path. Error 53 when there is no such file, 76 when its folder is missing.
automation::Ref<File> OpenFile(Context& context, const std::string& path);

// Where a thing is after a move, from the target that was named.
std::string PathAfterMove(Context& context, const std::string& path, const std::string& target);

}  // namespace hearthmake::vbscript
