#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/moving/BuildDocument.hpp"
#include "platform/Database.hpp"

namespace hearthmake::host {

// Builds in a database as documents. It works on rows: the public objects show no column as it is stored,
// and of some (when a project compiled last) they take no value.

// The build with its projects in the order of their ids. What refers to rows of no project or package of the
// build is left out; notes tells of it. Passwords are read only where they are wanted. Errors are those of
// the database.
BuildDocument LoadDocument(platform::Database& database, std::int32_t idBuild, bool withPasswords,
                           std::vector<std::string>& notes);

// Id and name of every build.
std::vector<std::pair<std::int32_t, std::string>> StoredBuilds(platform::Database& database);

// Adds the build, or puts it in the place of another one, whose id it keeps, and gives its id. To be done in
// one transaction.
std::int32_t StoreDocument(platform::Database& database, const BuildDocument& document,
                           std::optional<std::int32_t> replacedId);

}  // namespace hearthmake::host
