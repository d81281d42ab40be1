#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "automation/Declare.hpp"
#include "automation/Object.hpp"
#include "platform/Platform.hpp"
#include "vbscript/Host.hpp"

namespace hearthmake::vbscript {

// A global object with the method Print, which keeps the lines that it is given.
class Recorder : public automation::Object {
 public:
  const automation::Interface& Declaration() const override {
    static const automation::Interface declaration =
        automation::Declare("Recorder", "_Recorder", "").method<&Recorder::Print>("Print", {"text"}).build();
    return declaration;
  }
  void Print(const automation::Variant& text) { m_lines.push_back(automation::ToText(text)); }
  const std::vector<std::string>& Lines() const { return m_lines; }

 private:
  std::vector<std::string> m_lines;
};

// A host that keeps what it was asked for and gives set answers.
class ScriptHost : public Host {
 public:
  ScriptHost() = default;
  explicit ScriptHost(platform::Platform ports) : m_platform(std::move(ports)) {}

  const platform::Platform& Platform() override { return m_platform; }
  std::int32_t ShowMessage(std::string_view prompt, std::int32_t, std::string_view) override {
    messages.emplace_back(prompt);
    return button;
  }
  std::string AskForText(std::string_view prompt, std::string_view, std::string_view defaultText) override {
    messages.emplace_back(prompt);
    return std::string(defaultText);
  }
  automation::Ref<automation::Object> CreateObject(std::string_view progId) override {
    return create ? create(progId) : nullptr;
  }
  automation::Ref<automation::Object> GetObject(std::string_view, std::string_view) override {
    return nullptr;
  }

  std::vector<std::string> messages;
  std::int32_t button = 1;
  std::function<automation::Ref<automation::Object>(std::string_view progId)> create;  // none when empty

 private:
  platform::Platform m_platform;
};

}  // namespace hearthmake::vbscript
