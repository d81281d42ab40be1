#include "adapters/dao/JetFile.hpp"

#include <array>
#include <filesystem>
#include <fstream>
#include <string_view>

#include "adapters/win32/WideText.hpp"

namespace hearthmake::dao {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view kJet = "\0\1\0\0Standard Jet DB\0"sv;
constexpr std::string_view kAce = "\0\1\0\0Standard ACE DB\0"sv;
constexpr std::size_t kVersion = 0x14;  // the byte behind either; 0 for Jet 3

}  // namespace

std::optional<JetFormat> ReadJetFormat(const std::string& path) {
  std::ifstream file(std::filesystem::path(win32::ToWide(path)), std::ios::binary);
  std::array<char, kVersion + 1> bytes{};
  if (!file.read(bytes.data(), bytes.size())) return std::nullopt;
  const std::string_view header(bytes.data(), bytes.size());
  if (header.starts_with(kAce)) return JetFormat::Ace;
  if (!header.starts_with(kJet)) return std::nullopt;
  return header[kVersion] == 0 ? JetFormat::Jet3 : JetFormat::Jet4;
}

}  // namespace hearthmake::dao
