#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "embedding/Options.hpp"
#include "platform/Platform.hpp"

namespace hearthmake::embedding {

// The library inside a program of its own: everything it needs of the machine, and the apartment of the
// thread that makes it. From then on the public classes (Builds, Build, Settings ...) can be used on that
// thread.
//
// Its objects must not outlive it. A thread may have one at a time; several threads may each have their own,
// also on the same data folder.
class Embedded {
 public:
  // Makes the data folder and the database where they are missing. Raises automation::Error: 5 for no data
  // folder or a drive that is none, 75 for a folder that can't be made, 76 for a Wine prefix that is none,
  // and those of the database engine.
  explicit Embedded(const Options& options);
  Embedded(const Embedded&) = delete;
  Embedded& operator=(const Embedded&) = delete;
  ~Embedded();

  // The ports of the library, for a host that wants to use one itself.
  const platform::Platform& Ports() const;

  // The DOS path of one of the system's paths, made absolute: what the members of the library take and give.
  std::string ToDosPath(std::string_view systemPath) const;
  // The system's path; nothing where the DOS path leads nowhere.
  std::optional<std::string> ToSystemPath(std::string_view dosPath) const;

  // Ends every child that is running, with what it started: the compile that is going on fails, and with it
  // the run. For Options::onWait, or another thread.
  void StopChildren();

 private:
  struct Parts;
  std::unique_ptr<Parts> m_parts;
};

}  // namespace hearthmake::embedding
