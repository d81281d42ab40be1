#include "deployment/MTSPackage.hpp"

#include "automation/Declare.hpp"

namespace hearthmake {

const automation::Interface& MTSPackage::Describe() {
  static const automation::Interface kInterface =
      automation::Declare("MTSPackage", "_MTSPackage", "{67BC61BA-0AAE-42BE-8D6B-AC43F2C69CF8}")
          .method<&MTSPackage::CreatePackage>("CreatePackage")
          .method<&MTSPackage::RemovePackage>("RemovePackage")
          .let<&MTSPackage::SetUser>("User")
          .get<&MTSPackage::User>("User")
          .get<&MTSPackage::ExportPath>("ExportPath")
          .let<&MTSPackage::SetExportPath>("ExportPath")
          .let<&MTSPackage::SetName>("Name")
          .get<&MTSPackage::Name>("Name")
          .let<&MTSPackage::SetDescription>("Description")
          .get<&MTSPackage::Description>("Description")
          .let<&MTSPackage::SetAuthorization>("Authorization")
          .get<&MTSPackage::Authorization>("Authorization")
          .let<&MTSPackage::SetLeaveRunningIdle>("LeaveRunningIdle")
          .get<&MTSPackage::LeaveRunningIdle>("LeaveRunningIdle")
          .let<&MTSPackage::SetShutdowntime>("Shutdowntime")
          .get<&MTSPackage::Shutdowntime>("Shutdowntime")
          .let<&MTSPackage::SetPassword>("Password")
          .get<&MTSPackage::Password>("Password")
          .get<&MTSPackage::DisableDelete>("DisableDelete")
          .let<&MTSPackage::SetDisableDelete>("DisableDelete")
          .let<&MTSPackage::SetDisableChanges>("DisableChanges")
          .get<&MTSPackage::DisableChanges>("DisableChanges")
          .get<&MTSPackage::LibraryPackage>("LibraryPackage")
          .let<&MTSPackage::SetLibraryPackage>("LibraryPackage")
          .get<&MTSPackage::Id>("Id")
          .method<&MTSPackage::BeginEdit>("BeginEdit")
          .method<&MTSPackage::ApplyEdit>("ApplyEdit")
          .method<&MTSPackage::Delete>("Delete")
          .method<&MTSPackage::CancelEdit>("CancelEdit")
          .get<&MTSPackage::Skip>("Skip")
          .let<&MTSPackage::SetSkip>("Skip")
          .build();
  return kInterface;
}

}  // namespace hearthmake
