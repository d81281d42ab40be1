#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace hearthmake::host {

// What came over of a Jet database.
struct JetSummary {
  std::string format;                                        // "Jet 4"
  std::vector<std::pair<std::string, std::size_t>> tables;   // rows of each, in the order of the schema
  std::vector<std::pair<std::int32_t, std::string>> builds;  // id and name
  std::vector<std::string> leftOut;                          // "Table" or "Table.Column"
  std::vector<std::string> missing;                          // the same, of what was not in the file
};

// How far it has come: a table and its rows so far.
using JetProgress = std::function<void(const std::string& table, std::size_t rows)>;

// Reads a Jet database into a new build database, which takes its place when it is whole; ids stay as they
// are. HostError with the reason, and nothing written, where the file is none that can be read, the target is
// there already and not to be replaced, or a stop is wanted. The file is read in a process of the program, as
// jet::ReadingProcess has it.
JetSummary ImportJet(const std::string& file, const std::string& target, bool isReplacing,
                     const JetProgress& progress, const std::string& readingProgram);

// Whether the file begins as a Jet database does.
bool LooksLikeJet(const std::string& file);

// What to do with a Jet database that lies where a build database is looked for.
std::string JetAdvice(const std::string& file);

}  // namespace hearthmake::host
