#include "sourcecontrol/SSProject.hpp"

#include "automation/Declare.hpp"

namespace hearthmake {

const automation::Interface& SSProject::Describe() {
  constexpr const char* kDatabaseHelp = "Description of database. Free text.";
  constexpr const char* kSkipHelp =
      "If true this project will be skiped when takeing latest version. This property is not stored in the "
      "database.";
  static const automation::Interface kInterface =
      automation::Declare("SSProject", "_SSProject", "{BD3A9489-4FEA-4DD1-8B09-E950133A364A}")
          .implements(&IReportItem::Describe)
          .let<&SSProject::SetUser>("User")
          .get<&SSProject::User>("User")
          .let<&SSProject::SetProject>("Project")
          .get<&SSProject::Project>("Project")
          .let<&SSProject::SetWorkingFolder>("WorkingFolder")
          .get<&SSProject::WorkingFolder>("WorkingFolder")
          .let<&SSProject::SetDatabase>("Database", {}, kDatabaseHelp)
          .get<&SSProject::Database>("Database", {}, kDatabaseHelp)
          .get<&SSProject::SrcSafeIni>("SrcSafeIni")
          .let<&SSProject::SetSrcSafeIni>("SrcSafeIni")
          .let<&SSProject::SetPassword>("Password")
          .get<&SSProject::Password>("Password")
          .let<&SSProject::SetFlags>("Flags")
          .get<&SSProject::Flags>("Flags")
          .get<&SSProject::Id>("Id")
          .method<&SSProject::BeginEdit>("BeginEdit")
          .method<&SSProject::ApplyEdit>("ApplyEdit")
          .method<&SSProject::Delete>("Delete")
          .method<&SSProject::CancelEdit>("CancelEdit")
          .get<&SSProject::Skip>("Skip", {}, kSkipHelp)
          .let<&SSProject::SetSkip>("Skip", {}, kSkipHelp)
          .method<&SSProject::GetLatest>("GetLatest")
          .method<&SSProject::GetFromLabel>("GetFromLabel", {"strLabel"})
          .method<&SSProject::Label>("Label", {"strLabel", "strComment"})
          .build();
  return kInterface;
}

}  // namespace hearthmake
