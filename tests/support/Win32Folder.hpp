#pragma once

#include <windows.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

namespace hearthmake::support {

// A folder of its own for a test, with the few things tests do in it behind the back of what they test. Names
// and paths are UTF-8.
class Win32Folder {
 public:
  Win32Folder() {
    static std::atomic<int> counter = 0;
    m_path = std::filesystem::temp_directory_path() /
             ("hearthmake-test-" + std::to_string(GetCurrentProcessId()) + "-" +
              std::to_string(GetTickCount64()) + "-" + std::to_string(counter++));
    std::filesystem::create_directories(m_path);
  }
  Win32Folder(const Win32Folder&) = delete;
  Win32Folder& operator=(const Win32Folder&) = delete;
  ~Win32Folder() {
    // What a child had open, it has for a moment after its end.
    for (int i = 0; i < 20 && !RemoveAll(); ++i) Sleep(20);
  }

  std::string Path(std::string_view name = {}) const { return ToText(Place(name)); }

  std::string MakeFolder(std::string_view name) const {
    std::filesystem::create_directories(Place(name));
    return Path(name);
  }

  // With the folders above it.
  std::string MakeFile(std::string_view name, const std::string& bytes = {}) const {
    std::filesystem::create_directories(Place(name).parent_path());
    std::ofstream(Place(name), std::ios::binary) << bytes;
    return Path(name);
  }

  std::string Content(std::string_view name) const {
    std::ifstream file(Place(name), std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
  }

 private:
  static std::string ToText(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return std::string(text.begin(), text.end());
  }
  std::filesystem::path Place(std::string_view name) const {
    return name.empty() ? m_path : m_path / std::u8string(name.begin(), name.end());
  }

  // Read-only files keep their folder from going.
  bool RemoveAll() const {
    std::error_code ignored;
    for (auto at = std::filesystem::recursive_directory_iterator(m_path, ignored);
         at != std::filesystem::recursive_directory_iterator(); at.increment(ignored)) {
      if (!at->is_directory(ignored)) SetFileAttributesW(at->path().c_str(), FILE_ATTRIBUTE_NORMAL);
    }
    std::filesystem::remove_all(m_path, ignored);
    return !std::filesystem::exists(m_path, ignored);
  }

  std::filesystem::path m_path;
};

}  // namespace hearthmake::support
