#pragma once

#include <memory>
#include <optional>
#include <string_view>

#include "automation/Object.hpp"
#include "vbscript/intrinsics/Context.hpp"
#include "vbscript/objects/TextReader.hpp"
#include "vbscript/objects/TextWriter.hpp"

namespace hearthmake::vbscript {

// Text to read or to write: of a file, of the console, of a child. One direction each.
// Errors: 54 "Bad file mode" for the other direction, 62 "Input past end of file", 5 for a negative count or
// a character that the encoding lacks, 91 after Close, 61 and 57 of the disk.
class TextStream final : public automation::Object {
 public:
  enum class Mode : std::int32_t { Reading = 1, Writing = 2, Appending = 8 };
  // How scripts name the encoding of a file.
  enum class Format : std::int32_t {
    Unicode = -1,  // UTF-16 with a mark
    Default = -2,  // UTF-16 where a mark says so, else ASCII
    Ascii = 0,     // Windows-1252
  };

  explicit TextStream(std::unique_ptr<TextReader> reader) : m_reader(std::move(reader)) {}
  explicit TextStream(std::unique_ptr<TextWriter> writer) : m_writer(std::move(writer)) {}

  // A file by absolute path, as OpenTextFile opens it: mayCreate is for the writing modes alone.
  static automation::Ref<TextStream> OpenFile(Context& context, std::string_view path, Mode mode,
                                              bool mayCreate, Format format);
  static automation::Ref<TextStream> CreateFile(Context& context, std::string_view path, bool mayReplace,
                                                bool isUnicode);

  const automation::Interface& Declaration() const override;

  automation::Variant Read(std::int32_t characters);
  automation::Variant ReadAll();
  automation::Variant ReadLine();
  void Skip(std::int32_t characters);
  void SkipLine();
  void Write(const automation::Variant& text);
  void WriteLine(std::optional<automation::Variant> text);
  void WriteBlankLines(std::int32_t lines);
  void Close();
  bool AtEndOfLine();
  bool AtEndOfStream();
  std::int32_t Line();
  std::int32_t Column();

  // For a script host's own output.
  TextWriter& Writer();

 private:
  TextReader& Reader();
  TextReader& ReaderBeforeEnd();

  std::unique_ptr<TextReader> m_reader;
  std::unique_ptr<TextWriter> m_writer;
};

}  // namespace hearthmake::vbscript
