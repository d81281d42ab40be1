#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/ByteStreams.hpp"
#include "vbscript/Budget.hpp"
#include "vbscript/objects/TextEncoding.hpp"

namespace hearthmake::vbscript {

// The text of a stream, piece by piece. Every operation takes time in proportion to what it reads; waiting
// for bytes ends when the script's time is over.
class TextReader {
 public:
  // The budget outlives the reader.
  TextReader(std::shared_ptr<platform::InputStream> stream, TextEncoding encoding, Budget& budget);

  // Whether there is no character left; waits for one.
  bool IsAtEnd();
  // Whether the next character ends a line, or there is none.
  bool IsAtEndOfLine();

  // Up to count characters; fewer only at the end.
  std::u16string_view Read(std::size_t count);
  std::u16string_view ReadAll();
  // Up to the next line end (line feed, with or without a carriage return before it), without it. What the
  // three return stays until the next operation.
  std::u16string_view ReadLine();
  // Passes over characters, over the rest of the line; false when there was not so much.
  bool Skip(std::size_t count);
  bool SkipLine();

  // From 1: of the next character.
  std::int32_t Line() const { return m_line; }
  std::int32_t Column() const { return m_column; }

 private:
  std::u16string_view Rest() const { return std::u16string_view(m_text).substr(m_next); }
  // Reads one more piece behind what is there; false at the end.
  bool Fill();
  // Makes count characters available where there are so many.
  void Require(std::size_t count);
  // Takes characters that are there.
  std::u16string_view Take(std::size_t count);
  // The place of the next line feed in Rest(), or npos; reads as far as need be.
  std::size_t FindLineFeed();

  std::shared_ptr<platform::InputStream> m_stream;
  TextEncoding m_encoding;
  Budget& m_budget;
  std::string m_bytes;    // read, not decoded: the start of a character
  std::u16string m_text;  // decoded
  std::size_t m_next = 0;
  bool m_isEnded = false;
  std::int32_t m_line = 1;
  std::int32_t m_column = 1;
};

}  // namespace hearthmake::vbscript
