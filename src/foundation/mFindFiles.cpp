#include "foundation/mFindFiles.hpp"

#include <algorithm>
#include <utility>

#include "automation/Error.hpp"
#include "automation/Text.hpp"
#include "foundation/Apartment.hpp"

namespace hearthmake::mFindFiles {

namespace {

using SortedNames = std::vector<std::pair<std::string, std::string>>;  // lower-cased, as spelled

struct Listing {
  SortedNames files;
  SortedNames folders;
};

bool HasExtension(std::string_view lowerName, std::string_view lowerExtension) {
  return lowerName.size() > lowerExtension.size() && lowerName.ends_with(lowerExtension);
}

Listing ListSorted(std::string_view folder, std::string_view lowerExtension) {
  Listing result;
  for (auto& entry : Ports().files->List(folder)) {
    std::string lower = automation::Lower(entry.name);
    if (entry.isFolder) {
      if (!entry.isLink) result.folders.emplace_back(std::move(lower), std::move(entry.name));
    } else if (HasExtension(lower, lowerExtension)) {
      result.files.emplace_back(std::move(lower), std::move(entry.name));
    }
  }
  std::sort(result.files.begin(), result.files.end());
  std::sort(result.folders.begin(), result.folders.end());
  return result;
}

void Collect(const std::string& folder, const Listing& listing, std::string_view lowerExtension,
             std::vector<std::string>& found) {
  for (const auto& [lower, name] : listing.files) found.push_back(folder + name);
  for (const auto& [lower, name] : listing.folders) {
    const std::string below = folder + name + "\\";
    try {
      Collect(below, ListSorted(below, lowerExtension), lowerExtension, found);
    } catch (const automation::Error&) {
      // A folder that this user may not read holds nothing that he could build.
      continue;
    }
  }
}

}  // namespace

std::vector<std::string> FindFiles(std::string_view folder, std::string_view extension) {
  const std::string lowerExtension = automation::Lower(extension);
  std::vector<std::string> found;
  Collect(std::string(folder), ListSorted(folder, lowerExtension), lowerExtension, found);
  return found;
}

std::vector<std::string> FilesOf(std::string_view folder, std::string_view extension) {
  std::vector<std::string> names;
  for (auto& [lower, name] : ListSorted(folder, automation::Lower(extension)).files)
    names.push_back(std::move(name));
  return names;
}

}  // namespace hearthmake::mFindFiles
