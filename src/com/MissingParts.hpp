#pragma once

#include "platform/ComPlusCatalog.hpp"
#include "platform/MtsCatalog.hpp"
#include "platform/SourceControl.hpp"

namespace hearthmake::com {

// What stands for the parts of the machine that this library does not reach: error 429 as soon as a build
// asks for one of them.

class MissingSourceControl final : public platform::SourceControl {
 public:
  std::unique_ptr<platform::VSSDatabase> Open(std::string_view strSrcSafeIni, std::string_view strUser,
                                              std::string_view strPassword) override;
};

class MissingMtsCatalogs final : public platform::MtsCatalogs {
 public:
  std::unique_ptr<platform::MtsCatalog> Create() override;
};

class MissingComPlusCatalogs final : public platform::ComPlusCatalogs {
 public:
  std::unique_ptr<platform::ComPlusCatalog> Create() override;
};

}  // namespace hearthmake::com
