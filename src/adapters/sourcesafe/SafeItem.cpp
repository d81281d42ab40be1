#include "adapters/sourcesafe/SafeItem.hpp"

#include "adapters/sourcesafe/SafeError.hpp"
#include "adapters/sourcesafe/SafeVersions.hpp"

namespace hearthmake::sourcesafe {

namespace {

using automation::ToText;
using win32::LateObject;

constexpr std::int32_t kProject = 0;  // VSSItem.Type

template <class Visit>
void ForEach(const LateObject& collection, const Visit& visit) {
  const std::int32_t count = automation::ToLong(collection.Call("Count"));
  for (std::int32_t i = 1; i <= count; ++i) visit(collection.Object("Item", {i}));
}

std::string SpecOf(const LateObject& item) { return ToText(item.Call("Spec")); }

void AddCheckouts(const LateObject& file, std::vector<platform::VSSCheckout>& found) {
  ForEach(file.Object("Checkouts"), [&](const LateObject& checkout) {
    platform::VSSCheckout& added = found.emplace_back();
    added.Spec = SpecOf(file);
    added.Username = ToText(checkout.Call("Username"));
    added.Date = automation::ToDate(checkout.Call("Date"));
    added.Comment = ToText(checkout.Call("Comment"));
  });
}

// SourceSafe lists the check-outs of files only.
void AddCheckoutsBelow(const LateObject& item, std::vector<platform::VSSCheckout>& found) {
  if (automation::ToLong(item.Call("Type")) != kProject) return AddCheckouts(item, found);
  const bool deletedToo = false;
  ForEach(item.Object("Items", {deletedToo}),
          [&](const LateObject& child) { AddCheckoutsBelow(child, found); });
}

}  // namespace

SafeItem::SafeItem(LateObject item) : m_item(std::move(item)), m_spec(SpecOf(m_item)) {}

void SafeItem::Get(std::string_view strLocal, std::int32_t lngFlags) {
  Named("VSSItem.Get", m_spec, [&] { m_item.Call("Get", {strLocal, lngFlags}); });
}

std::unique_ptr<platform::VSSVersions> SafeItem::Versions() {
  return Named("VSSItem.Versions", m_spec,
               [&] { return std::make_unique<SafeVersions>(m_item.Object("Versions"), m_spec); });
}

void SafeItem::Label(std::string_view strLabel, std::string_view strComment) {
  Named("VSSItem.Label", m_spec, [&] { m_item.Call("Label", {strLabel, strComment}); });
}

platform::CheckoutState SafeItem::IsCheckedOut() {
  return Named("VSSItem.IsCheckedOut", m_spec, [&] {
    return static_cast<platform::CheckoutState>(automation::ToLong(m_item.Call("IsCheckedOut")));
  });
}

std::vector<platform::VSSCheckout> SafeItem::Checkouts() {
  return Named("VSSItem.Checkouts", m_spec, [&] {
    std::vector<platform::VSSCheckout> found;
    AddCheckoutsBelow(m_item, found);
    return found;
  });
}

void SafeItem::Checkout(std::string_view strComment, std::string_view strLocal, std::int32_t lngFlags) {
  Named("VSSItem.Checkout", m_spec, [&] { m_item.Call("Checkout", {strComment, strLocal, lngFlags}); });
}

void SafeItem::Checkin(std::string_view strComment, std::string_view strLocal, std::int32_t lngFlags) {
  Named("VSSItem.Checkin", m_spec, [&] { m_item.Call("Checkin", {strComment, strLocal, lngFlags}); });
}

}  // namespace hearthmake::sourcesafe
