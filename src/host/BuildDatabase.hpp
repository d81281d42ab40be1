#pragma once

#include <string>

#include "host/Composition.hpp"

namespace hearthmake::host {

// The file Build.mdb in the data folder, as the person at the keyboard has to know about it: the library
// says only that the database is unavailable.
class BuildDatabase {
 public:
  BuildDatabase(std::string dataFolder, const Composition& library);

  const std::string& Path() const { return m_path; }
  // HostError, with what to do, when there is no database that the library can use.
  void Require() const;
  // The same, but makes the data folder and the database where they are missing.
  void RequireOrMake() const;
  // Makes the data folder where it is missing. HostError when it can't be made.
  void MakeFolder() const;
  // Why the library may have failed to use a database that passed; empty when nothing is to be seen.
  std::string Diagnose() const;

 private:
  void Make() const;
  void RequireUsable() const;

  std::string m_dataFolder;
  std::string m_path;
};

}  // namespace hearthmake::host
