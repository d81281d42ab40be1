#pragma once

#include "platform/ByteStreams.hpp"

namespace hearthmake::vbscript {

// The standard streams that a script host gives its scripts. Texts on them are UTF-8, lines end in "\n".
class Console {
 public:
  Console() = default;
  Console(const Console&) = delete;
  Console& operator=(const Console&) = delete;
  virtual ~Console() = default;

  virtual platform::InputStream& Input() = 0;
  virtual platform::OutputStream& Output() = 0;
  virtual platform::OutputStream& Error() = 0;
};

}  // namespace hearthmake::vbscript
