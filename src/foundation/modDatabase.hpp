#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "platform/Database.hpp"

// The one open build database of the apartment.
namespace hearthmake::modDatabase {

// Full path of Build.mdb, in the library's own folder.
std::string DatabasePath();

// The open database; opens it at first use and after each CloseDatabase. A read-only mark on the file
// (left by a source-control get) is cleared first. Any failure is beNoDatabase, source "DB", "The
// database is unavailable."; nothing is kept then. Callers ask anew for each operation.
std::shared_ptr<platform::Database> GetDatabase();

void CloseDatabase();

// A dynaset over a selection of the open database.
std::unique_ptr<platform::Recordset> OpenDynaset(const std::string& sql);

// "SELECT * FROM <table> WHERE <key> = <id>"
std::unique_ptr<platform::Recordset> OpenRow(const std::string& selection, std::int32_t id);

// Runs the work between BeginTrans and CommitTrans of the default workspace. An error rolls this level
// back and goes on to the caller.
void InTransaction(const std::function<void()>& work);

// Stores many small changes, each complete in itself, in few transactions: a page that many of them touch
// is then written once. Left by an error, it still stores the steps that were done before.
class Batch {
 public:
  Batch();
  Batch(const Batch&) = delete;
  Batch& operator=(const Batch&) = delete;
  ~Batch();

  // One change is complete. Every so many of them are committed, so that other processes get their turn
  // and a kill loses little.
  void Step();
  // The last step was done.
  void Finish();

 private:
  // A connection of its own: an event handler may make the library close the other one, and the last one
  // to be closed would take the open transaction with it.
  std::shared_ptr<platform::Database> m_database;
  int m_steps = 0;
  bool m_isOpen = false;
};

}  // namespace hearthmake::modDatabase
