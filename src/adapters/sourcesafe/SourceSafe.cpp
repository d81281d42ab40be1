#include "adapters/sourcesafe/SourceSafe.hpp"

#include <utility>

#include "adapters/sourcesafe/SafeError.hpp"
#include "adapters/sourcesafe/SafeItem.hpp"
#include "adapters/win32/LateObject.hpp"

namespace hearthmake::sourcesafe {

namespace {

using win32::LateObject;

class SafeDatabase final : public platform::VSSDatabase {
 public:
  explicit SafeDatabase(LateObject database) : m_database(std::move(database)) {}

  std::unique_ptr<platform::VSSItem> VSSItem(std::string_view strSpec, bool bDeleted) override {
    return Named("VSSDatabase.VSSItem", strSpec, [&] {
      return std::make_unique<SafeItem>(m_database.Object("VSSItem", {strSpec, bDeleted}));
    });
  }

 private:
  LateObject m_database;
};

}  // namespace

std::unique_ptr<platform::VSSDatabase> SourceSafe::Open(std::string_view strSrcSafeIni,
                                                        std::string_view strUser,
                                                        std::string_view strPassword) {
  return Named("VSSDatabase.Open", strSrcSafeIni, [&] {
    auto database = LateObject::Create("SourceSafe");
    database.Call("Open", {strSrcSafeIni, strUser, strPassword});
    return std::make_unique<SafeDatabase>(std::move(database));
  });
}

}  // namespace hearthmake::sourcesafe
