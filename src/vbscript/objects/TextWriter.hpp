#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/ByteStreams.hpp"
#include "vbscript/Budget.hpp"
#include "vbscript/objects/TextEncoding.hpp"

namespace hearthmake::vbscript {

// Text on its way to a stream.
class TextWriter {
 public:
  enum class Kind {
    File,     // lines end in CR LF; bytes go out in large pieces
    Console,  // lines end in "\n", also where the text says CR LF; everything goes out at once
  };

  // The budget outlives the writer.
  TextWriter(std::shared_ptr<platform::OutputStream> stream, TextEncoding encoding, Kind kind,
             Budget& budget);
  TextWriter(const TextWriter&) = delete;
  TextWriter& operator=(const TextWriter&) = delete;
  // Writes what is left; a failure has nobody to be told to.
  ~TextWriter();

  // Error 5 when a character can't be written in the encoding; then nothing of the text is.
  void Write(std::u16string_view text);
  void EndLine();
  void WriteMark();
  // Throws Interrupted when the other end takes nothing until the script's time is over.
  void Flush();

  // From 1: where the next character goes, counted from where writing began.
  std::int32_t Line() const { return m_line; }
  std::int32_t Column() const { return m_column; }

 private:
  void Append(std::u16string_view text);
  void CountLines(std::u16string_view text);

  std::shared_ptr<platform::OutputStream> m_stream;
  TextEncoding m_encoding;
  Kind m_kind;
  Budget& m_budget;
  std::string m_bytes;
  std::int32_t m_line = 1;
  std::int32_t m_column = 1;
};

}  // namespace hearthmake::vbscript
