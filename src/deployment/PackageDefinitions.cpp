#include "deployment/PackageDefinitions.hpp"

#include "automation/Error.hpp"
#include "automation/Text.hpp"
#include "build/Build.hpp"
#include "foundation/modDatabase.hpp"

namespace hearthmake {

namespace {

using automation::Decimal;

// The header of both kinds, which readers of the report look for.
constexpr const char* kReportHeader = "[Createing COM+ Applications]\r\n";

}  // namespace

PackageDefinitions::PackageDefinitions(hearthmake::Build& build, const char* itemSource)
    : m_build(&build), m_items(itemSource) {
  SetOwner(&build);
}

PackageDefinitions::~PackageDefinitions() { ReleaseMembers(); }

void PackageDefinitions::ReleaseMembers() {
  m_build = nullptr;
  for (const auto& item : m_items.Snapshot()) item->AttachTo(nullptr);
  m_items.Clear();
}

hearthmake::Build& PackageDefinitions::ParentBuild() const {
  if (m_build == nullptr) automation::Raise(automation::RuntimeError::ObjectNotSet, Declaration().Name());
  return *m_build;
}

automation::Ref<automation::Enumerator> PackageDefinitions::NewEnum() {
  return automation::Make<CollectionEnumerator<PackageDefinition>>(m_items.Snapshot());
}

void PackageDefinitions::Load() {
  const auto rows = modDatabase::OpenRow("SELECT * FROM MTSPackages WHERE idBuild = ", ParentBuild().Id());
  for (; !rows->AtEnd(); rows->MoveNext()) {
    const std::string key = Decimal(rows->GetLong("Id"));
    if (m_items.Find(key) != nullptr) continue;
    const auto item = MakeDefinition();
    item->LoadFromRow(*rows);
    item->AttachTo(this);
    m_items.Add(*item, key);
  }
  rows->Close();
}

automation::Ref<PackageDefinition> PackageDefinitions::CreateDefinition() {
  ParentBuild();  // one that was released has nobody to store its rows for
  auto item = MakeDefinition();
  item->AttachTo(this);
  return item;
}

void PackageDefinitions::Stored(PackageDefinition& definition, std::int32_t previousId) {
  const std::string key = Decimal(definition.Id());
  if (m_items.Find(key) == &definition) return;
  // Its row was deleted behind its back, and it has a new one now.
  const std::string previous = Decimal(previousId);
  if (m_items.Find(previous) == &definition) m_items.RemoveKey(previous);
  m_items.Add(definition, key);
}

void PackageDefinitions::Remove(PackageDefinition& definition) {
  const automation::Ref<PackageDefinition> held(&definition);
  const std::string key = Decimal(definition.Id());
  if (m_items.Find(key) == &definition) m_items.RemoveKey(key);
  definition.AttachTo(nullptr);
}

bool PackageDefinitions::CreateAllPackages() {
  // Event handlers may drop or kill the build; it stays until the end.
  const automation::Ref<PackageDefinitions> self(this);
  const automation::Ref<hearthmake::Build> build(m_build);
  bool result = false;
  try {
    ParentBuild().ReportAction(nullptr, kHeaderEntry, kReportHeader);
    result = CreateEach();
    ParentBuild().RunScript(BuildScripts::BS_AFTERMTS);
  } catch (const automation::Error& error) {
    if (build) TellOfError(*build, error.Description());
  }
  return result;
}

bool PackageDefinitions::CreateEach() {
  bool result = false;
  for (const auto& item : m_items.Snapshot()) {
    const bool isTakenOut = item->ParentOrNull() != this;  // by an event handler
    if (isTakenOut || item->Skip()) continue;
    result = item->CreatePackage();
    if (!result) break;
  }
  return result;
}

}  // namespace hearthmake
