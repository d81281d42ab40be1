#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "host/page/LastRun.hpp"
#include "host/run/RunRecord.hpp"

namespace hearthmake::host {

// The words that the parts of the page of a run share. None needs to be escaped.

// "Up to date", and what the page's style calls it: "uptodate".
const char* OutcomeWord(ProjectOutcome outcome);
const char* OutcomeStyle(ProjectOutcome outcome);
// Of the name that a ProjectType has: "OLE server".
std::string TypeWord(const std::string& typeName);
// The sign for it that the page defines: "t-exe".
const char* TypeSign(const std::string& typeName);

// "47 ms", "0.42 s", "12.3 s", "3:07 min".
std::string SecondsWord(double seconds);
// "24.0 KB"; a dash for none.
std::string BytesWord(std::int64_t bytes);
// With a sign: "+1.5 KB".
std::string ByteChangeWord(std::int64_t bytes);
std::string SecondsChangeWord(double seconds);
// "2026-11-21 12:30 UTC", for machines "2026-11-21T12:30:05Z".
std::string TimeWord(std::int64_t secondsSince1970);
std::string TimeStamp(std::int64_t secondsSince1970);

}  // namespace hearthmake::host
