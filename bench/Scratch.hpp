#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

namespace hearthmake::bench {

// A temporary folder, removed with the object.
class Scratch {
 public:
  Scratch() {
    std::string pattern = (std::filesystem::temp_directory_path() / "hearthmake_bench_XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("can't make a temporary folder");
    m_folder = pattern;
  }
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;
  ~Scratch() {
    std::error_code ignored;
    std::filesystem::remove_all(m_folder, ignored);
  }

  std::string Path(const std::string& name) const { return (m_folder / name).string(); }
  // The path of a file that now holds this text.
  std::string Write(const std::string& name, const std::string& text) const {
    std::ofstream(Path(name), std::ios::binary) << text;
    return Path(name);
  }

 private:
  std::filesystem::path m_folder;
};

}  // namespace hearthmake::bench
