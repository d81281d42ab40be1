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

namespace hearthmake::fuzz {

// Files in memory, so that an input costs no disk access. Every folder is there and empty.
class MemoryFiles final : public platform::FileSystem {
 public:
  bool FileExists(std::string_view path) override { return m_files.count(Key(path)) != 0; }
  bool FolderExists(std::string_view) override { return true; }
  platform::FileStamp Stamp(std::string_view path) override {
    const auto found = m_files.find(Key(path));
    if (found == m_files.end()) return {};
    return {1, static_cast<std::int64_t>(found->second.size()), 0};
  }
  std::uint32_t Attributes(std::string_view path) override {
    Find(path);
    return platform::kNormal;
  }
  void SetAttributes(std::string_view path, std::uint32_t) override { Find(path); }

  std::string Read(std::string_view path) override { return Find(path); }
  std::string ReadOrCreate(std::string_view path) override { return m_files[Key(path)]; }
  std::unique_ptr<platform::RandomAccessFile> Open(std::string_view path) override {
    return std::make_unique<File>(Find(path));
  }
  void Replace(std::string_view path, std::string_view bytes) override { m_files[Key(path)] = bytes; }
  void Append(std::string_view path, std::string_view bytes) override { m_files[Key(path)] += bytes; }
  void Remove(std::string_view path) override {
    Find(path);
    m_files.erase(Key(path));
  }
  void Copy(std::string_view from, std::string_view to) override { m_files[Key(to)] = Read(from); }
  void Rename(std::string_view from, std::string_view to) override {
    Copy(from, to);
    Remove(from);
  }
  void CreateFolders(std::string_view) override {}
  void RemoveFolder(std::string_view) override {}
  std::vector<platform::FolderEntry> List(std::string_view) override { return {}; }
  platform::FileDetails Details(std::string_view path) override {
    platform::FileDetails details;
    details.size = Find(path).size();
    return details;
  }
  std::unique_ptr<platform::OutputStream> OpenForWriting(std::string_view path,
                                                         const platform::WriteMode& mode) override {
    if (!mode.mayCreate) Find(path);
    std::string& bytes = m_files[Key(path)];
    if (!mode.isAppended) bytes.clear();
    return std::make_unique<Growing>(bytes);
  }
  void CreateFolder(std::string_view) override {}
  std::string CurrentFolder() override { return "C:\\"; }
  void SetCurrentFolder(std::string_view) override {}
  std::string DriveLetters() override { return "C"; }
  platform::VolumeDetails Volume(char) override { return {}; }

 private:
  class File final : public platform::RandomAccessFile {
   public:
    explicit File(std::string bytes) : m_bytes(std::move(bytes)) {}
    std::uint64_t Size() const override { return m_bytes.size(); }
    std::size_t Read(std::uint64_t offset, void* buffer, std::size_t count) override {
      if (offset >= m_bytes.size()) return 0;
      count = std::min(count, m_bytes.size() - static_cast<std::size_t>(offset));
      std::memcpy(buffer, m_bytes.data() + offset, count);
      return count;
    }

   private:
    std::string m_bytes;
  };

  class Growing final : public platform::OutputStream {
   public:
    explicit Growing(std::string& bytes) : m_bytes(bytes) {}
    void Write(std::string_view bytes) override { m_bytes += bytes; }
    std::size_t WriteSome(std::string_view bytes, std::chrono::milliseconds) override {
      m_bytes += bytes;
      return bytes.size();
    }

   private:
    std::string& m_bytes;
  };

  static std::string Key(std::string_view path) {
    std::string key(path);
    for (char& c : key) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    return key;
  }

  std::string& Find(std::string_view path) {
    const auto found = m_files.find(Key(path));
    if (found == m_files.end()) {
      automation::Raise(automation::RuntimeError::FileNotFound, "FileSystem", std::string(path));
    }
    return found->second;
  }

  std::map<std::string, std::string> m_files;
};

}  // namespace hearthmake::fuzz
