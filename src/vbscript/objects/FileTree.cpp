#include "vbscript/objects/FileTree.hpp"

#include <algorithm>

#include "automation/Text.hpp"
#include "vbscript/Errors.hpp"
#include "vbscript/objects/DosPath.hpp"
#include "vbscript/objects/FileErrors.hpp"

namespace hearthmake::vbscript {

namespace {

// What one file or folder costs of a script's budget.
constexpr std::int64_t kStepsPerEntry = 500;

bool EndsInSeparator(std::string_view path) { return !path.empty() && dospath::IsSeparator(path.back()); }

}  // namespace

void FileTree::CopyFiles(std::string_view source, std::string_view target, bool mayReplace) {
  Transfer(source, target, false, mayReplace, &FileTree::CopyFile);
}

void FileTree::CopyFolders(std::string_view source, std::string_view target, bool mayReplace) {
  Transfer(source, target, true, mayReplace, &FileTree::CopyFolder);
}

void FileTree::MoveFiles(std::string_view source, std::string_view target) {
  Transfer(source, target, false, false, &FileTree::MoveFile);
}

void FileTree::MoveFolders(std::string_view source, std::string_view target) {
  Transfer(source, target, true, false, &FileTree::MoveFolder);
}

void FileTree::DeleteFiles(std::string_view path, bool force) {
  WithScriptErrors([&] {
    if (!dospath::HasWildcards(path)) return DeleteFile(Absolute(path), force);
    for (const std::string& file : Matching(path, false)) DeleteFile(file, force);
  });
}

void FileTree::DeleteFolders(std::string_view path, bool force) {
  WithScriptErrors([&] {
    // As the original has it: a folder to be deleted is named without a separator at its end.
    if (EndsInSeparator(path)) RaiseRuntime(number::kPathNotFound);
    if (!dospath::HasWildcards(path)) return DeleteFolder(Absolute(path), force);
    for (const std::string& folder : Matching(path, true)) DeleteFolder(folder, force);
  });
}

std::uint64_t FileTree::SizeOf(const std::string& folder) {
  return WithScriptErrors([&] {
    std::uint64_t size = 0;
    for (const platform::FolderEntry& entry : m_files.List(folder)) {
      m_context.budget.Charge(kStepsPerEntry);
      const std::string path = dospath::Join(folder, entry.name);
      if (!entry.isFolder) {
        size += static_cast<std::uint64_t>(std::max<std::int64_t>(m_files.Stamp(path).size, 0));
      } else if (!entry.isLink) {
        size += SizeOf(path);
      }
    }
    return size;
  });
}

std::vector<std::string> FileTree::Names(const std::string& folder, bool folders) {
  return WithScriptErrors([&] {
    std::vector<std::pair<std::string, std::string>> found;
    for (const platform::FolderEntry& entry : m_files.List(folder)) {
      m_context.budget.Charge(1);
      if (entry.isFolder == folders) found.emplace_back(automation::Lower(entry.name), entry.name);
    }
    std::sort(found.begin(), found.end());
    std::vector<std::string> names;
    names.reserve(found.size());
    for (auto& [key, name] : found) names.push_back(std::move(name));
    return names;
  });
}

std::string FileTree::Absolute(std::string_view path) {
  if (path.empty()) RaiseRuntime(number::kInvalidProcedureCall);
  return dospath::Absolute(path, m_files.CurrentFolder());
}

std::vector<std::string> FileTree::Matching(std::string_view path, bool folders) {
  const std::string parent = dospath::ParentFolderName(path);
  const std::string folder = Absolute(parent.empty() ? "." : parent);
  const std::string pattern = dospath::FileName(path);
  std::vector<std::string> matching;
  for (const std::string& name : Names(folder, folders)) {
    if (dospath::Matches(name, pattern)) matching.push_back(dospath::Join(folder, name));
  }
  if (matching.empty()) RaiseRuntime(folders ? number::kPathNotFound : number::kFileNotFound);
  return matching;
}

void FileTree::Transfer(std::string_view source, std::string_view target, bool folders, bool flag,
                        Operation operation) {
  WithScriptErrors([&] {
    const bool isMany = dospath::HasWildcards(source);
    if (target.empty()) RaiseRuntime(number::kInvalidProcedureCall);
    const std::string place = Absolute(target);
    const std::vector<std::string> sources =
        isMany ? Matching(source, folders) : std::vector<std::string>{Absolute(source)};
    const bool goesInto = isMany || EndsInSeparator(target);
    if (goesInto && !m_files.FolderExists(place)) RaiseRuntime(number::kPathNotFound);
    for (const std::string& one : sources) {
      (this->*operation)(one, goesInto ? dospath::Join(place, dospath::FileName(one)) : place, flag);
    }
  });
}

void FileTree::CopyFile(const std::string& source, const std::string& target, bool mayReplace) {
  m_context.budget.Charge(kStepsPerEntry);
  if (!m_files.FileExists(source)) {
    m_files.Details(source);  // which knows whether the file or its folder is missing
    RaiseRuntime(number::kFileNotFound);
  }
  if (m_files.FolderExists(target)) RaiseRuntime(number::kPermissionDenied);
  if (!mayReplace && m_files.FileExists(target)) RaiseRuntime(number::kFileAlreadyExists);
  m_files.Copy(source, target);
}

void FileTree::CopyFolder(const std::string& source, const std::string& target, bool mayReplace) {
  if (!m_files.FolderExists(source)) RaiseRuntime(number::kPathNotFound);
  if (m_files.FileExists(target)) RaiseRuntime(number::kFileAlreadyExists);
  // It would find its own copy again and again.
  if (dospath::IsWithin(target, source)) RaiseRuntime(number::kPermissionDenied);
  CopyContent(source, target, mayReplace);
}

// As deep as paths can be, which is bounded by the system.
void FileTree::CopyContent(const std::string& source, const std::string& target, bool mayReplace) {
  if (!m_files.FolderExists(target)) m_files.CreateFolder(target);
  for (const platform::FolderEntry& entry : m_files.List(source)) {
    const std::string from = dospath::Join(source, entry.name);
    const std::string to = dospath::Join(target, entry.name);
    if (entry.isFolder) {
      m_context.budget.Charge(kStepsPerEntry);
      CopyContent(from, to, mayReplace);
    } else {
      CopyFile(from, to, mayReplace);
    }
  }
}

void FileTree::MoveFile(const std::string& source, const std::string& target, bool) {
  m_context.budget.Charge(kStepsPerEntry);
  if (!m_files.FileExists(source)) {
    m_files.Details(source);
    RaiseRuntime(number::kFileNotFound);
  }
  m_files.Rename(source, target);
}

void FileTree::MoveFolder(const std::string& source, const std::string& target, bool) {
  m_context.budget.Charge(kStepsPerEntry);
  if (!m_files.FolderExists(source)) RaiseRuntime(number::kPathNotFound);
  if (dospath::IsWithin(target, source) && automation::Lower(target) != automation::Lower(source)) {
    RaiseRuntime(number::kPermissionDenied);
  }
  m_files.Rename(source, target);
}

void FileTree::DeleteFile(const std::string& path, bool force) {
  m_context.budget.Charge(kStepsPerEntry);
  if (m_files.FolderExists(path)) RaiseRuntime(number::kFileNotFound);
  if (force && m_files.FileExists(path)) {
    const std::uint32_t attributes = m_files.Attributes(path);
    if ((attributes & platform::kReadOnly) != 0) m_files.SetAttributes(path, platform::kNormal);
  }
  m_files.Remove(path);
}

void FileTree::DeleteFolder(const std::string& path, bool force) {
  m_context.budget.Charge(kStepsPerEntry);
  if (!m_files.FolderExists(path)) RaiseRuntime(number::kPathNotFound);
  if (dospath::IsRoot(path)) RaiseRuntime(number::kPermissionDenied);
  // An empty one goes at once, and a link to a folder without what it points to.
  if (RemoveIfEmpty(path)) return;
  for (const platform::FolderEntry& entry : m_files.List(path)) {
    const std::string inner = dospath::Join(path, entry.name);
    if (entry.isFolder) {
      DeleteFolder(inner, force);
    } else {
      DeleteFile(inner, force);
    }
  }
  m_files.RemoveFolder(path);
}

bool FileTree::RemoveIfEmpty(const std::string& folder) {
  try {
    m_files.RemoveFolder(folder);
    return true;
  } catch (const automation::Error& error) {
    if (error.Number() != static_cast<std::int32_t>(automation::RuntimeError::PathFileAccess)) throw;
    return false;
  }
}

}  // namespace hearthmake::vbscript
