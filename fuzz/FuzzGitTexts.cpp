#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "adapters/git/IniFile.hpp"
#include "adapters/git/ItemPath.hpp"
#include "adapters/git/Message.hpp"
#include "adapters/git/StatCache.hpp"
#include "automation/Error.hpp"

using namespace hearthmake::git;

// The texts that the git adapter reads: a database's ini file, the message of a tag or commit, the memory of
// a working folder, the path of an item. What is written of a message is read as it was.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  const IniFile ini(text);
  ini.Value("git", "repository");
  StatCache::Parse(text);
  const Message message = ParseMessage(text);
  const Message again = ParseMessage(PrintMessage(message.comment, {{"Label", text}, {"Path", "$/"}}));
  if (again.Find("Label") != text || again.Find("Path") != "$/") std::abort();
  try {
    const ItemPath path = ItemPath::Parse(text);
    if (ItemPath::Parse(path.Spec()).Names() != path.Names()) std::abort();
  } catch (const hearthmake::automation::Error&) {
  }
  return 0;
}
