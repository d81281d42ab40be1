#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "support/HostCommand.hpp"
#include "support/PosixFolder.hpp"

// The commands of the documents for people, run one after the other as a reader would: in a shell, from the
// folder of the repository, with a home of its own.
//
// A block of commands is fenced as ```sh, or as ```sh fails when it ends with another exit status than 0. A
// ```text block behind it is what it prints: each line must come, in this order, … stands for what changes.

namespace hearthmake {
namespace {

struct Commands {
  std::size_t line = 0;  // of the fence
  bool fails = false;
  std::string text;
  std::vector<std::string> prints;
};

std::vector<Commands> CommandsOf(const std::string& markdown) {
  std::vector<Commands> all;
  std::string fence;
  std::size_t number = 0;
  for (const std::string& line : support::LinesOf(markdown)) {
    ++number;
    if (line.starts_with("```")) {
      fence = fence.empty() ? line.substr(3) + " " : "";
      if (fence.starts_with("sh ")) all.push_back({number, fence == "sh fails ", {}, {}});
    } else if (fence.starts_with("sh ")) {
      all.back().text += line + "\n";
    } else if (fence == "text " && !all.empty()) {
      all.back().prints.push_back(line);
    }
  }
  return all;
}

std::string ContentOf(const std::string& file) {
  std::ifstream stream(std::string(SOURCE_DIRECTORY) + "/" + file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

std::string Quoted(const std::string& text) {
  std::string quoted = "'";
  for (const char c : text) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return quoted + "'";
}

std::string Replaced(std::string text, const std::string& what, const std::string& by) {
  for (std::size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += by.size())
    text.replace(at, what.size(), by);
  return text;
}

// Whether the pieces between … come in this order.
bool Shows(const std::string& printed, const std::string& wanted) {
  std::size_t from = 0;
  std::size_t at = 0;
  while (from <= wanted.size()) {
    const std::size_t dots = std::min(wanted.find("…", from), wanted.size());
    const std::string piece = wanted.substr(from, dots - from);
    at = printed.find(piece, at);
    if (at == std::string::npos) return false;
    at += piece.size();
    from = dots + std::string("…").size();
  }
  return true;
}

class Documents : public testing::TestWithParam<const char*> {
 protected:
  Documents() {
    for (const char* folder : {"home", "tmp"}) root.MakeFolder(folder);
  }

  // All blocks in one shell, since each goes on where the one before stood; each prints to a file of its own.
  // The exit status of each comes in the order of the blocks; a block that fails unasked is the last.
  std::vector<std::string> Run(const std::vector<Commands>& blocks) {
    std::string script = "cd " + Quoted(SOURCE_DIRECTORY) + "\n";
    for (std::size_t i = 0; i < blocks.size(); ++i) {
      const std::string block = root.Path("block" + std::to_string(i));
      // As if the build of this test were the one that the document speaks of.
      root.MakeFile("block" + std::to_string(i),
                    Replaced(blocks[i].text, "$PWD/build/release", BINARY_DIRECTORY));
      const std::string run = "source " + Quoted(block) + " >" + Quoted(block + ".out") + " 2>&1 </dev/null";
      // A failure ends the shell, but for the block behind which || stands.
      script += blocks[i].fails ? "status=0; " + run + " || status=$?\n"
                                : "status=failed; set -e; " + run + "\nset +e; status=0\n";
      script += "echo $status >>" + Quoted(root.Path("statuses")) + "\n";
    }
    root.MakeFile("run", script);
    const std::string clean =
        "env -i PATH=/usr/local/bin:/usr/bin:/bin LANG=C.UTF-8 HOME=" + Quoted(root.Path("home")) +
        " TMPDIR=" + Quoted(root.Path("tmp")) + " bash " + Quoted(root.Path("run"));
    [[maybe_unused]] const int status = std::system(clean.c_str());
    std::vector<std::string> statuses = support::LinesOf(root.Content("statuses"));
    if (statuses.size() < blocks.size()) statuses.emplace_back("failed");
    return statuses;
  }

  std::string Printed(std::size_t block) { return root.Content("block" + std::to_string(block) + ".out"); }

  support::PosixFolder root;
};

TEST_P(Documents, ShowCommandsThatDoWhatTheySay) {
  const std::string file = std::string("docs/") + GetParam();
  const std::vector<Commands> blocks = CommandsOf(ContentOf(file));
  ASSERT_FALSE(blocks.empty());
  const std::vector<std::string> statuses = Run(blocks);
  for (std::size_t i = 0; i < blocks.size() && i < statuses.size(); ++i) {
    const std::string place = file + ", line " + std::to_string(blocks[i].line) + ":\n" + blocks[i].text;
    ASSERT_EQ(statuses[i] != "0", blocks[i].fails) << place << Printed(i);
    std::string rest = Printed(i);
    for (const std::string& wanted : blocks[i].prints) {
      std::istringstream lines(rest);
      bool isFound = false;
      for (std::string line; !isFound && std::getline(lines, line);) isFound = Shows(line, wanted);
      ASSERT_TRUE(isFound) << place << "does not print behind the lines before it: " << wanted
                           << "\nbut in all:\n"
                           << Printed(i);
      std::ostringstream left;
      left << lines.rdbuf();
      rest = left.str();
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Each, Documents, testing::Values("scripts.md", "tour.md"),
                         [](const auto& tested) { return Replaced(tested.param, ".md", ""); });

}  // namespace
}  // namespace hearthmake
