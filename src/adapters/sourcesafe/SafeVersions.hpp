#pragma once

#include <string>

#include "adapters/win32/LateEnumerator.hpp"
#include "platform/SourceControl.hpp"

namespace hearthmake::sourcesafe {

// The history of one of SourceSafe's items. It is fetched entry by entry, as far as it is walked.
class SafeVersions final : public platform::VSSVersions {
 public:
  SafeVersions(const win32::LateObject& versions, std::string spec);

  std::unique_ptr<platform::VSSVersion> Next() override;

 private:
  win32::LateEnumerator m_walk;
  std::string m_spec;
};

}  // namespace hearthmake::sourcesafe
