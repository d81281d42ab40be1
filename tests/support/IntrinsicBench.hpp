#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "automation/Error.hpp"
#include "automation/OleDate.hpp"
#include "automation/Utf.hpp"
#include "vbscript/intrinsics/CallIntrinsic.hpp"
#include "vbscript/values/Conversions.hpp"

namespace hearthmake::vbscript {

class SetClock : public platform::Clock {
 public:
  double Now() override { return now; }
  void Sleep(std::chrono::milliseconds) override {}
  double now = 0;
};

// A host that keeps what it was asked and answers what it was told to.
class AskedHost : public Host {
 public:
  AskedHost() { m_platform.clock = clock; }
  const platform::Platform& Platform() override { return m_platform; }
  std::int32_t ShowMessage(std::string_view prompt, std::int32_t style, std::string_view title) override {
    asked.push_back(std::string(prompt) + "|" + std::to_string(style) + "|" + std::string(title));
    return 6;
  }
  std::string AskForText(std::string_view prompt, std::string_view title,
                         std::string_view defaultText) override {
    asked.push_back(std::string(prompt) + "|" + std::string(title) + "|" + std::string(defaultText));
    return answer;
  }
  automation::Ref<automation::Object> CreateObject(std::string_view progId) override {
    asked.push_back("create " + std::string(progId));
    return progId == "Host.Thing" ? object : nullptr;
  }
  automation::Ref<automation::Object> GetObject(std::string_view path, std::string_view progId) override {
    asked.push_back("get " + std::string(path) + "|" + std::string(progId));
    return path == "host:thing" || progId == "Host.Running" ? object : nullptr;
  }

  std::shared_ptr<SetClock> clock = std::make_shared<SetClock>();
  std::string answer;
  automation::Ref<automation::Object> object;
  std::vector<std::string> asked;

 private:
  platform::Platform m_platform;
};

// Calls intrinsics by name and tells what came of it in one line: subtype and value, or the error.
class IntrinsicBench {
 public:
  automation::Variant Call(std::string_view name, std::vector<automation::Variant> arguments) {
    for (const auto& list :
         {TextIntrinsics(), ArrayIntrinsics(), DateIntrinsics(), FormatIntrinsics(), HostIntrinsics()}) {
      if (const Intrinsic* intrinsic = FindIntrinsic(list, name))
        return CallIntrinsic(*intrinsic, name, m_context, arguments);
    }
    return automation::Variant::FromText("there is no " + std::string(name));
  }
  std::string Tell(std::string_view name, std::vector<automation::Variant> arguments) {
    try {
      return Show(Call(name, std::move(arguments)));
    } catch (const automation::Error& error) {
      return "error " + std::to_string(error.Number()) + " " + error.Description();
    }
  }
  Context& SharedContext() { return m_context; }
  AskedHost& TheHost() { return m_host; }

  static std::string Show(const automation::Variant& value) {
    using automation::VariantType;
    switch (value.Type()) {
      case VariantType::Empty: return "Empty";
      case VariantType::Null: return "Null";
      case VariantType::Object: return value.AsObject() == nullptr ? "Nothing" : "Object";
      case VariantType::Array: return ShowArray(*value.AsArray());
      case VariantType::Date: return "Date " + automation::FormatIsoDate(value.AsDouble());
      default: return TypeText(value.Type()) + " " + automation::Utf16ToUtf8(ToText16(value));
    }
  }

 private:
  static std::string ShowArray(const automation::ArrayBuffer& array) {
    std::string text = "[";
    for (const automation::Variant& element : array.Elements())
      text += (text.size() > 1 ? ", " : "") + Show(element);
    return text + "]";
  }
  static std::string TypeText(automation::VariantType type) {
    using automation::VariantType;
    switch (type) {
      case VariantType::Integer: return "Integer";
      case VariantType::Long: return "Long";
      case VariantType::Single: return "Single";
      case VariantType::Double: return "Double";
      case VariantType::Boolean: return "Boolean";
      case VariantType::Currency: return "Currency";
      case VariantType::Byte: return "Byte";
      case VariantType::String: return "String";
      default: return "type " + std::to_string(static_cast<int>(type));
    }
  }

  AskedHost m_host;
  Context m_context{m_host, {}, {}};
};

// Short ways to write arguments.
inline automation::Variant T(std::u16string_view text) { return automation::Variant::FromUtf16(text); }
inline automation::Variant N(std::int32_t number) { return automation::Variant::FromLong(number); }
inline automation::Variant D(double number) { return automation::Variant::FromDouble(number); }
inline automation::Variant B(bool value) { return automation::Variant::FromBoolean(value); }
inline automation::Variant NullValue() { return automation::Variant::Null(); }
inline automation::Variant EmptyValue() { return {}; }
inline automation::Variant Missing() { return automation::Variant::Missing(); }
inline automation::Variant Nothing() { return automation::Variant::FromObject(nullptr); }
inline automation::Variant Moment(std::int32_t year, std::int32_t month, std::int32_t day,
                                  std::int32_t hour = 0, std::int32_t minute = 0, std::int32_t second = 0) {
  return automation::Variant::FromDate(automation::JoinDate({year, month, day, hour, minute, second}));
}
inline automation::Variant List(std::vector<automation::Variant> values) {
  automation::Ref<automation::ArrayBuffer> array(
      new automation::ArrayBuffer({{0, static_cast<std::int32_t>(values.size())}}));
  for (std::size_t i = 0; i < values.size(); ++i) array->Elements()[i] = std::move(values[i]);
  return automation::Variant::FromArray(array);
}

// One line of a table of tests.
struct IntrinsicCase {
  std::string_view name;
  std::vector<automation::Variant> arguments;
  std::string expected;
};

inline std::string Describe(const IntrinsicCase& line) {
  std::string text(line.name);
  for (const automation::Variant& argument : line.arguments)
    text += " <" + IntrinsicBench::Show(argument) + ">";
  return text;
}

}  // namespace hearthmake::vbscript
