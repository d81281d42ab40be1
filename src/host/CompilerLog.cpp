#include "host/CompilerLog.hpp"

namespace hearthmake::host {

namespace {

constexpr std::string_view kCompileFailed = "Compile failed: ";

}  // namespace

std::string_view CompilerWords(std::string_view message) {
  if (message.starts_with(kCompileFailed)) message.remove_prefix(kCompileFailed.size());
  return message;
}

}  // namespace hearthmake::host
