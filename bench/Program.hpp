#pragma once

#include <string>
#include <utility>
#include <vector>

namespace hearthmake::bench {

using Variables = std::vector<std::pair<std::string, std::string>>;

struct ProgramRun {
  double seconds = 0;
  long peakKilobytes = 0;
  int status = 0;
};

// Runs a program with these variables besides those of this process, its output to a file or thrown away.
ProgramRun RunProgram(const std::vector<std::string>& arguments, const Variables& variables,
                      const std::string& outputFile = {});

// The bare loop: each command line is spawned and waited for, nothing else. Seconds for all.
double SpawnLoop(const std::vector<std::vector<std::string>>& commands, const Variables& variables);

double Median(std::vector<double> values);

}  // namespace hearthmake::bench
