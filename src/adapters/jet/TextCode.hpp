#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "adapters/jet/FileHeader.hpp"

namespace hearthmake::jet {

// Turns the stored bytes of a database's texts into UTF-8. Jet 3 stores them in the code page of the
// database, Jet 4 in UTF-16 of which runs without a high byte may have been compressed.
class TextCode {
 public:
  // Error 3343 for a code page that is not known here.
  explicit TextCode(const FileHeader& header);
  ~TextCode();
  TextCode(const TextCode&) = delete;
  TextCode& operator=(const TextCode&) = delete;

  // Every text comes out as something: what is no character becomes U+FFFD.
  std::string Decode(std::string_view bytes) const;

 private:
  struct CodePage;

  Version m_version;
  std::unique_ptr<CodePage> m_codePage;  // none for Windows-1252
};

}  // namespace hearthmake::jet
