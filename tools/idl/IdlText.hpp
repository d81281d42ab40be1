#pragma once

#include <string>

#include "automation/Interface.hpp"
#include "interfaces/PublicClasses.hpp"

namespace hearthmake::idl {

// The id of a class in the type library. One that hosts can't create has none of its own: it gets the
// number that follows its interface's.
std::string CoclassId(const automation::Interface& declared);

// The parts of the text below, for those who look at one.
std::string EnumerationText(const automation::Enumeration& enumeration);
std::string InterfaceText(const automation::Interface& declared);
std::string EventsText(const automation::Interface& events);
std::string CoclassText(const PublicClass& entry);

// The IDL of the whole library, from the declarations of its public classes: enumerations, dual interfaces,
// source interfaces and classes, in the order of PublicClasses. ASCII; lines end in LF.
std::string LibraryText();

}  // namespace hearthmake::idl
