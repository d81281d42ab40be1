#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "vbscript/intrinsics/Context.hpp"

namespace hearthmake::vbscript {

// What scripts do with files and folders as wholes: copy, move and delete them, many at once by wildcards in
// the last name. Paths are absolute but for wildcards; a target that ends in a separator is a folder that
// things go into. Errors are those of scripts: 53 a source file is missing or none matches, 76 a folder is
// missing, 58 the target exists, 70 it may not be touched.
class FileTree {
 public:
  // The context outlives the object.
  explicit FileTree(Context& context) : m_context(context), m_files(*context.host.Platform().files) {}

  void CopyFiles(std::string_view source, std::string_view target, bool mayReplace);
  void CopyFolders(std::string_view source, std::string_view target, bool mayReplace);
  void MoveFiles(std::string_view source, std::string_view target);
  void MoveFolders(std::string_view source, std::string_view target);
  // With force, read-only ones too.
  void DeleteFiles(std::string_view path, bool force);
  void DeleteFolders(std::string_view path, bool force);

  // The bytes of every file below a folder; folders behind links are not counted.
  std::uint64_t SizeOf(const std::string& folder);
  // The names of the files or folders in a folder, in order.
  std::vector<std::string> Names(const std::string& folder, bool folders);

 private:
  using Operation = void (FileTree::*)(const std::string& source, const std::string& target, bool flag);

  std::string Absolute(std::string_view path);
  // The files or folders that a path with wildcards stands for, absolute; error when there is none.
  std::vector<std::string> Matching(std::string_view path, bool folders);
  // Does one thing with each source and the place in the target that it goes to.
  void Transfer(std::string_view source, std::string_view target, bool folders, bool flag,
                Operation operation);

  void CopyFile(const std::string& source, const std::string& target, bool mayReplace);
  void CopyFolder(const std::string& source, const std::string& target, bool mayReplace);
  void CopyContent(const std::string& source, const std::string& target, bool mayReplace);
  void MoveFile(const std::string& source, const std::string& target, bool);
  void MoveFolder(const std::string& source, const std::string& target, bool);
  void DeleteFile(const std::string& path, bool force);
  void DeleteFolder(const std::string& path, bool force);
  bool RemoveIfEmpty(const std::string& folder);

  Context& m_context;
  platform::FileSystem& m_files;
};

}  // namespace hearthmake::vbscript
