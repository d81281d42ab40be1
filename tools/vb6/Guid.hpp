#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace hearthmake::vb6 {

// The sixteen bytes of an identifier, in the order in which a file holds them.
struct Guid {
  std::array<std::uint8_t, 16> bytes{};

  // Reads {XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}, either case; nothing for anything else.
  static std::optional<Guid> Parse(std::string_view text);
  // With braces, upper-case.
  std::string Text() const;

  friend bool operator==(const Guid&, const Guid&) = default;
};

// Makes new identifiers: from the machine's random source, or from a seed, and then the same seed and the
// same purpose always give the same one.
class GuidSource {
 public:
  GuidSource() = default;
  explicit GuidSource(std::string seed) : m_seed(std::move(seed)) {}

  // The purpose ("OdCommon/Money/interface") tells the identifiers of one seed apart.
  Guid Make(std::string_view purpose) const;

 private:
  std::optional<std::string> m_seed;
};

}  // namespace hearthmake::vb6
