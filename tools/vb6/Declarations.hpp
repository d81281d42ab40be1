#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "vb6/PublicInterface.hpp"

namespace hearthmake::vb6 {

// What kind of procedure a statement opens.
enum class ProcedureKind : std::uint8_t { Sub, Function, Property };

// The procedure that the statement opens (its head), if it does.
std::optional<ProcedureKind> OpenedProcedure(std::string_view statement);
// The procedure that the statement closes (End Sub …), if it does.
std::optional<ProcedureKind> ClosedProcedure(std::string_view statement);
// "Sub", "Function" or "Property".
std::string_view ProcedureWord(ProcedureKind kind);

// The public members that one statement of a class's declarations or one procedure head makes: none, one,
// or a Get and a Let (Set) for each public variable. What can't be understood makes none; it is not for
// this compiler to judge.
std::vector<Member> PublicMembers(std::string_view statement);

}  // namespace hearthmake::vb6
