#include "vb6/Guid.hpp"

#include <algorithm>

#include "vb6/System.hpp"
#include "vb6/Text.hpp"

namespace hearthmake::vb6 {
namespace {

// Where the two digits of each byte stand in the text: the first three groups are little-endian numbers.
constexpr std::array<std::size_t, 16> kDigits = {7, 5, 3, 1, 12, 10, 17, 15, 20, 22, 25, 27, 29, 31, 33, 35};
constexpr std::string_view kShape = "{00000000-0000-0000-0000-000000000000}";

std::uint64_t Mix(std::uint64_t state) {
  state ^= state >> 33;
  state *= 0xFF51AFD7ED558CCDULL;
  state ^= state >> 33;
  state *= 0xC4CEB9FE1A85EC53ULL;
  return state ^ (state >> 33);
}

// A hash is enough: nobody attacks the identifiers of a test run.
std::array<std::uint8_t, 16> Digest(std::string_view seed, std::string_view purpose) {
  std::array<std::uint8_t, 16> digest{};
  for (std::size_t half = 0; half < 2; ++half) {
    std::uint64_t state = 0xCBF29CE484222325ULL + half;
    for (const std::string_view part : {seed, std::string_view("\0", 1), purpose}) {
      for (const char c : part) state = (state ^ static_cast<unsigned char>(c)) * 0x100000001B3ULL;
    }
    state = Mix(state);
    for (std::size_t i = 0; i < 8; ++i) digest[half * 8 + i] = static_cast<std::uint8_t>(state >> (8 * i));
  }
  return digest;
}

}  // namespace

std::optional<Guid> Guid::Parse(std::string_view text) {
  if (text.size() != kShape.size()) return std::nullopt;
  for (std::size_t i = 0; i < kShape.size(); ++i) {
    if (kShape[i] != '0' && text[i] != kShape[i]) return std::nullopt;
  }
  Guid guid;
  for (std::size_t i = 0; i < kDigits.size(); ++i) {
    const auto value = ParseNumber(text.substr(kDigits[i], 2), 16);
    if (!value) return std::nullopt;
    guid.bytes[i] = static_cast<std::uint8_t>(*value);
  }
  return guid;
}

std::string Guid::Text() const {
  constexpr std::string_view kHexDigits = "0123456789ABCDEF";
  std::string text(kShape);
  for (std::size_t i = 0; i < kDigits.size(); ++i) {
    text[kDigits[i]] = kHexDigits[bytes[i] >> 4];
    text[kDigits[i] + 1] = kHexDigits[bytes[i] & 15];
  }
  return text;
}

Guid GuidSource::Make(std::string_view purpose) const {
  Guid guid;
  if (!m_seed) {
    // A system without them would leave the zeros, so mark them too.
    if (!FillWithRandomBytes(guid.bytes.data(), guid.bytes.size())) guid.bytes = Digest("", purpose);
  } else {
    guid.bytes = Digest(*m_seed, purpose);
  }
  guid.bytes[7] = static_cast<std::uint8_t>((guid.bytes[7] & 0x0F) | 0x40);  // a random one, version 4
  guid.bytes[8] = static_cast<std::uint8_t>((guid.bytes[8] & 0x3F) | 0x80);
  return guid;
}

}  // namespace hearthmake::vb6
