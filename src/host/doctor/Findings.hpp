#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace hearthmake::host {

enum class Severity {
  Ok,
  Note,     // worth to know
  Warning,  // works, but perhaps not as it is meant to
  Error,    // a build will fail
};
// "ok", "note", "warning", "error"
const char* SeverityName(Severity severity);

struct Finding {
  Severity severity = Severity::Ok;
  std::string check;  // the word for programs of what was looked at
  std::string what;
  std::string where;  // a file, a project or a setting; may be empty
  std::string mend;   // what to do: a command line where there is one; may be empty
};

// What an examination comes to.
class Findings {
 public:
  // What is added from now on belongs to this check.
  void Begin(std::string check) { m_check = std::move(check); }

  void Ok(std::string what, std::string where = {}) {
    Add(Severity::Ok, std::move(what), std::move(where), {});
  }
  void Note(std::string what, std::string where = {}, std::string mend = {}) {
    Add(Severity::Note, std::move(what), std::move(where), std::move(mend));
  }
  void Warn(std::string what, std::string where, std::string mend = {}) {
    Add(Severity::Warning, std::move(what), std::move(where), std::move(mend));
  }
  void Fail(std::string what, std::string where, std::string mend = {}) {
    Add(Severity::Error, std::move(what), std::move(where), std::move(mend));
  }

  const std::vector<Finding>& All() const { return m_findings; }
  std::size_t Count(Severity severity) const;

 private:
  void Add(Severity severity, std::string what, std::string where, std::string mend);

  std::string m_check;
  std::vector<Finding> m_findings;
};

}  // namespace hearthmake::host
