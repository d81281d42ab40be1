#include "vbscript/objects/Folders.hpp"

#include "automation/Declare.hpp"
#include "vbscript/objects/DosPath.hpp"
#include "vbscript/objects/FileErrors.hpp"
#include "vbscript/objects/FileTree.hpp"
#include "vbscript/objects/Folder.hpp"
#include "vbscript/objects/ItemEnumerator.hpp"

namespace hearthmake::vbscript {

const automation::Interface& Folders::Declaration() const {
  static const automation::Interface kDeclaration =
      automation::Declare("Folders", "IFolderCollection", "", "")
          .method<&Folders::Add>("Add", {"Name"})
          .byDefault()
          .get<&Folders::Item>("Item", {"Key"})
          .newEnum<&Folders::NewEnum>()
          .get<&Folders::Count>("Count")
          .build();
  return kDeclaration;
}

automation::Ref<Folder> Folders::Item(const std::string& name) {
  return OpenFolder(m_context, dospath::Absolute(name, m_folder));
}

std::int32_t Folders::Count() {
  return static_cast<std::int32_t>(FileTree(m_context).Names(m_folder, true).size());
}

automation::Ref<automation::Enumerator> Folders::NewEnum() {
  std::vector<automation::Variant> items;
  for (const std::string& name : FileTree(m_context).Names(m_folder, true)) {
    items.push_back(
        automation::Variant::FromObject(automation::Make<Folder>(m_context, dospath::Join(m_folder, name))));
  }
  return automation::Make<ItemEnumerator>(std::move(items));
}

automation::Ref<Folder> Folders::Add(const std::string& name) {
  const std::string path = dospath::Absolute(name, m_folder);
  WithScriptErrors([&] { m_context.host.Platform().files->CreateFolder(path); });
  return automation::Make<Folder>(m_context, path);
}

}  // namespace hearthmake::vbscript
