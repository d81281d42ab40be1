#pragma once

#include <string>
#include <utility>

#include "automation/Object.hpp"
#include "vbscript/intrinsics/Context.hpp"

namespace hearthmake::vbscript {

class File;

// The files in a folder, by name, as they are when they are asked for. Error 76 when the folder is gone.
class Files final : public automation::Object {
 public:
  Files(Context& context, std::string folder) : m_context(context), m_folder(std::move(folder)) {}
  const automation::Interface& Declaration() const override;
  automation::Ref<automation::Enumerator> Enumerate() override { return NewEnum(); }

  // Error 53 when there is none of the name.
  automation::Ref<File> Item(const std::string& name);
  std::int32_t Count();
  // In the order of their names.
  automation::Ref<automation::Enumerator> NewEnum();

 private:
  Context& m_context;
  std::string m_folder;
};

}  // namespace hearthmake::vbscript
