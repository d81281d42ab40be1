#pragma once

#include "automation/Error.hpp"

namespace hearthmake::dao {

inline constexpr const char* kWorkspaceSource = "DAO.Workspace";
inline constexpr const char* kDatabaseSource = "DAO.Database";
inline constexpr const char* kRecordsetSource = "DAO.Recordset";

// Does what a function does. The engine's own errors pass; those of the call itself and of conversions, which
// name no source, get one.
template <class Function>
auto DaoCall(const char* source, const Function& function) {
  try {
    return function();
  } catch (const automation::Error& error) {
    if (!error.Source().empty()) throw;
    throw automation::Error(error.Number(), source, error.Description());
  }
}

}  // namespace hearthmake::dao
