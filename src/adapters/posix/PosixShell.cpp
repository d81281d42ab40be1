#include "adapters/posix/PosixShell.hpp"

#include <optional>
#include <vector>

#include "adapters/posix/CommandLine.hpp"
#include "automation/Error.hpp"
#include "automation/Text.hpp"

namespace hearthmake::posix {

namespace {

using automation::EqualsIgnoreCaseAscii;

std::string_view FileName(std::string_view path) {
  const std::size_t backslash = path.find_last_of("\\/");
  return backslash == std::string_view::npos ? path : path.substr(backslash + 1);
}

// regsvr32.exe /S [/U] FILE
std::optional<SelfRegistration> ReadRegsvr(const std::vector<std::string>& arguments) {
  SelfRegistration result;
  for (const std::string& argument : arguments) {
    if (EqualsIgnoreCaseAscii(argument, "/u")) {
      result.isRemoval = true;
    } else if (!argument.starts_with('/')) {
      result.path = argument;
    }
  }
  if (result.path.empty()) return std::nullopt;
  return result;
}

std::optional<SelfRegistration> ReadSelfRegistration(std::string_view commandLine) {
  const auto program = CommandLine(commandLine).NextCandidate();
  if (!program) return std::nullopt;
  const auto arguments = CommandLine::SplitArguments(program->arguments);
  if (EqualsIgnoreCaseAscii(FileName(program->program), "regsvr32.exe")) return ReadRegsvr(arguments);
  if (arguments.size() != 1) return std::nullopt;
  if (EqualsIgnoreCaseAscii(arguments[0], "/RegServer"))
    return SelfRegistration{std::string(program->program)};
  if (EqualsIgnoreCaseAscii(arguments[0], "/UnregServer"))
    return SelfRegistration{std::string(program->program), true};
  return std::nullopt;
}

}  // namespace

PosixShell::PosixShell(std::shared_ptr<platform::ProcessLauncher> launcher, Registrar registrar)
    : m_launcher(std::move(launcher)), m_registrar(std::move(registrar)) {}

void PosixShell::Start(std::string_view commandLine, platform::WindowState /*window*/) {
  if (m_registrar) {
    if (const auto registration = ReadSelfRegistration(commandLine)) {
      try {
        m_registrar(*registration);
      } catch (const automation::Error&) {
        // A component without type library has nothing to register.
      }
      return;
    }
  }
  if (m_launcher->Start(commandLine)) return;
  const auto program = CommandLine(commandLine).NextCandidate();
  automation::Raise(automation::RuntimeError::FileNotFound, "Shell",
                    std::string(program ? program->program : commandLine));
}

}  // namespace hearthmake::posix
