#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "adapters/git/Session.hpp"
#include "platform/SourceControl.hpp"

namespace hearthmake::git {

// Who holds a file: a ref for each, on a commit of that person with the comment as its message.

struct CheckoutEntry {
  git_oid id{};  // of its commit
  platform::VSSCheckout checkout;
};

// Nothing when nobody holds the file.
std::optional<CheckoutEntry> FindCheckout(const Session& session, const ItemPath& path);
// Those of the file, or of all files below the folder.
std::vector<platform::VSSCheckout> FindCheckoutsAtOrBelow(const Session& session, const ItemPath& path);
bool IsHeldByUser(const Session& session, const CheckoutEntry& entry);

// Takes the file for the session's user; of several who try at once one succeeds. Error 70 for the others,
// with the name of the holder.
void TakeCheckout(const Session& session, const ItemPath& path, std::string_view comment);
// Gives the file back. No error when it is nobody's by now.
void EndCheckout(const Session& session, const ItemPath& path, const CheckoutEntry& entry);

}  // namespace hearthmake::git
