#include "sourcecontrol/SSProjects.hpp"

#include "automation/Error.hpp"
#include "automation/OleDate.hpp"
#include "automation/Text.hpp"
#include "build/Build.hpp"
#include "foundation/Paths.hpp"
#include "foundation/modDatabase.hpp"
#include "foundation/modExecute.hpp"
#include "sourcecontrol/SSSession.hpp"

namespace hearthmake {

namespace {

using automation::Decimal;
using platform::CheckoutState;

// The item at a path; null when it can't be had, whatever the reason.
std::unique_ptr<platform::VSSItem> FindItem(platform::VSSDatabase& database, const std::string& spec) {
  try {
    return database.VSSItem(spec, false);
  } catch (const automation::Error&) {
    return nullptr;
  }
}

std::string HolderOf(platform::VSSItem& item) {
  const auto checkouts = item.Checkouts();
  return checkouts.empty() || checkouts.front().Username.empty() ? "another user!"
                                                                 : checkouts.front().Username;
}

// Empty when the file was checked in; else why it was not.
std::string CheckIn(platform::VSSItem& item, const std::string& strFile, const std::string& strComment,
                    bool bKeepCheckedOut) {
  namespace flags = platform::SourceFlags;
  const CheckoutState state = item.IsCheckedOut();
  if (state == CheckoutState::ByOther) {
    return "The file " + std::string(FileNamePart(strFile)) + " is checked out to " + HolderOf(item);
  }
  if (state == CheckoutState::NotCheckedOut) item.Checkout("Hearthmake Check out", "", flags::kGetNo);
  item.Checkin(strComment.empty() ? "Hearthmake Check in" : strComment, strFile,
               bKeepCheckedOut ? flags::kKeepYes : flags::kKeepNo);
  return {};
}

std::string LastChange(platform::VSSItem& item) {
  const auto versions = item.Versions();
  for (auto version = versions->Next(); version; version = versions->Next()) {
    if (!version->Label().empty()) continue;
    return version->Username() + " " + automation::FormatIsoDate(version->Date()) + "\r\n" +
           version->Comment();
  }
  return {};
}

}  // namespace

SSProjects::SSProjects(hearthmake::Build& build) : m_build(&build) { SetOwner(&build); }

SSProjects::~SSProjects() { ReleaseMembers(); }

void SSProjects::ReleaseMembers() {
  m_build = nullptr;
  for (const auto& project : m_items.Snapshot()) project->AttachTo(nullptr);
  m_items.Clear();
}

void SSProjects::Load() {
  const auto rows = modDatabase::OpenRow("SELECT * FROM SSProjects WHERE idBuild = ", ParentBuild().Id());
  for (; !rows->AtEnd(); rows->MoveNext()) {
    const auto project = automation::Make<SSProject>(*this);
    project->LoadFromRow(*rows);
    Add(*project);
  }
  rows->Close();
}

hearthmake::Build& SSProjects::ParentBuild() const {
  if (m_build == nullptr) automation::Raise(automation::RuntimeError::ObjectNotSet, "SSProjects");
  return *m_build;
}

automation::Ref<SSProject> SSProjects::Item(const automation::Variant& vIndex) const {
  return automation::Ref<SSProject>(&m_items.Item(vIndex));
}

automation::Ref<automation::Enumerator> SSProjects::NewEnum() {
  return automation::Make<CollectionEnumerator<SSProject>>(m_items.Snapshot());
}

automation::Ref<SSProject> SSProjects::Create() { return automation::Make<SSProject>(*this); }

void SSProjects::Add(SSProject& project) { m_items.Add(project, Decimal(project.Id())); }

void SSProjects::Remove(SSProject& project) {
  const automation::Ref<SSProject> held(&project);
  const std::string key = Decimal(project.Id());
  if (m_items.Find(key) == &project) m_items.RemoveKey(key);
  project.AttachTo(nullptr);
}

bool SSProjects::GetLatestFromSoursafe() {
  const automation::Ref<SSProjects> self(this);  // which a script or handler may make the build drop
  ParentBuild().RunScript(BuildScripts::BS_BEFORESOURCESAFE);
  ParentBuild().ReportAction(nullptr, kHeaderEntry, "[Takeing latest version from SourceSafe]\r\n");
  SSSession session;
  for (const auto& project : m_items.Snapshot()) {
    const bool isTakenOut = project->ParentOrNull() != this;  // by an event handler
    if (isTakenOut || project->Skip()) continue;
    const auto item = project->OpenItem(session);
    bool bCancel = false;
    ParentBuild().RaiseGettingLatestVersion(*project, bCancel);
    if (bCancel) break;
    project->GetFiles(*item);
  }
  return true;
}

std::optional<SSProjects::Place> SSProjects::FindPlace(const std::string& file) const {
  std::optional<Place> place;
  std::size_t longest = 0;
  for (std::size_t i = 0; i < m_items.Count(); ++i) {
    SSProject& project = m_items.At(i);
    const std::size_t length = CommonLength(file, project.WorkingFolder());
    if (length <= longest) continue;
    longest = length;
    place = Place{automation::Ref<SSProject>(&project), project.Project() + file.substr(length)};
  }
  return place;
}

bool SSProjects::CheckInFile(const std::string& strFile, const std::string& strComment, bool bKeepCheckedOut,
                             std::string& strResult) const {
  const auto place = FindPlace(strFile);
  if (!place) {
    strResult = "No matching SourceSafe project found";
    return false;
  }
  try {
    SSSession session;
    const auto item = FindItem(session.For(*place->project), place->spec);
    const std::string reason = item ? CheckIn(*item, strFile, strComment, bKeepCheckedOut)
                                    : "File " + place->spec + " not found in SourceSafe";
    if (reason.empty()) return true;
    strResult = reason;
  } catch (const automation::Error& error) {
    strResult = "Errors occured: " + error.Description();
  }
  return false;
}

std::string SSProjects::GetLastModifiedData(const std::string& file) const {
  if (Count() == 0) {
    automation::Raise(automation::kInvalidValue, "SSProjects.GetLastModifiedData",
                      "You have no SourceSafe projects configured!");
  }
  const auto place = FindPlace(file);
  if (!place) return "No matching SourceSafe project fund for file " + file;
  SSSession session;
  const auto item = FindItem(session.For(*place->project), place->spec);
  if (!item) return "The file " + std::string(FileNamePart(file)) + " was not found in SourceSafe";
  return LastChange(*item);
}

void SSProjects::NetSendCheckedOutFiles(const std::string& strMachine, const std::string& strMessage) {
  modExecute::CmdExec("NET SEND " + strMachine + " " + strMessage);
}

}  // namespace hearthmake
