#include "adapters/git/Checkouts.hpp"

#include <array>
#include <random>
#include <utility>

#include "adapters/git/GitFailure.hpp"
#include "adapters/git/Message.hpp"
#include "adapters/git/OleTime.hpp"
#include "adapters/git/RefName.hpp"
#include "automation/Error.hpp"
#include "automation/Text.hpp"

namespace hearthmake::git {

namespace {

constexpr const char* kItemTrailer = "Check-out";

// Makes the commit of a check-out differ from any other, made by the same person in the same second: one that
// is the same object could be "taken" twice on a server.
std::string Token() {
  std::random_device random;
  std::array<char, 17> hex{};
  const std::uint64_t value = static_cast<std::uint64_t>(random()) << 32U | random();
  std::snprintf(hex.data(), hex.size(), "%016llx", static_cast<unsigned long long>(value));
  return hex.data();
}

git_oid WriteCheckout(const Session& session, const ItemPath& path, std::string_view comment) {
  git_repository* repository = session.Repo().Get();
  Handle<git_treebuilder> builder;
  Check(git_treebuilder_new(Out(builder), repository, nullptr), path.Spec());
  git_oid treeId{};
  Check(git_treebuilder_write(&treeId, builder.get()), path.Spec());
  const Handle<git_tree> tree = session.Repo().Tree(treeId);
  const Handle<git_signature> who = session.Signature();
  const std::string message = PrintMessage(comment, {{kItemTrailer, path.Spec()}, {"Token", Token()}});
  git_oid id{};
  Check(git_commit_create(&id, repository, nullptr, who.get(), who.get(), nullptr, message.c_str(),
                          tree.get(), 0, nullptr),
        path.Spec());
  return id;
}

CheckoutEntry ReadCheckout(const Session& session, const git_oid& id) {
  const Handle<git_commit> commit = session.Repo().Commit(id);
  const git_signature* who = git_commit_author(commit.get());
  const char* text = git_commit_message(commit.get());
  const Message message = ParseMessage(text == nullptr ? "" : text);
  CheckoutEntry entry;
  entry.id = id;
  entry.checkout.Spec = message.Find(kItemTrailer).value_or("");
  entry.checkout.Username = ReadableText(who->name);
  entry.checkout.Date = OleTime(who->when.time);
  entry.checkout.Comment = message.comment;
  return entry;
}

}  // namespace

std::optional<CheckoutEntry> FindCheckout(const Session& session, const ItemPath& path) {
  const std::optional<git_oid> id = session.Refs().Read(CheckoutRef(path));
  if (!id) return std::nullopt;
  CheckoutEntry entry = ReadCheckout(session, *id);
  entry.checkout.Spec = path.Spec();
  return entry;
}

std::vector<platform::VSSCheckout> FindCheckoutsAtOrBelow(const Session& session, const ItemPath& path) {
  std::vector<platform::VSSCheckout> checkouts;
  for (const auto& [name, id] : session.Refs().List(kCheckoutRefs)) {
    try {
      CheckoutEntry entry = ReadCheckout(session, id);
      const bool isMeant =
          !entry.checkout.Spec.empty() && ItemPath::Parse(entry.checkout.Spec).IsAtOrBelow(path);
      if (isMeant) checkouts.push_back(std::move(entry.checkout));
    } catch (const automation::Error&) {
      continue;  // a ref that somebody else has put there
    }
  }
  return checkouts;
}

bool IsHeldByUser(const Session& session, const CheckoutEntry& entry) {
  return automation::EqualsIgnoreCase(entry.checkout.Username, session.User().name);
}

void TakeCheckout(const Session& session, const ItemPath& path, std::string_view comment) {
  if (!FindCheckout(session, path)) {
    const git_oid id = WriteCheckout(session, path, comment);
    const Handle<git_signature> who = session.Signature();
    if (session.Refs().Change(CheckoutRef(path), std::nullopt, id, who.get(), "check-out")) return;
  }
  const std::optional<CheckoutEntry> holder = FindCheckout(session, path);
  const std::string name = holder ? holder->checkout.Username : "";
  Fail(Number::kPermissionDenied,
       path.Spec() + " is checked out to " + (name.empty() ? "another user" : name) + " already");
}

void EndCheckout(const Session& session, const ItemPath& path, const CheckoutEntry& entry) {
  const Handle<git_signature> who = session.Signature();
  session.Refs().Change(CheckoutRef(path), entry.id, std::nullopt, who.get(), "check-out ended");
}

}  // namespace hearthmake::git
