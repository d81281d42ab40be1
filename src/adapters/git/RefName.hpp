#pragma once

#include <string>
#include <string_view>

#include "adapters/git/ItemPath.hpp"

namespace hearthmake::git {

// Names for git's refs made of any text: letters, digits, dots, accents … stay, what git refuses is written
// %XX, so that `git tag` and `git for-each-ref` read well.

inline constexpr const char* kCheckoutRefs = "refs/checkouts/";
inline constexpr const char* kTagRefs = "refs/tags/";

// "refs/checkouts/Suite/Lib/a.dll%": different for different paths, and never a folder of another one, which
// is what the final sign is for. A name too long for a file is cut and gets a hash.
std::string CheckoutRef(const ItemPath& path);

// The name for a label's tag, without "refs/tags/". Blanks become "-", so different labels may get the same
// name: it is only a wish, and the tag's message knows the label. The attempts are different names: the label
// itself, the label with its item, then numbered ones.
std::string TagName(std::string_view label, const ItemPath& path, int attempt);

}  // namespace hearthmake::git
