#include "build/Builds.hpp"

#include "automation/Text.hpp"
#include "foundation/modDatabase.hpp"

namespace hearthmake {

Builds::~Builds() { ReleaseMembers(); }

void Builds::ReleaseMembers() {
  for (const auto& build : m_items.Snapshot()) {
    if (build->Owner() == this) build->SetOwner(nullptr);
  }
  m_items.Clear();
}

automation::Ref<automation::Enumerator> Builds::NewEnum() {
  return automation::Make<CollectionEnumerator<Build>>(m_items.Snapshot());
}

automation::Ref<Build> Builds::Item(const automation::Variant& vIndex) const {
  return automation::Ref<Build>(&m_items.Item(vIndex));
}

automation::Variant Builds::LoadAll() {
  const automation::Ref<Builds> self(this);
  const auto rows = modDatabase::OpenDynaset("SELECT * FROM Build");
  ReleaseMembers();
  for (; !rows->AtEnd(); rows->MoveNext()) {
    const auto build = automation::Make<Build>();
    build->LoadLight(rows->GetLong("Id"), rows->GetText("Name"), *this);
    m_items.Add(*build, automation::Decimal(build->Id()));
  }
  rows->Close();
  modDatabase::CloseDatabase();
  return {};
}

}  // namespace hearthmake
