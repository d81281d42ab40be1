#pragma once

#include <algorithm>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "doubles/DispatchDouble.hpp"
#include "platform/SourceControl.hpp"

namespace hearthmake::doubles {

// The objects of SourceSafe's automation, with a source control of the port behind them. Their names,
// parameters and kinds of members are those of the real ones.

class CheckoutDouble final : public DispatchDouble {
 public:
  CheckoutDouble(std::shared_ptr<CallLog> log, platform::VSSCheckout checkout)
      : DispatchDouble("VSSCheckout", std::move(log)), m_checkout(std::move(checkout)) {
    Get("Username", [this] { return automation::Variant::FromText(m_checkout.Username); });
    Get("Date", [this] { return automation::Variant::FromDate(m_checkout.Date); });
    Get("Comment", [this] { return automation::Variant::FromText(m_checkout.Comment); });
  }

 private:
  platform::VSSCheckout m_checkout;
};

// VSSCheckouts and VSSItems: lists that count from 1.
class ListDouble final : public DispatchDouble {
 public:
  using Items = std::vector<automation::Ref<DispatchDouble>>;

  ListDouble(const char* name, std::shared_ptr<CallLog> log, Items items)
      : DispatchDouble(name, std::move(log)), m_items(std::move(items)) {
    Get("Count", [this] { return automation::Variant::FromLong(static_cast<std::int32_t>(m_items.size())); });
    Get("Item", 1, [this](CallArguments a) {
      return m_items.at(static_cast<std::size_t>(automation::ToLong(a[0]) - 1));
    });
  }

 private:
  Items m_items;
};

// A database as its objects share it. The port lists no projects, so the test says what is in them.
struct SafeBase {
  std::map<std::string, std::vector<std::string>> projects;  // by spec: the specs of the items in it
  std::shared_ptr<platform::VSSDatabase> session;
};

// The projects above files, each with what is right in it, in the order of the files.
inline std::map<std::string, std::vector<std::string>> ProjectsAbove(const std::vector<std::string>& files) {
  std::map<std::string, std::vector<std::string>> projects;
  const std::string root = "$/";
  for (std::string item : files) {
    while (item != root) {
      const std::size_t slash = item.rfind('/');
      const std::string project = slash < root.size() ? root : item.substr(0, slash);
      std::vector<std::string>& items = projects[project];
      if (std::find(items.begin(), items.end(), item) == items.end()) items.push_back(item);
      item = project;
    }
  }
  return projects;
}

automation::Ref<DispatchDouble> MakeItemDouble(std::shared_ptr<CallLog> log, std::shared_ptr<SafeBase> base,
                                               std::shared_ptr<platform::VSSItem> item);

class VersionDouble final : public DispatchDouble {
 public:
  VersionDouble(std::shared_ptr<CallLog> log, std::shared_ptr<SafeBase> base,
                std::shared_ptr<platform::VSSVersion> version)
      : DispatchDouble("VSSVersion", std::move(log)), m_base(std::move(base)), m_version(std::move(version)) {
    Get("Label", [this] { return automation::Variant::FromText(m_version->Label()); });
    Get("Username", [this] { return automation::Variant::FromText(m_version->Username()); });
    Get("Date", [this] { return automation::Variant::FromDate(m_version->Date()); });
    Get("Comment", [this] { return automation::Variant::FromText(m_version->Comment()); });
    Get("VSSItem", [this] { return MakeItemDouble(Log(), m_base, m_version->VSSItem()); });
  }

 private:
  std::shared_ptr<SafeBase> m_base;
  std::shared_ptr<platform::VSSVersion> m_version;
};

class VersionsDouble final : public DispatchDouble {
 public:
  VersionsDouble(std::shared_ptr<CallLog> log, std::shared_ptr<SafeBase> base,
                 std::shared_ptr<platform::VSSVersions> versions)
      : DispatchDouble("VSSVersions", std::move(log)) {
    Enumeration([this, base = std::move(base), versions = std::move(versions)] {
      return [log = Log(), base, versions]() -> automation::Ref<IDispatch> {
        std::shared_ptr<platform::VSSVersion> next = versions->Next();
        if (!next) return nullptr;
        return MakeDouble<VersionDouble>(log, base, std::move(next));
      };
    });
  }
};

class ItemDouble final : public DispatchDouble {
 public:
  static constexpr std::int32_t kInvalidLabel = 4712;

  ItemDouble(std::shared_ptr<CallLog> log, std::shared_ptr<SafeBase> base,
             std::shared_ptr<platform::VSSItem> item)
      : DispatchDouble("VSSItem", std::move(log)), m_base(std::move(base)), m_item(std::move(item)) {
    using automation::ToLong;
    using automation::ToText;
    Get("Spec", [this] { return automation::Variant::FromText(m_item->Spec()); });
    Get("Type", [this] { return automation::Variant::FromLong(IsProject() ? 0 : 1); });
    Get("Items", 0, 1, [this](CallArguments) { return Children(); });
    Method("Get", 0, 2, [this](CallArguments a) {
      m_item->Get(ToText(a[0]), ToLong(a[1]));
      return Answer();
    });
    Get("Versions", 0, 1,
        [this](CallArguments) { return MakeDouble<VersionsDouble>(Log(), m_base, m_item->Versions()); });
    Method("Label", 1, 2, [this](CallArguments a) {
      CheckLabel(ToText(a[0]));
      m_item->Label(ToText(a[0]), ToText(a[1]));
      return Answer();
    });
    Get("IsCheckedOut",
        [this] { return automation::Variant::FromLong(static_cast<std::int32_t>(m_item->IsCheckedOut())); });
    Get("Checkouts", [this] { return Checkouts(); });
    Method("Checkout", 0, 3, [this](CallArguments a) {
      m_item->Checkout(ToText(a[0]), ToText(a[1]), ToLong(a[2]));
      return Answer();
    });
    Method("Checkin", 0, 3, [this](CallArguments a) {
      m_item->Checkin(ToText(a[0]), ToText(a[1]), ToLong(a[2]));
      return Answer();
    });
  }

 private:
  bool IsProject() const { return m_base->projects.contains(m_item->Spec()); }

  // SourceSafe documents 31 characters, without blanks at the ends.
  static void CheckLabel(const std::string& label) {
    constexpr std::size_t kLongest = 31;
    if (label.size() > kLongest || label.starts_with(' ') || label.ends_with(' '))
      automation::Raise(kInvalidLabel, "SourceSafe", "Invalid label");
  }

  // SourceSafe has none for a project.
  Answer Checkouts() {
    ListDouble::Items items;
    if (!IsProject()) {
      for (const auto& checkout : m_item->Checkouts())
        items.push_back(MakeDouble<CheckoutDouble>(Log(), checkout));
    }
    return MakeDouble<ListDouble>("VSSCheckouts", Log(), std::move(items));
  }
  Answer Children() {
    ListDouble::Items items;
    for (const std::string& spec : m_base->projects[m_item->Spec()])
      items.push_back(MakeItemDouble(Log(), m_base, m_base->session->VSSItem(spec, false)));
    return MakeDouble<ListDouble>("VSSItems", Log(), std::move(items));
  }

  std::shared_ptr<SafeBase> m_base;
  std::shared_ptr<platform::VSSItem> m_item;
};

inline automation::Ref<DispatchDouble> MakeItemDouble(std::shared_ptr<CallLog> log,
                                                      std::shared_ptr<SafeBase> base,
                                                      std::shared_ptr<platform::VSSItem> item) {
  return MakeDouble<ItemDouble>(std::move(log), std::move(base), std::move(item));
}

// SourceSafe
class DatabaseDouble final : public DispatchDouble {
 public:
  DatabaseDouble(std::shared_ptr<CallLog> log, platform::SourceControl& control, SafeBase base)
      : DispatchDouble("VSSDatabase", std::move(log)), m_base(std::make_shared<SafeBase>(std::move(base))) {
    using automation::ToText;
    Method("Open", 1, 3, [this, &control](CallArguments a) {
      m_base->session = control.Open(ToText(a[0]), ToText(a[1]), ToText(a[2]));
      return Answer();
    });
    Get("VSSItem", 1, 2, [this](CallArguments a) {
      return MakeItemDouble(Log(), m_base,
                            m_base->session->VSSItem(ToText(a[0]), automation::ToBoolean(a[1])));
    });
  }

 private:
  std::shared_ptr<SafeBase> m_base;
};

}  // namespace hearthmake::doubles
