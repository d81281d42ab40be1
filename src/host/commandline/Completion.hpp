#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace hearthmake::host {

// What may stand at the cursor of a command line that is being typed.
struct Completion {
  enum class Files { None, Any, Folders };  // paths, which shells complete best themselves

  struct Value {
    std::string text;
    std::string description;  // one line, may be empty
  };

  Files files = Files::None;
  std::vector<Value> values;
};

// Answers from the declarations of the command's words and options, and of the properties of the public
// classes; names of builds, projects and so on come from the database, which is only read. The words are
// those behind the command's name, the last the one at the cursor. Raises nothing that a user is to see:
// where something can't be had, it is left out.
Completion Complete(const CLI::App& app, const std::vector<std::string>& words);

// The hidden word __complete, which the completions of the shells call:
//   __complete words WORD... CURRENT    the words without quotes
//   __complete bash LINE CURRENT        the line up to the cursor, and what readline is going to replace
// The answer is a line that says what the shell is to offer: "values", or "files" or "folders" of its own
// beside them. Then a line for each value; for bash as it is to be inserted, else with its description
// behind a tab.
std::string AnswerShell(const CLI::App& app, const std::vector<std::string>& arguments);

}  // namespace hearthmake::host
