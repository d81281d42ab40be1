#pragma once

#include <string>

#include "vb6/Guid.hpp"
#include "vb6/PublicInterface.hpp"

namespace hearthmake::vb6 {

enum class Compatibility : std::uint8_t { None = 0, Project = 1, Binary = 2 };

// The library of the binary that a project is to be compatible with. Of its members only signature and
// dispatch id count.
struct EarlierLibrary {
  PublicInterface library;
  // False for a binary of another compiler, whose members can't be compared: only its classes count then.
  bool membersKnown = true;
};

// Gives a library its identifiers, version and dispatch ids:
//
// - without compatibility, or without an earlier library, everything is new and the version is 1.0;
// - under project compatibility the identifiers of the library and of its classes stay, that of an
//   interface stays while its members do, and the version rises: the major number when something public is
//   gone or changed, else the minor one;
// - under binary compatibility nothing public may go or change; then the identifiers stay, and the minor
//   version rises by one only when something was added. Members keep their places, additions follow.
//
// Returns what breaks binary compatibility, or an empty text. earlier may be nullptr.
std::string AssignIdentity(PublicInterface& library, Compatibility mode, const EarlierLibrary* earlier,
                           const GuidSource& guids);

}  // namespace hearthmake::vb6
