#include "host/builds/BinaryState.hpp"

#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include "automation/Error.hpp"
#include "automation/Text.hpp"
#include "foundation/Apartment.hpp"
#include "foundation/Paths.hpp"
#include "host/Console.hpp"

namespace hearthmake::host {

namespace {

using automation::Hex;
using platform::RegistryRoot;

std::string BinaryText(const BinaryState& state) {
  return Printable(state.path) + (state.isThere ? "" : "  (not there yet)");
}

std::string LibraryText(const BinaryState& state) {
  if (!state.library.empty()) return state.library + " " + state.version;
  return state.problem.empty() ? "" : fmt::format("({})", Printable(state.problem));
}

std::string RegisteredText(const BinaryState& state) {
  if (!state.isComponent) return "(not an ActiveX component)";
  if (state.IsRegistered()) return "True";
  if (state.registeredPath.empty()) return "False";
  return fmt::format("False  (as {})", Printable(state.registeredPath));
}

nlohmann::ordered_json TextOrNull(const std::string& text) {
  return text.empty() ? nlohmann::ordered_json() : nlohmann::ordered_json(text);
}

}  // namespace

bool BinaryState::IsRegistered() const {
  return !registeredPath.empty() &&
         automation::EqualsIgnoreCase(std::string(WithoutResourceIndex(registeredPath)), path);
}

// In whatever language it was registered.
std::string RegisteredLibrary(const std::string& library, const std::string& version) {
  platform::Registry& registry = *Ports().registry;
  const std::string key = "TypeLib\\" + library + "\\" + version;
  for (const std::string& locale : registry.SubKeys(RegistryRoot::ClassesRoot, key)) {
    const std::string place = fmt::format("{}\\{}\\win32", key, locale);
    if (const auto file = registry.Query(RegistryRoot::ClassesRoot, place, "")) return file->data;
  }
  return {};
}

BinaryState ReadBinary(Project& project) {
  BinaryState state;
  state.path = project.FullPath32();
  state.isThere = Ports().files->FileExists(state.path);
  state.isComponent = project.ISActiveX();
  if (!state.isComponent || !state.isThere) return state;
  try {
    const platform::TypeLibInfo library = Ports().typeLibs->Read(state.path);
    state.library = library.guid;
    state.version = Hex(library.majorVersion) + "." + Hex(library.minorVersion);
    state.registeredPath = RegisteredLibrary(state.library, state.version);
  } catch (const automation::Error& error) {
    state.problem = error.Description();
  }
  return state;
}

std::string BinaryLines(const BinaryState& state) {
  constexpr const char* kLine = "{:<24} {}\n";
  return fmt::format(kLine, "Binary", BinaryText(state)) +
         fmt::format(kLine, "TypeLibrary", LibraryText(state)) +
         fmt::format(kLine, "Registered", RegisteredText(state));
}

nlohmann::ordered_json BinaryJson(const BinaryState& state) {
  return {{"path", state.path},
          {"exists", state.isThere},
          {"typeLibrary", TextOrNull(state.library)},
          {"version", TextOrNull(state.version)},
          {"registered", state.IsRegistered()},
          {"registeredPath", TextOrNull(state.registeredPath)}};
}

}  // namespace hearthmake::host
