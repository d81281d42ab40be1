#pragma once

#include <string>

#include "automation/Object.hpp"
#include "vbscript/intrinsics/Context.hpp"

namespace hearthmake::vbscript {

// WshShell.Environment. "PROCESS" is the environment of this process and of the children that it starts.
// The others ("SYSTEM", "USER", "VOLATILE") have no store of their own here: they show the same and can't be
// changed (error 70 "Permission denied").
class ShellEnvironment final : public automation::Object {
 public:
  ShellEnvironment(Context& context, bool isWritable) : m_context(context), m_isWritable(isWritable) {}
  const automation::Interface& Declaration() const override;
  automation::Ref<automation::Enumerator> Enumerate() override { return NewEnum(); }

  // "" for a variable that is not set.
  std::string Item(const std::string& name);
  void SetItem(const std::string& name, const std::string& value);
  std::int32_t Count();
  void Remove(const std::string& name);
  // Texts of the form NAME=value.
  automation::Ref<automation::Enumerator> NewEnum();

 private:
  platform::SystemInfo& System() { return *m_context.host.Platform().system; }
  void RequireWritable() const;

  Context& m_context;
  bool m_isWritable;
};

}  // namespace hearthmake::vbscript
