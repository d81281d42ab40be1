#include "adapters/jet/FileHeader.hpp"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <numeric>
#include <string>
#include <utility>

namespace hearthmake::jet {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view kJet = "\0\1\0\0Standard Jet DB\0"sv;
constexpr std::string_view kAce = "\0\1\0\0Standard ACE DB\0"sv;

constexpr std::size_t kVersionAt = 0x14;
constexpr std::size_t kMaskedAt = 0x18;
constexpr std::size_t kCodePageAt = 0x3C;
constexpr std::size_t kKeyAt = 0x3E;
constexpr std::size_t kPasswordAt = 0x42;
constexpr std::size_t kCreatedAt = 0x72;

std::uint64_t Number(std::string_view bytes, std::size_t at, std::size_t size) {
  std::uint64_t value = 0;
  for (std::size_t i = size; i-- > 0;) value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
  return value;
}

// Most of the page lies behind RC4 with a key that is the same in every file.
std::string Unmasked(std::string_view header, std::size_t length) {
  constexpr std::array<std::uint8_t, 4> kKey = {0xC7, 0xDA, 0x39, 0x6B};
  std::array<std::uint8_t, 256> state{};
  std::iota(state.begin(), state.end(), std::uint8_t{0});
  for (std::size_t i = 0, j = 0; i < state.size(); ++i) {
    j = (j + state[i] + kKey[i % kKey.size()]) % state.size();
    std::swap(state[i], state[j]);
  }
  std::string bytes(header);
  for (std::size_t at = 0, i = 0, j = 0; at < length; ++at) {
    i = (i + 1) % state.size();
    j = (j + state[i]) % state.size();
    std::swap(state[i], state[j]);
    const int mask = state[static_cast<std::uint8_t>(state[i] + state[j])];
    bytes[kMaskedAt + at] = static_cast<char>(static_cast<unsigned char>(bytes[kMaskedAt + at]) ^ mask);
  }
  return bytes;
}

bool HasPassword3(std::string_view bytes) {
  const std::string_view field = bytes.substr(kPasswordAt, 20);
  return field.find_first_not_of('\0') != std::string_view::npos;
}

// In Jet 4 the day on which the file was made masks it once more: no password is the mask itself.
bool HasPassword4(std::string_view bytes) {
  const double created = std::bit_cast<double>(Number(bytes, kCreatedAt, 8));
  const bool isDay = std::fabs(created) < 1e9;
  const auto mask = isDay ? static_cast<std::uint32_t>(static_cast<std::int32_t>(created)) : 0;
  for (std::size_t at = 0; at < 40; at += 4) {
    if (Number(bytes, kPasswordAt + at, 4) != mask) return true;
  }
  return false;
}

}  // namespace

std::optional<FileHeader> ReadHeader(std::string_view firstBytes) {
  if (firstBytes.size() < kHeaderSize) return std::nullopt;
  const bool isAce = firstBytes.starts_with(kAce);
  if (!isAce && !firstBytes.starts_with(kJet)) return std::nullopt;
  FileHeader header;
  const std::uint64_t version = Number(firstBytes, kVersionAt, 4);
  if (isAce || version > 1) {
    header.version = Version::Newer;
    return header;
  }
  header.version = version == 0 ? Version::Jet3 : Version::Jet4;
  const bool isJet3 = header.version == Version::Jet3;
  const std::string bytes = Unmasked(firstBytes.substr(0, kHeaderSize), isJet3 ? 126 : 128);
  header.isEncrypted = Number(bytes, kKeyAt, 4) != 0;
  header.hasPassword = isJet3 ? HasPassword3(bytes) : HasPassword4(bytes);
  header.codePage = static_cast<std::uint16_t>(Number(bytes, kCodePageAt, 2));
  return header;
}

const char* VersionName(Version version) {
  switch (version) {
    case Version::Jet3: return "Jet 3";
    case Version::Jet4: return "Jet 4";
    case Version::Newer: break;
  }
  return "Access 2007 or later";
}

}  // namespace hearthmake::jet
