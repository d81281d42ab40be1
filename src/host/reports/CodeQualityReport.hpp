#pragma once

#include <string>

#include "host/Session.hpp"
#include "host/annotations/SourceRoot.hpp"
#include "host/run/RunRecord.hpp"

namespace hearthmake::host {

// The problems of a run that have a file, as the JSON of a code-quality report: GitLab shows them at their
// lines in a merge request. An empty list for a run without problems.
std::string CodeQualityReport(Session& session, const RunRecord& record, const SourceRoot& root);

}  // namespace hearthmake::host
