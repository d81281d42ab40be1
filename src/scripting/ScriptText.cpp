#include "scripting/ScriptText.hpp"

#include <map>
#include <memory>
#include <set>
#include <string_view>
#include <vector>

#include "automation/Error.hpp"
#include "automation/Interface.hpp"
#include "automation/Text.hpp"
#include "build/Build.hpp"
#include "foundation/clFile.hpp"

namespace hearthmake::ScriptText {

namespace {

constexpr std::string_view kInclude = "Include<";
constexpr std::string_view kPlaceholder = "%Build.";
constexpr std::string_view kLineEnd = "\r\n";
constexpr const char* kIncludesSource = "Scripts.DoIncludes";
constexpr const char* kInternalsSource = "Scripts.EvaluateInternals";
constexpr std::size_t kLongestText = std::size_t{64} * 1024 * 1024;

void CheckLength(std::size_t length, const char* source) {
  if (length > kLongestText) automation::Raise(automation::RuntimeError::OutOfMemory, source);
}

// Expands depth first: a text that is still to be searched waits while one that it includes is. (Replacing
// in place would move all that follows at each directive, a file that includes itself many million times.)
class IncludeExpansion {
 public:
  std::string Expand(const std::string& text) {
    Push(std::make_shared<const std::string>(text));
    while (!m_waiting.empty()) Continue();
    return std::move(m_result);
  }

 private:
  struct Waiting {
    std::shared_ptr<const std::string> text;
    std::size_t position = 0;
  };

  void Push(std::shared_ptr<const std::string> text) {
    m_length += text->size();
    CheckLength(m_length, kIncludesSource);
    m_waiting.push_back({std::move(text)});
  }

  // Takes the topmost text over up to its next directive, or to its end.
  void Continue() {
    const std::shared_ptr<const std::string> text = m_waiting.back().text;
    const std::size_t begin = m_waiting.back().position;
    for (std::size_t hit = text->find(kInclude, begin); hit != std::string::npos;
         hit = text->find(kInclude, hit + kInclude.size())) {
      const std::size_t end = text->find('>', hit);
      if (end == std::string::npos) break;
      if (!IsInComment(*text, hit)) continue;
      m_result.append(*text, begin, hit - begin).append(kLineEnd);
      m_waiting.back().position = end + 1;
      Push(Read(text->substr(hit + kInclude.size(), end - hit - kInclude.size())));
      return;
    }
    m_result.append(*text, begin);
    m_waiting.pop_back();
    if (!m_waiting.empty()) m_result.append(kLineEnd);
  }

  static bool IsInComment(const std::string& text, std::size_t position) {
    while (position > 0) {
      const char c = text[--position];
      if (c == '\'') return true;
      if (c == '\n' || c == '\r') return false;
    }
    return false;
  }

  std::shared_ptr<const std::string> Read(const std::string& file) {
    auto& text = m_files[file];
    if (text) return text;
    try {
      text = std::make_shared<const std::string>(clFile::ReadText(file));
    } catch (const automation::Error&) {
      automation::Raise(automation::BuildErrors::beOpenIncludeFile, kIncludesSource,
                        "Could not open include file " + file);
    }
    return text;
  }

  std::map<std::string, std::shared_ptr<const std::string>> m_files;
  std::vector<Waiting> m_waiting;
  std::string m_result;
  std::size_t m_length = 0;
};

// A property, read by name; what is no property is none, so that no text makes the build do something.
automation::Variant ReadProperty(automation::Object& object, std::string_view name) {
  const automation::Interface& declaration = object.Declaration();
  const auto id = declaration.Find(name);
  const automation::Member* member = id ? declaration.Find(*id, automation::InvokeKind::Get) : nullptr;
  if (member == nullptr || member->kind != automation::MemberKind::Get)
    automation::Raise(automation::RuntimeError::MemberNotFound, declaration.Name(), std::string(name));
  return object.Get(name);
}

// The text of a value; an object stands for its default property.
std::string TextOf(const automation::Variant& value) {
  if (!value.IsObject()) return automation::ToText(value);
  automation::Object* object = automation::ToObject(value);
  if (object == nullptr) automation::Raise(automation::RuntimeError::ObjectNotSet, "");
  return automation::ToText(object->Invoke(automation::kDefaultMember, automation::InvokeKind::Get,
                                           std::span<automation::Variant>()));
}

std::string ValueOfPath(Build& build, std::string_view path) {
  automation::Variant value = automation::Variant::FromObject(automation::Ref<automation::Object>(&build));
  while (true) {
    const std::size_t dot = path.find('.');
    automation::Object* object = automation::ToObject(value);
    if (object == nullptr) automation::Raise(automation::RuntimeError::ObjectNotSet, "");
    value = ReadProperty(*object, path.substr(0, dot));
    if (dot == std::string_view::npos) return TextOf(value);
    path.remove_prefix(dot + 1);
  }
}

[[noreturn]] void RaiseMethodFailed(const std::string& path) {
  automation::Raise(automation::BuildErrors::beEvaluateInternalsFaild, kInternalsSource,
                    "Method " + path + " failed");
}

std::string ValueOrRaise(Build& build, const std::string& path) {
  try {
    return ValueOfPath(build, path);
  } catch (const automation::Error&) {
    RaiseMethodFailed(path);
  }
}

}  // namespace

std::string DoIncludes(const std::string& text) { return IncludeExpansion().Expand(text); }

std::string EvaluateInternals(const std::string& text, Build& build) {
  std::string result = text;
  std::set<std::string> replaced;
  std::size_t from = 0;
  while (true) {
    const std::size_t begin = result.find(kPlaceholder, from);
    if (begin == std::string::npos) return result;
    const std::size_t end = result.find('%', begin + 1);
    if (end == std::string::npos) return result;
    const std::string path = result.substr(begin + kPlaceholder.size(), end - begin - kPlaceholder.size());
    // All occurrences went at once, so that a path which is back came out of a value and always will.
    if (!replaced.insert(path).second) RaiseMethodFailed(path);
    const std::string value = ValueOrRaise(build, path);
    result = automation::ReplaceAll(result, result.substr(begin, end + 1 - begin), value);
    CheckLength(result.size(), kInternalsSource);
    from = begin;
  }
}

}  // namespace hearthmake::ScriptText
