#include "host/scripting/CommandScriptHost.hpp"

#include <array>
#include <string>
#include <vector>

#include "automation/Text.hpp"
#include "host/system/MachineClasses.hpp"
#include "interfaces/PublicClasses.hpp"

namespace hearthmake::host {

namespace {

struct Button {
  std::int32_t number;
  const char* name;
};

constexpr Button kOk{1, "OK"};
constexpr Button kCancel{2, "Cancel"};
constexpr Button kAbort{3, "Abort"};
constexpr Button kRetry{4, "Retry"};
constexpr Button kIgnore{5, "Ignore"};
constexpr Button kYes{6, "Yes"};
constexpr Button kNo{7, "No"};

// By the low bits of a message's style.
std::vector<Button> ButtonsOf(std::int32_t style) {
  switch (style & 0xF) {
    case 1: return {kOk, kCancel};
    case 2: return {kAbort, kRetry, kIgnore};
    case 3: return {kYes, kNo, kCancel};
    case 4: return {kYes, kNo};
    case 5: return {kRetry, kCancel};
    default: return {kOk};
  }
}

const Button& DefaultOf(const std::vector<Button>& buttons, std::int32_t style) {
  const auto index = static_cast<std::size_t>(style >> 8 & 3);
  return index < buttons.size() ? buttons[index] : buttons.front();
}

// The first letters tell the buttons of one message apart.
const Button* ButtonNamed(const std::vector<Button>& buttons, std::string_view answer) {
  for (const Button& button : buttons) {
    const std::string_view name = button.name;
    if (!answer.empty() && automation::EqualsIgnoreCaseAscii(answer, name.substr(0, answer.size()))) {
      return &button;
    }
  }
  return nullptr;
}

}  // namespace

std::int32_t CommandScriptHost::ShowMessage(std::string_view prompt, std::int32_t style,
                                            std::string_view /*title*/) {
  const std::vector<Button> buttons = ButtonsOf(style);
  const Button& preset = DefaultOf(buttons, style);
  if (!m_isInteractive) return preset.number;
  Show(prompt);
  if (!CanAsk() || buttons.size() == 1) return preset.number;
  std::string question;
  for (const Button& button : buttons) question += (question.empty() ? "[" : "/") + std::string(button.name);
  question += "] (" + std::string(preset.name) + ") ";
  while (true) {
    m_console.Output().Write(question);
    std::string answer;
    if (!m_console.ReadLine(answer) || automation::Trim(answer).empty()) return preset.number;
    if (const Button* chosen = ButtonNamed(buttons, automation::Trim(answer))) return chosen->number;
  }
}

std::string CommandScriptHost::AskForText(std::string_view prompt, std::string_view /*title*/,
                                          std::string_view defaultText) {
  if (!CanAsk()) return std::string(defaultText);
  Show(prompt);
  m_console.Output().Write(defaultText.empty() ? "> " : "(" + std::string(defaultText) + ") > ");
  std::string answer;
  if (!m_console.ReadLine(answer)) return "";
  return answer.empty() ? std::string(defaultText) : answer;
}

automation::Ref<automation::Object> CommandScriptHost::CreateObject(std::string_view progId) {
  const PublicClass* found = FindCreatableClass(progId);
  if (found == nullptr) return CreateOfMachine(progId);
  m_prepareLibrary();
  return found->create();
}

std::int32_t CommandScriptHost::DefaultAnswer(std::int32_t style) {
  return DefaultOf(ButtonsOf(style), style).number;
}

automation::Ref<automation::Object> CommandScriptHost::GetObject(std::string_view path,
                                                                 std::string_view progId) {
  return GetOfMachine(path, progId);
}

void CommandScriptHost::Show(std::string_view text) {
  m_console.Output().Write(automation::ReplaceAll(text, "\r\n", "\n") + "\n");
}

}  // namespace hearthmake::host
