#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace hearthmake::vb6 {

// What the environment asks the stand-in to do otherwise than a compiler would, so that a build run can be
// tested; the README beside this file lists the variables.
class Controls {
 public:
  static Controls FromEnvironment();

  bool SkipSources() const { return m_skipSources; }
  void SetSkipSources() { m_skipSources = true; }
  bool SkipReferences() const { return m_skipReferences; }
  // Libraries of the system that are not on this machine are taken for present.
  bool AssumeSystemLibraries() const { return m_assumeSystemLibraries; }
  const std::optional<std::string>& Seed() const { return m_seed; }
  // Where the images lie that components are copies of (stub.dll, stub.exe); empty for images that do
  // nothing.
  const std::string& StubFolder() const { return m_stubFolder; }

  bool Fails(std::string_view project) const { return Names(m_fail, project); }
  bool Breaks(std::string_view project) const { return Names(m_break, project); }

  // Sleeps, hangs or dies, when the project is named for it.
  void Disturb(std::string_view project) const;

 private:
  static bool Names(const std::string& list, std::string_view project);
  unsigned MillisecondsFor(std::string_view project) const;

  bool m_skipSources = false;
  bool m_skipReferences = false;
  bool m_assumeSystemLibraries = true;
  std::optional<std::string> m_seed;
  std::string m_stubFolder;
  std::string m_fail;
  std::string m_break;
  std::string m_crash;
  std::string m_hang;
  std::string m_slow;
};

}  // namespace hearthmake::vb6
