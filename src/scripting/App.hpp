#pragma once

#include <cstdint>
#include <string>

#include "automation/Interface.hpp"
#include "automation/Object.hpp"

namespace hearthmake {

// What scripts of a build see as App: the library that runs them.
class App final : public automation::Object {
 public:
  static const automation::Interface& Describe();
  const automation::Interface& Declaration() const override { return Describe(); }

  // The library's own folder, without a final backslash.
  std::string Path() const;
  std::string EXEName() const;
  std::string Title() const;
  std::string ProductName() const;
  std::int16_t Major() const;
  std::int16_t Minor() const;
  std::int16_t Revision() const;
  // A number that tells the calling thread from others of the process.
  std::int32_t ThreadID() const;
};

}  // namespace hearthmake
