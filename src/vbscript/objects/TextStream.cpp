#include "vbscript/objects/TextStream.hpp"

#include <array>
#include <utility>

#include "automation/Declare.hpp"
#include "vbscript/Errors.hpp"
#include "vbscript/objects/FileErrors.hpp"
#include "vbscript/values/Conversions.hpp"

namespace hearthmake::vbscript {

using automation::Make;
using automation::Ref;
using automation::Variant;

namespace {

class FileInput final : public platform::InputStream {
 public:
  FileInput(std::unique_ptr<platform::RandomAccessFile> file, std::uint64_t start)
      : m_file(std::move(file)), m_next(start) {}

  std::optional<std::size_t> Read(void* buffer, std::size_t count, std::chrono::milliseconds) override {
    const std::size_t got = WithScriptErrors([&] { return m_file->Read(m_next, buffer, count); });
    m_next += got;
    return got;
  }

 private:
  std::unique_ptr<platform::RandomAccessFile> m_file;
  std::uint64_t m_next;
};

bool HasMark(platform::RandomAccessFile& file) {
  std::array<char, kUtf16Mark.size()> start{};
  const std::size_t got = file.Read(0, start.data(), start.size());
  return std::string_view(start.data(), got) == kUtf16Mark;
}

// Whether a file that is to be appended to begins with a mark; nothing when it is empty or missing.
std::optional<bool> ExistingMark(platform::FileSystem& files, std::string_view path) {
  if (!files.FileExists(path)) return std::nullopt;
  const auto file = files.Open(path);
  if (file->Size() == 0) return std::nullopt;
  return HasMark(*file);
}

std::size_t CountOf(std::int32_t characters) {
  if (characters < 0) RaiseRuntime(number::kInvalidProcedureCall);
  return static_cast<std::size_t>(characters);
}

Ref<TextStream> OpenForReading(Context& context, std::string_view path, TextStream::Format format) {
  auto file = context.host.Platform().files->Open(path);
  const bool hasMark = format != TextStream::Format::Ascii && HasMark(*file);
  const bool isUnicode = hasMark || format == TextStream::Format::Unicode;
  auto input = std::make_shared<FileInput>(std::move(file), hasMark ? kUtf16Mark.size() : 0);
  return Make<TextStream>(std::make_unique<TextReader>(
      std::move(input), isUnicode ? TextEncoding::Utf16 : TextEncoding::Windows1252, context.budget));
}

Ref<TextStream> OpenForWriting(Context& context, std::string_view path, const platform::WriteMode& mode,
                               bool isUnicode, bool needsMark) {
  std::shared_ptr<platform::OutputStream> file = context.host.Platform().files->OpenForWriting(path, mode);
  auto writer = std::make_unique<TextWriter>(std::move(file),
                                             isUnicode ? TextEncoding::Utf16 : TextEncoding::Windows1252,
                                             TextWriter::Kind::File, context.budget);
  if (needsMark) writer->WriteMark();
  return Make<TextStream>(std::move(writer));
}

}  // namespace

Ref<TextStream> TextStream::OpenFile(Context& context, std::string_view path, Mode mode, bool mayCreate,
                                     Format format) {
  return WithScriptErrors([&] {
    if (mode == Mode::Reading) {
      platform::FileSystem& files = *context.host.Platform().files;
      if (mayCreate && !files.FileExists(path)) files.OpenForWriting(path, {true, true, true});
      return OpenForReading(context, path, format);
    }
    const bool isAppended = mode == Mode::Appending;
    const auto mark = isAppended ? ExistingMark(*context.host.Platform().files, path) : std::nullopt;
    const bool isUnicode = format == Format::Unicode || (format == Format::Default && mark.value_or(false));
    return OpenForWriting(context, path, {mayCreate, true, isAppended}, isUnicode, !mark.has_value());
  });
}

Ref<TextStream> TextStream::CreateFile(Context& context, std::string_view path, bool mayReplace,
                                       bool isUnicode) {
  return WithScriptErrors([&] {
    return OpenForWriting(context, path, {true, mayReplace, false}, isUnicode, true);
  });
}

const automation::Interface& TextStream::Declaration() const {
  static const automation::Interface kDeclaration =
      automation::Declare("TextStream", "ITextStream", "")
          .get<&TextStream::Line>("Line")
          .get<&TextStream::Column>("Column")
          .get<&TextStream::AtEndOfStream>("AtEndOfStream")
          .get<&TextStream::AtEndOfLine>("AtEndOfLine")
          .method<&TextStream::Read>("Read", {"Characters"})
          .method<&TextStream::ReadLine>("ReadLine")
          .method<&TextStream::ReadAll>("ReadAll")
          .method<&TextStream::Write>("Write", {"Text"})
          .method<&TextStream::WriteLine>("WriteLine", {"Text"})
          .method<&TextStream::WriteBlankLines>("WriteBlankLines", {"Lines"})
          .method<&TextStream::Skip>("Skip", {"Characters"})
          .method<&TextStream::SkipLine>("SkipLine")
          .method<&TextStream::Close>("Close")
          .build();
  return kDeclaration;
}

Variant TextStream::Read(std::int32_t characters) {
  const std::size_t count = CountOf(characters);
  return Variant::FromUtf16(ReaderBeforeEnd().Read(count));
}

Variant TextStream::ReadAll() { return Variant::FromUtf16(ReaderBeforeEnd().ReadAll()); }

Variant TextStream::ReadLine() { return Variant::FromUtf16(ReaderBeforeEnd().ReadLine()); }

void TextStream::Skip(std::int32_t characters) {
  if (!Reader().Skip(CountOf(characters))) RaiseRuntime(number::kInputPastEnd);
}

void TextStream::SkipLine() {
  if (!Reader().SkipLine()) RaiseRuntime(number::kInputPastEnd);
}

void TextStream::Write(const Variant& text) {
  TextWriter& writer = Writer();
  const Variant converted = ToTextVariant(text);
  WithScriptErrors([&] { writer.Write(converted.AsUtf16()); });
}

void TextStream::WriteLine(std::optional<Variant> text) {
  if (text) Write(*text);
  WithScriptErrors([&] { Writer().EndLine(); });
}

void TextStream::WriteBlankLines(std::int32_t lines) {
  TextWriter& writer = Writer();
  const std::size_t count = CountOf(lines);
  WithScriptErrors([&] {
    for (std::size_t i = 0; i < count; ++i) writer.EndLine();
  });
}

void TextStream::Close() {
  m_reader.reset();
  const std::unique_ptr<TextWriter> writer = std::move(m_writer);
  if (writer) WithScriptErrors([&] { writer->Flush(); });
}

bool TextStream::AtEndOfLine() { return Reader().IsAtEndOfLine(); }

bool TextStream::AtEndOfStream() { return Reader().IsAtEnd(); }

std::int32_t TextStream::Line() { return m_writer ? m_writer->Line() : Reader().Line(); }

std::int32_t TextStream::Column() { return m_writer ? m_writer->Column() : Reader().Column(); }

TextWriter& TextStream::Writer() {
  if (m_writer) return *m_writer;
  RaiseRuntime(m_reader ? number::kBadFileMode : number::kObjectNotSet);
}

TextReader& TextStream::Reader() {
  if (m_reader) return *m_reader;
  RaiseRuntime(m_writer ? number::kBadFileMode : number::kObjectNotSet);
}

TextReader& TextStream::ReaderBeforeEnd() {
  TextReader& reader = Reader();
  if (reader.IsAtEnd()) RaiseRuntime(number::kInputPastEnd);
  return reader;
}

}  // namespace hearthmake::vbscript
