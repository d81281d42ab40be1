#pragma once

#include "platform/ComPlusCatalog.hpp"

namespace hearthmake::componentservices {

// The COM+ catalog of this machine, through its administration objects (COMAdmin.COMAdminCatalog). Errors
// are theirs; 429 where there are none.
class AdminComPlusCatalogs final : public platform::ComPlusCatalogs {
 public:
  std::unique_ptr<platform::ComPlusCatalog> Create() override;
};

}  // namespace hearthmake::componentservices
