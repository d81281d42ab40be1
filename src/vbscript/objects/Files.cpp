#include "vbscript/objects/Files.hpp"

#include "automation/Declare.hpp"
#include "vbscript/objects/DosPath.hpp"
#include "vbscript/objects/File.hpp"
#include "vbscript/objects/FileTree.hpp"
#include "vbscript/objects/ItemEnumerator.hpp"

namespace hearthmake::vbscript {

const automation::Interface& Files::Declaration() const {
  static const automation::Interface kDeclaration = automation::Declare("Files", "IFileCollection", "", "")
                                                        .byDefault()
                                                        .get<&Files::Item>("Item", {"Key"})
                                                        .newEnum<&Files::NewEnum>()
                                                        .get<&Files::Count>("Count")
                                                        .build();
  return kDeclaration;
}

automation::Ref<File> Files::Item(const std::string& name) {
  return OpenFile(m_context, dospath::Absolute(name, m_folder));
}

std::int32_t Files::Count() {
  return static_cast<std::int32_t>(FileTree(m_context).Names(m_folder, false).size());
}

automation::Ref<automation::Enumerator> Files::NewEnum() {
  std::vector<automation::Variant> items;
  for (const std::string& name : FileTree(m_context).Names(m_folder, false)) {
    items.push_back(
        automation::Variant::FromObject(automation::Make<File>(m_context, dospath::Join(m_folder, name))));
  }
  return automation::Make<ItemEnumerator>(std::move(items));
}

}  // namespace hearthmake::vbscript
