#pragma once

#include <string>
#include <utility>

#include "adapters/win32/LateObject.hpp"
#include "platform/SourceControl.hpp"

namespace hearthmake::sourcesafe {

// A VSSItem of SourceSafe's.
class SafeItem final : public platform::VSSItem {
 public:
  explicit SafeItem(win32::LateObject item);

  std::string Spec() const override { return m_spec; }
  void Get(std::string_view strLocal, std::int32_t lngFlags) override;
  std::unique_ptr<platform::VSSVersions> Versions() override;
  void Label(std::string_view strLabel, std::string_view strComment) override;
  platform::CheckoutState IsCheckedOut() override;
  std::vector<platform::VSSCheckout> Checkouts() override;
  void Checkout(std::string_view strComment, std::string_view strLocal, std::int32_t lngFlags) override;
  void Checkin(std::string_view strComment, std::string_view strLocal, std::int32_t lngFlags) override;

 private:
  win32::LateObject m_item;
  std::string m_spec;
};

}  // namespace hearthmake::sourcesafe
