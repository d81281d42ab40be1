#pragma once

#include <string>

#include "automation/Interface.hpp"
#include "interfaces/PublicClasses.hpp"

namespace hearthmake::idl {

// The parts of the text below, for those who look at one.
std::string EnumerationText(const automation::Enumeration& enumeration);
std::string InterfaceText(const automation::Interface& declared);
std::string EventsText(const automation::Interface& events);
std::string CoclassText(const PublicClass& entry);

// The IDL of the whole library, from the declarations of its public classes: enumerations, dual interfaces,
// source interfaces and classes, in the order of PublicClasses. ASCII; lines end in LF.
std::string LibraryText();

}  // namespace hearthmake::idl
