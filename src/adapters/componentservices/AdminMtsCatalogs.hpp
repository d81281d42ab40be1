#pragma once

#include "platform/MtsCatalog.hpp"

namespace hearthmake::componentservices {

// The MTS catalog of this machine, through its administration objects (MTSAdmin.Catalog.1). Errors are
// theirs; 429 where there are none.
class AdminMtsCatalogs final : public platform::MtsCatalogs {
 public:
  std::unique_ptr<platform::MtsCatalog> Create() override;
};

}  // namespace hearthmake::componentservices
