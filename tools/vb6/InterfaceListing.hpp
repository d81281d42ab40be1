#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "vb6/Identity.hpp"
#include "vb6/PublicInterface.hpp"

namespace hearthmake::vb6 {

// The public interface of a component as text behind the end of its image. A later compile compares with
// it: a type library alone no longer tells what a parameter was declared as.

// The image's bytes with the listing of the library behind them.
std::string WithListing(std::string image, const PublicInterface& library);

// The library that the listing at the end of these bytes tells of; nothing when there is none.
std::optional<EarlierLibrary> ReadListing(std::string_view bytes);

}  // namespace hearthmake::vb6
