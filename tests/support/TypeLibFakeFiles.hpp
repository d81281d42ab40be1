#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "automation/Error.hpp"
#include "platform/FileSystem.hpp"

namespace hearthmake::test {

// Files in memory that can be read, with counts of what was asked for. Files may have holes, so that one
// of hundreds of megabytes costs nothing. What a type-library reader has no use for raises error 5.
class TypeLibFakeFiles final : public platform::FileSystem {
 public:
  struct Counts {
    int stamps = 0;
    int opens = 0;
    int reads = 0;
    std::uint64_t bytes = 0;
  };

  // Replaces the file; its stamp becomes another one.
  void Put(std::string_view path, std::string bytes) {
    const std::uint64_t size = bytes.size();
    PutSparse(path, size, {{0, std::move(bytes)}});
  }

  void PutSparse(std::string_view path, std::uint64_t size, std::map<std::uint64_t, std::string> pieces) {
    auto file = std::make_shared<Content>();
    file->size = size;
    file->pieces = std::move(pieces);
    file->stamp = {++m_identities, static_cast<std::int64_t>(size), 0};
    m_files[Key(path)] = std::move(file);
  }

  void Delete(std::string_view path) { m_files.erase(Key(path)); }
  // From now on the file's readers get nothing from this offset on, though its size stays.
  void Shrink(std::string_view path, std::uint64_t readable) { m_files.at(Key(path))->readable = readable; }

  Counts counts;

  bool FileExists(std::string_view path) override { return m_files.count(Key(path)) != 0; }
  bool FolderExists(std::string_view) override { return false; }
  platform::FileStamp Stamp(std::string_view path) override {
    ++counts.stamps;
    const auto found = m_files.find(Key(path));
    return found == m_files.end() ? platform::FileStamp{} : found->second->stamp;
  }
  std::unique_ptr<platform::RandomAccessFile> Open(std::string_view path) override {
    ++counts.opens;
    const auto found = m_files.find(Key(path));
    if (found == m_files.end()) {
      automation::Raise(automation::RuntimeError::FileNotFound, "FileSystem", std::string(path));
    }
    return std::make_unique<File>(found->second, counts);
  }

  std::uint32_t Attributes(std::string_view) override { Refuse(); }
  void SetAttributes(std::string_view, std::uint32_t) override { Refuse(); }
  std::string Read(std::string_view) override { Refuse(); }
  std::string ReadOrCreate(std::string_view) override { Refuse(); }
  void Replace(std::string_view, std::string_view) override { Refuse(); }
  void Append(std::string_view, std::string_view) override { Refuse(); }
  void Remove(std::string_view) override { Refuse(); }
  void Copy(std::string_view, std::string_view) override { Refuse(); }
  void Rename(std::string_view, std::string_view) override { Refuse(); }
  void CreateFolders(std::string_view) override { Refuse(); }
  void RemoveFolder(std::string_view) override { Refuse(); }
  std::vector<platform::FolderEntry> List(std::string_view) override { Refuse(); }
  platform::FileDetails Details(std::string_view) override { Refuse(); }
  std::unique_ptr<platform::OutputStream> OpenForWriting(std::string_view,
                                                         const platform::WriteMode&) override {
    Refuse();
  }
  void CreateFolder(std::string_view) override { Refuse(); }
  std::string CurrentFolder() override { Refuse(); }
  void SetCurrentFolder(std::string_view) override { Refuse(); }
  std::string DriveLetters() override { Refuse(); }
  platform::VolumeDetails Volume(char) override { Refuse(); }

 private:
  struct Content {
    std::uint64_t size = 0;
    std::uint64_t readable = UINT64_MAX;
    std::map<std::uint64_t, std::string> pieces;  // by offset; zeros between them
    platform::FileStamp stamp;
  };

  class File final : public platform::RandomAccessFile {
   public:
    File(std::shared_ptr<Content> content, Counts& counts)
        : m_content(std::move(content)), m_counts(counts) {}

    std::uint64_t Size() const override { return m_content->size; }
    std::size_t Read(std::uint64_t offset, void* buffer, std::size_t count) override {
      ++m_counts.reads;
      const std::uint64_t end = std::min(m_content->size, m_content->readable);
      if (offset >= end) return 0;
      count = static_cast<std::size_t>(std::min<std::uint64_t>(count, end - offset));
      m_counts.bytes += count;
      std::memset(buffer, 0, count);
      for (const auto& [start, bytes] : m_content->pieces) {
        const std::uint64_t from = std::max(start, offset);
        const std::uint64_t to = std::min(start + bytes.size(), offset + count);
        if (from >= to) continue;
        std::memcpy(static_cast<char*>(buffer) + (from - offset), bytes.data() + (from - start),
                    static_cast<std::size_t>(to - from));
      }
      return count;
    }

   private:
    std::shared_ptr<Content> m_content;
    Counts& m_counts;
  };

  [[noreturn]] static void Refuse() {
    automation::Raise(automation::RuntimeError::InvalidProcedureCall, "TypeLibFakeFiles");
  }

  static std::string Key(std::string_view path) {
    std::string key(path);
    for (char& c : key) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    return key;
  }

  std::map<std::string, std::shared_ptr<Content>> m_files;
  std::uint64_t m_identities = 0;
};

}  // namespace hearthmake::test
