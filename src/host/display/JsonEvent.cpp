#include "host/display/JsonEvent.hpp"

#include <fmt/format.h>
#include <time.h>

#include <cmath>
#include <utility>

#include "host/text/Json.hpp"

namespace hearthmake::host {

namespace {

// Of docs/events.schema.json, which says when it changes.
constexpr int kFormat = 1;

std::string UtcNow() {
  timespec now{};
  clock_gettime(CLOCK_REALTIME, &now);
  tm parts{};
  gmtime_r(&now.tv_sec, &parts);
  return fmt::format("{:04}-{:02}-{:02}T{:02}:{:02}:{:02}.{:03}Z", parts.tm_year + 1900, parts.tm_mon + 1,
                     parts.tm_mday, parts.tm_hour, parts.tm_min, parts.tm_sec, now.tv_nsec / 1'000'000);
}

}  // namespace

void PrintEvent(const Console& console, const char* event, const nlohmann::ordered_json& details) {
  static bool isFirst = true;
  nlohmann::ordered_json line = {{"event", event}, {"time", UtcNow()}};
  if (std::exchange(isFirst, false)) line["format"] = kFormat;
  line.update(details);
  console.Out(JsonText(line) + "\n");
}

double RoundedSeconds(double seconds) { return std::round(seconds * 1000) / 1000; }

}  // namespace hearthmake::host
