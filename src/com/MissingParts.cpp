#include "com/MissingParts.hpp"

#include "automation/Error.hpp"

namespace hearthmake::com {

namespace {

[[noreturn]] void RaiseMissing(const char* what) {
  automation::Raise(automation::RuntimeError::CantCreateObject, "Hearthmake", what);
}

}  // namespace

std::unique_ptr<platform::VSSDatabase> MissingSourceControl::Open(std::string_view /*strSrcSafeIni*/,
                                                                  std::string_view /*strUser*/,
                                                                  std::string_view /*strPassword*/) {
  RaiseMissing("SourceSafe");
}

std::unique_ptr<platform::MtsCatalog> MissingMtsCatalogs::Create() { RaiseMissing("MTSAdmin.Catalog"); }

std::unique_ptr<platform::ComPlusCatalog> MissingComPlusCatalogs::Create() {
  RaiseMissing("COMAdmin.COMAdminCatalog");
}

}  // namespace hearthmake::com
