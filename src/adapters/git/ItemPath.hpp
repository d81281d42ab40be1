#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace hearthmake::git {

// Where an item is in the database: the names from the root down, "$/Suite/Lib".
class ItemPath {
 public:
  ItemPath() = default;  // the root, "$/"
  // Both slashes separate, as many of them as there are; the "$" may be left out. Error 5 for a name that
  // leads elsewhere ("..", "C:").
  static ItemPath Parse(std::string_view spec);

  bool IsRoot() const { return m_names.empty(); }
  const std::vector<std::string>& Names() const { return m_names; }
  ItemPath Child(std::string_view name) const;
  // Whether this is the other item or one below it, without regard to case.
  bool IsAtOrBelow(const ItemPath& other) const;
  // "$/Suite/Lib", "$/" for the root.
  std::string Spec() const;
  // As git names it: "Suite/Lib", "" for the root.
  std::string TreePath() const;

 private:
  std::vector<std::string> m_names;
};

// Whether an entry of a tree can be the name of a file or folder in a working folder. Not so: what leads out
// of the folder, what is no single name of a DOS path, and what git keeps for itself (".git" in any spelling
// that a file system may take for it).
bool IsSafeName(std::string_view name);

}  // namespace hearthmake::git
