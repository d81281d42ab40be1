#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "automation/Interface.hpp"

namespace hearthmake {

// The library as its type library names it. A ProgID is the name, a dot and the name of the class.
struct Library {
  const char* name;
  const char* title;
  const char* id;
  std::uint16_t majorVersion;
  std::uint16_t minorVersion;
};
const Library& PublicLibrary();

// A public class of the library.
struct PublicClass {
  const automation::Interface& (*describe)();
  // Makes one as CreateObject does; null for a class whose objects come from their owners.
  automation::Ref<automation::Object> (*create)();
};

// The id of a class in the type library. One that hosts can't create has none of its own: it gets the
// number that follows its interface's.
std::string CoclassId(const automation::Interface& declared);

// Every public class, in the order of the object model.
std::span<const PublicClass> PublicClasses();

// Every public enumeration.
std::span<const automation::Enumeration* const> PublicEnumerations();

// The class of a ProgID ("Hearthmake.Build", in any case) that CreateObject makes objects of; null for a name
// that is none of these.
const PublicClass* FindCreatableClass(std::string_view progId);

}  // namespace hearthmake
