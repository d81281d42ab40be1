#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "adapters/win32/ComHeaders.hpp"
#include "adapters/win32/ObjectBorder.hpp"
#include "adapters/win32/VariantConversion.hpp"

namespace hearthmake::win32 {

// The id of a member of somebody's object; nothing when it has none of that name.
std::optional<DISPID> FindMember(IDispatch& object, std::string_view name);

// A late-bound call. Arguments stand in the order of the parameters; for Let and Set the new value is the
// last. An argument that refers to another variant goes as a reference, and its target gets what the callee
// leaves there. The failure of the call is raised with number, source and description of the callee.
void CallMember(IDispatch& object, DISPID member, automation::InvokeKind kind,
                std::span<automation::Variant> arguments, ObjectBorder& border, OwnedVariant& result);

}  // namespace hearthmake::win32
