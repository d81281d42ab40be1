#pragma once

#include "platform/SourceControl.hpp"

namespace hearthmake::sourcesafe {

// SourceSafe, through its automation objects. Errors keep SourceSafe's number and words and say what was
// asked for, of which item; 429 where it is not installed.
class SourceSafe final : public platform::SourceControl {
 public:
  std::unique_ptr<platform::VSSDatabase> Open(std::string_view strSrcSafeIni, std::string_view strUser,
                                              std::string_view strPassword) override;
};

}  // namespace hearthmake::sourcesafe
