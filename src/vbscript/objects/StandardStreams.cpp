#include "vbscript/objects/StandardStreams.hpp"

#include "vbscript/Errors.hpp"

namespace hearthmake::vbscript {

namespace {

// The host keeps its streams; a text stream that goes closes none of them.
template <class Stream>
std::shared_ptr<Stream> Borrowed(Stream& stream) {
  return std::shared_ptr<Stream>(std::shared_ptr<void>(), &stream);
}

}  // namespace

automation::Ref<TextStream> OpenStandardStream(Context& context, StandardStream which) {
  Console* console = context.host.StandardStreams();
  if (console == nullptr) RaiseRuntime(number::kInvalidProcedureCall);
  if (which == StandardStream::Input) {
    return automation::Make<TextStream>(
        std::make_unique<TextReader>(Borrowed(console->Input()), TextEncoding::Utf8, context.budget));
  }
  platform::OutputStream& output = which == StandardStream::Output ? console->Output() : console->Error();
  return automation::Make<TextStream>(std::make_unique<TextWriter>(
      Borrowed(output), TextEncoding::Utf8, TextWriter::Kind::Console, context.budget));
}

}  // namespace hearthmake::vbscript
