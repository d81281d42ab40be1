#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "automation/Error.hpp"
#include "automation/Text.hpp"
#include "platform/FileSystem.hpp"
#include "platform/SourceControl.hpp"

namespace hearthmake::support {

// A source control that keeps its databases in memory and writes down what is asked of it. The history of a
// database is one list of changes, each of one file, with labels in between.
class MemorySourceControl final : public platform::SourceControl {
 public:
  static constexpr std::int32_t kFailure = 4711;  // the number of every error that it raises

  struct Entry {
    std::string spec;   // of the file, or of what was labelled
    std::string label;  // empty for a change
    std::string user;
    double date = 0;
    std::string comment;
    std::string content;   // of the file from then on
    bool isMoved = false;  // a label that was put on a newer version since
  };
  struct Base {
    std::map<std::string, std::string> passwords;                         // of its users
    std::vector<Entry> history;                                           // oldest first
    std::map<std::string, std::vector<platform::VSSCheckout>> checkouts;  // by lower-case spec

    void Change(const std::string& spec, const std::string& content, const std::string& user = "Ann",
                const std::string& comment = "", double date = 36975.5) {
      history.push_back({spec, "", user, date, comment, content});
    }
    // What a file holds; nothing when there is none.
    std::optional<std::string> Content(const std::string& spec) const {
      std::optional<std::string> content;
      for (const Entry& entry : history) {
        if (entry.label.empty() && automation::EqualsIgnoreCase(entry.spec, spec)) content = entry.content;
      }
      return content;
    }
  };

  explicit MemorySourceControl(std::shared_ptr<platform::FileSystem> files) : m_files(std::move(files)) {}

  // The database of an ini file, made at the first call.
  Base& operator[](const std::string& ini) { return m_bases[automation::Lower(ini)]; }

  std::vector<std::string> calls;               // "Get $/Suite to C:\Src, 128"
  std::map<std::string, std::string> failures;  // by name of a call: the error that it raises from now on
  int openSessions = 0;
  // Whether the history of a project is that of all below it, else of the files right in it.
  bool hasDeepHistory = true;

  std::unique_ptr<platform::VSSDatabase> Open(std::string_view strSrcSafeIni, std::string_view strUser,
                                              std::string_view strPassword) override {
    const std::string ini(strSrcSafeIni);
    const std::string user(strUser);
    Note("Open", ini + " as " + user);
    const auto base = m_bases.find(automation::Lower(ini));
    if (base == m_bases.end()) Fail("Open", "There is no database " + ini);
    const auto password = base->second.passwords.find(user);
    if (password != base->second.passwords.end() && password->second != strPassword)
      Fail("Open", "Invalid password");
    return std::make_unique<Session>(*this, base->second, user);
  }

 private:
  class Version;

  [[noreturn]] static void Fail(const std::string& operation, const std::string& text) {
    automation::Raise(kFailure, operation, text);
  }
  void Note(const std::string& call, const std::string& details) {
    calls.push_back(call + " " + details);
    const auto failure = failures.find(call);
    if (failure != failures.end()) Fail(call, failure->second);
  }

  static std::string Normal(std::string_view spec) {
    std::string text = automation::ReplaceAll(spec, "\\", "/");
    while (text.find("//") != std::string::npos) text = automation::ReplaceAll(text, "//", "/");
    while (text.size() > 2 && text.back() == '/') text.pop_back();
    return text;
  }
  // What is behind a project's path; nothing for what is not below it.
  static std::optional<std::string> Below(const std::string& project, const std::string& spec) {
    const std::string head = project.ends_with('/') ? project : project + "/";
    if (spec.size() <= head.size()) return {};
    if (!automation::EqualsIgnoreCase(std::string_view(spec).substr(0, head.size()), head)) return {};
    return spec.substr(head.size());
  }

  // An item after the first so many entries of the history.
  class Item final : public platform::VSSItem {
   public:
    Item(MemorySourceControl& owner, Base& base, std::string user, std::string spec, std::size_t end)
        : m_owner(owner), m_base(base), m_user(std::move(user)), m_spec(std::move(spec)), m_end(end) {}

    std::string Spec() const override { return m_spec; }

    void Get(std::string_view strLocal, std::int32_t lngFlags) override {
      const std::string local(strLocal);
      m_owner.Note("Get", m_spec + " to " + local + ", " + automation::Decimal(lngFlags));
      if (local.empty()) return;
      for (const auto& [path, content] : FilesFor(local, lngFlags)) m_owner.Put(path, content, lngFlags);
    }

    std::unique_ptr<platform::VSSVersions> Versions() override;

    void Label(std::string_view strLabel, std::string_view strComment) override {
      m_owner.Note("Label", m_spec + " " + std::string(strLabel) + ", '" + std::string(strComment) + "'");
      if (strLabel.empty()) Fail("Label", "There is no text for the label");
      for (Entry& entry : m_base.history) {
        if (entry.label == strLabel && IsSame(entry)) entry.isMoved = true;
      }
      m_base.history.push_back({m_spec, std::string(strLabel), m_user, kNow, std::string(strComment), ""});
    }
    platform::CheckoutState IsCheckedOut() override {
      m_owner.Note("IsCheckedOut", m_spec);
      const auto& holders = Holders();
      if (holders.empty()) return platform::CheckoutState::NotCheckedOut;
      return IsHolder(holders.front()) ? platform::CheckoutState::ByCurrentUser
                                       : platform::CheckoutState::ByOther;
    }
    std::vector<platform::VSSCheckout> Checkouts() override {
      std::vector<platform::VSSCheckout> found;
      const std::string own = automation::Lower(m_spec);
      for (const auto& [spec, holders] : m_base.checkouts) {
        if (spec == own || Below(own, spec)) found.insert(found.end(), holders.begin(), holders.end());
      }
      return found;
    }
    void Checkout(std::string_view strComment, std::string_view strLocal, std::int32_t lngFlags) override {
      using namespace platform::SourceFlags;
      m_owner.Note("Checkout", Described(strComment, strLocal, lngFlags));
      if (!m_base.Content(m_spec)) Fail("Checkout", m_spec + " is no file");
      if (!Holders().empty()) Fail("Checkout", m_spec + " is checked out to " + Holders().front().Username);
      platform::VSSCheckout checkout;
      checkout.Spec = m_spec;
      checkout.Username = m_user;
      checkout.Date = kNow;
      checkout.Comment = strComment;
      Holders().push_back(checkout);
      if (strLocal.empty() || (lngFlags & kGetMask) == kGetNo) return;
      const std::int32_t writable = (lngFlags & ~kReadOnlyMask) | kReadOnlyNo;
      for (const auto& [path, content] : FilesFor(std::string(strLocal), writable))
        m_owner.Put(path, content, writable);
    }
    void Checkin(std::string_view strComment, std::string_view strLocal, std::int32_t lngFlags) override {
      m_owner.Note("Checkin", Described(strComment, strLocal, lngFlags));
      if (Holders().empty() || !IsHolder(Holders().front()))
        Fail("Checkin", m_spec + " is not checked out to " + m_user);
      const std::string content = m_owner.m_files->Read(std::string(strLocal));
      if (content != m_base.Content(m_spec))
        m_base.Change(m_spec, content, m_user, std::string(strComment), kNow);
      if ((lngFlags & platform::SourceFlags::kKeepMask) != platform::SourceFlags::kKeepYes) Holders().clear();
    }

   private:
    friend class Version;
    static constexpr double kNow = 36975.5;  // 2001-03-25 12:00

    std::vector<platform::VSSCheckout>& Holders() { return m_base.checkouts[automation::Lower(m_spec)]; }
    bool IsSame(const Entry& entry) const { return automation::EqualsIgnoreCase(entry.spec, m_spec); }
    bool IsHolder(const platform::VSSCheckout& checkout) const {
      return automation::EqualsIgnoreCase(checkout.Username, m_user);
    }
    // A label holds for all below what it was put on.
    bool Concerns(const Entry& entry) const {
      if (IsSame(entry)) return !entry.isMoved;
      if (!entry.label.empty()) return !entry.isMoved && Below(entry.spec, m_spec);
      const auto rest = Below(m_spec, entry.spec);
      return rest && (m_owner.hasDeepHistory || rest->find('/') == std::string::npos);
    }
    // What a get writes, by path.
    std::map<std::string, std::string> FilesFor(const std::string& local, std::int32_t flags) const {
      using namespace platform::SourceFlags;
      const bool isDeep = (flags & kRecursiveMask) == kRecursiveYes;
      const bool isIntoFolder = m_owner.m_files->FolderExists(local);
      std::map<std::string, std::string> files;
      for (std::size_t i = 0; i < m_end; ++i) {
        const Entry& entry = m_base.history[i];
        if (!entry.label.empty()) continue;
        const auto rest = Below(m_spec, entry.spec);
        if (rest && (isDeep || rest->find('/') == std::string::npos))
          files[local + "\\" + automation::ReplaceAll(*rest, "/", "\\")] = entry.content;
        if (IsSame(entry))
          files[isIntoFolder ? local + "\\" + m_spec.substr(m_spec.rfind('/') + 1) : local] = entry.content;
      }
      return files;
    }
    std::string Described(std::string_view comment, std::string_view local, std::int32_t flags) const {
      return m_spec + " '" + std::string(comment) + "' '" + std::string(local) + "' " +
             automation::Decimal(flags);
    }

    MemorySourceControl& m_owner;
    Base& m_base;
    std::string m_user;
    std::string m_spec;
    std::size_t m_end;
  };

  class Version final : public platform::VSSVersion {
   public:
    Version(const Item& item, std::size_t index)
        : m_owner(item.m_owner),
          m_base(item.m_base),
          m_user(item.m_user),
          m_spec(item.m_spec),
          m_index(index) {}
    std::string Label() const override { return At().label; }
    std::string Username() const override { return At().user; }
    double Date() const override { return At().date; }
    std::string Comment() const override { return At().comment; }
    std::unique_ptr<platform::VSSItem> VSSItem() const override {
      return std::make_unique<Item>(m_owner, m_base, m_user, m_spec, m_index + 1);
    }

   private:
    const Entry& At() const { return m_base.history[m_index]; }

    MemorySourceControl& m_owner;
    Base& m_base;
    std::string m_user;
    std::string m_spec;
    std::size_t m_index;
  };

  class VersionList final : public platform::VSSVersions {
   public:
    explicit VersionList(std::vector<std::unique_ptr<platform::VSSVersion>> oldestFirst)
        : m_versions(std::move(oldestFirst)) {}
    std::unique_ptr<platform::VSSVersion> Next() override {
      if (m_versions.empty()) return nullptr;
      auto next = std::move(m_versions.back());
      m_versions.pop_back();
      return next;
    }

   private:
    std::vector<std::unique_ptr<platform::VSSVersion>> m_versions;
  };

  class Session final : public platform::VSSDatabase {
   public:
    Session(MemorySourceControl& owner, Base& base, std::string user)
        : m_owner(owner), m_base(base), m_user(std::move(user)) {
      ++m_owner.openSessions;
    }
    ~Session() override { --m_owner.openSessions; }

    std::unique_ptr<platform::VSSItem> VSSItem(std::string_view strSpec, bool /*bDeleted*/) override {
      const std::string spec = Normal(strSpec);
      m_owner.Note("VSSItem", std::string(strSpec));
      const auto spelling = SpellingOf(spec);
      if (!spelling) Fail("VSSDatabase.VSSItem", "There is no " + spec);
      return std::make_unique<Item>(m_owner, m_base, m_user, *spelling, m_base.history.size());
    }

   private:
    // A path as the history writes it; nothing when there is no such item.
    std::optional<std::string> SpellingOf(const std::string& spec) const {
      for (const Entry& entry : m_base.history) {
        if (automation::EqualsIgnoreCase(entry.spec, spec) || Below(spec, entry.spec))
          return entry.spec.substr(0, spec.size());
      }
      return {};
    }

    MemorySourceControl& m_owner;
    Base& m_base;
    std::string m_user;
  };

  // Writes a file unless there is one that somebody works on.
  void Put(const std::string& path, const std::string& content, std::int32_t flags) {
    using namespace platform::SourceFlags;
    m_files->CreateFolders(path.substr(0, path.rfind('\\')));
    if (!m_files->FileExists(path)) {
      m_files->Replace(path, content);
    } else if (m_files->Read(path) != content) {
      const bool isReadOnly = (m_files->Attributes(path) & platform::kReadOnly) != 0;
      if (!isReadOnly && (flags & kReplaceMask) != kReplaceYes) return;
      m_files->SetAttributes(path, platform::kNormal);
      m_files->Replace(path, content);
    }
    const bool isForWriting = (flags & kReadOnlyMask) == kReadOnlyNo;
    m_files->SetAttributes(path, isForWriting ? platform::kNormal : platform::kReadOnly);
  }

  std::shared_ptr<platform::FileSystem> m_files;
  std::map<std::string, Base> m_bases;
};

inline std::unique_ptr<platform::VSSVersions> MemorySourceControl::Item::Versions() {
  std::vector<std::unique_ptr<platform::VSSVersion>> versions;
  for (std::size_t i = 0; i < m_end; ++i) {
    if (Concerns(m_base.history[i])) versions.push_back(std::make_unique<Version>(*this, i));
  }
  return std::make_unique<VersionList>(std::move(versions));
}

}  // namespace hearthmake::support
