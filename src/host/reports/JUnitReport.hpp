#pragma once

#include <string>

#include "host/Session.hpp"
#include "host/annotations/SourceRoot.hpp"
#include "host/run/RunRecord.hpp"

namespace hearthmake::host {

// A run as an XML document that servers read as results of tests: the build is the suite, each project a
// case. A compile that failed is a failure, anything else that stopped a project or the build an error, and
// what was not compiled is skipped, with the reason.
std::string JUnitReport(Session& session, const RunRecord& record, const SourceRoot& root);

}  // namespace hearthmake::host
