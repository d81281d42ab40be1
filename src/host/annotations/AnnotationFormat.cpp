#include "host/annotations/AnnotationFormat.hpp"

#include "host/annotations/AzureFormat.hpp"
#include "host/annotations/GitHubFormat.hpp"
#include "host/annotations/GitLabFormat.hpp"
#include "host/annotations/TeamCityFormat.hpp"
#include "host/system/Places.hpp"

namespace hearthmake::host {

namespace {

// What tells that the process runs there.
std::string ServiceOfEnvironment() {
  if (EnvironmentValue("GITHUB_ACTIONS") == "true") return "github";
  if (!EnvironmentValue("GITLAB_CI").empty()) return "gitlab";
  if (!EnvironmentValue("TF_BUILD").empty()) return "azure";
  if (!EnvironmentValue("TEAMCITY_VERSION").empty()) return "teamcity";
  return {};
}

}  // namespace

const std::vector<std::string>& AnnotationServices() {
  static const std::vector<std::string> kServices = {"auto", "github", "gitlab", "azure", "teamcity"};
  return kServices;
}

std::unique_ptr<AnnotationFormat> MakeAnnotationFormat(std::string_view service) {
  if (service == "auto") return MakeAnnotationFormat(ServiceOfEnvironment());
  if (service == "github") return std::make_unique<GitHubFormat>();
  if (service == "gitlab") return std::make_unique<GitLabFormat>();
  if (service == "azure") return std::make_unique<AzureFormat>();
  if (service == "teamcity") return std::make_unique<TeamCityFormat>();
  return nullptr;
}

}  // namespace hearthmake::host
