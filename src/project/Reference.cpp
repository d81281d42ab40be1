#include "project/Reference.hpp"

#include "automation/Joined.hpp"
#include "automation/Text.hpp"
#include "foundation/RegistryText.hpp"

namespace hearthmake {

namespace {

using automation::Joined;

constexpr char kObject = 'O';
constexpr char kReference = 'R';
constexpr char kUndefined = 'U';

}  // namespace

std::string Reference::Id() const { return automation::Decimal(m_id); }

std::string Reference::Description() const {
  return HasOwnDescription() ? m_description.Get() : RegisteredDescription();
}

std::string Reference::RegisteredDescription() const {
  std::string registered;
  GetRegistryValue(platform::RegistryRoot::ClassesRoot, "Typelib\\" + GUID() + "\\" + BinaryVersion(), "",
                   registered);
  return registered;
}

std::string Reference::ReferenceString() const {
  const std::string& path = m_path.Get();
  const bool isControl = IsUserControl();
  if (IsRaw()) return Joined({isControl ? "Object=" : "Reference=", path});
  const std::string& guid = m_guid.Get();
  const std::string& version = m_binaryVersion.Get();
  if (isControl) return Joined({"Object=", guid, "#", version, "#0;", path});
  const std::string registered = HasOwnDescription() ? std::string() : RegisteredDescription();
  const std::string& description = HasOwnDescription() ? m_description.Get() : registered;
  return Joined({"Reference=*\\G", guid, "#", version, "#0#", path, "#", description});
}

bool Reference::IsUserControl() const {
  switch (ReferenceType()) {
    case ReferenceTypes::RT_OBJECT: return true;
    case ReferenceTypes::RT_REFERENCE: return false;
    default: break;
  }
  const std::string_view extension = automation::Right(m_path.Get(), 3);
  return automation::EqualsIgnoreCaseAscii(extension, "ocx") ||
         automation::EqualsIgnoreCaseAscii(extension, "oca");
}

ReferenceTypes Reference::ReferenceType() const {
  switch (m_type) {
    case kReference: return ReferenceTypes::RT_REFERENCE;
    case kObject: return ReferenceTypes::RT_OBJECT;
    default: return ReferenceTypes::RT_UNDEFINED;
  }
}

void Reference::SetReferencedProject(std::int32_t idProject) {
  m_referencedProject = idProject;
  m_isExternal = false;
}

void Reference::SetReferenceType(ReferenceTypes type) {
  switch (type) {
    case ReferenceTypes::RT_UNDEFINED: m_type = kUndefined; break;
    case ReferenceTypes::RT_OBJECT: m_type = kObject; break;
    case ReferenceTypes::RT_REFERENCE: m_type = kReference; break;
  }
}

std::string Reference::TypeCode() const { return m_type == ' ' ? std::string() : std::string(1, m_type); }

void Reference::LoadExternal(const platform::Recordset& row) {
  m_binaryVersion = row.GetText("BinaryVersion");
  m_path = row.GetText("Path");
  m_description = row.GetText("Description");
  m_guid = row.GetText("TypeLibGUID");
  const std::string type = row.GetText("Type");
  m_type = type.empty() ? ' ' : type.front();
  m_isExternal = true;
}

}  // namespace hearthmake
