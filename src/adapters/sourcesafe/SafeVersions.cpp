#include "adapters/sourcesafe/SafeVersions.hpp"

#include <utility>

#include "adapters/sourcesafe/SafeError.hpp"
#include "adapters/sourcesafe/SafeItem.hpp"

namespace hearthmake::sourcesafe {

namespace {

using automation::ToText;
using win32::LateObject;

class SafeVersion final : public platform::VSSVersion {
  template <class Function>
  auto Read(std::string_view property, const Function& function) const {
    return Named("VSSVersion." + std::string(property), m_spec, function);
  }

 public:
  SafeVersion(LateObject version, std::string spec)
      : m_version(std::move(version)), m_spec(std::move(spec)) {}

  std::string Label() const override { return Text("Label"); }
  std::string Username() const override { return Text("Username"); }
  double Date() const override {
    return Read("Date", [&] { return automation::ToDate(m_version.Call("Date")); });
  }
  std::string Comment() const override { return Text("Comment"); }
  std::unique_ptr<platform::VSSItem> VSSItem() const override {
    return Read("VSSItem", [&] { return std::make_unique<SafeItem>(m_version.Object("VSSItem")); });
  }

 private:
  std::string Text(std::string_view property) const {
    return Read(property, [&] { return ToText(m_version.Call(property)); });
  }

  LateObject m_version;
  std::string m_spec;
};

}  // namespace

SafeVersions::SafeVersions(const LateObject& versions, std::string spec)
    : m_walk(versions), m_spec(std::move(spec)) {}

std::unique_ptr<platform::VSSVersion> SafeVersions::Next() {
  return Named("VSSItem.Versions", m_spec, [&]() -> std::unique_ptr<platform::VSSVersion> {
    auto next = m_walk.Next();
    if (!next) return nullptr;
    return std::make_unique<SafeVersion>(std::move(*next), m_spec);
  });
}

}  // namespace hearthmake::sourcesafe
