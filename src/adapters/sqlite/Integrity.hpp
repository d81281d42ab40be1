#pragma once

#include <string>
#include <vector>

namespace hearthmake::sqlite {

// What SQLite finds wrong with the structure of a database file, at most ten lines; nothing when it is sound.
// A file that can't be read is wrong too. Changes nothing and raises nothing.
std::vector<std::string> IntegrityProblems(const std::string& posixPath);

}  // namespace hearthmake::sqlite
