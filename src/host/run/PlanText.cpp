#include "host/run/PlanText.hpp"

#include <fmt/format.h>

#include <array>
#include <nlohmann/json.hpp>

#include "host/Console.hpp"

namespace hearthmake::host {

namespace {

std::string LineOf(const PlannedProject& planned) {
  const std::string reason = planned.reason.empty() ? "" : ": " + Printable(planned.reason);
  return fmt::format("{:<24} {}{}\n", Printable(planned.name), planned.Runs() ? "compiled" : "left out",
                     reason);
}

}  // namespace

std::string LeftOutCounts(const RunPlan& plan) {
  constexpr std::array<RunChoice, 4> kTold = {RunChoice::UpToDate, RunChoice::CompiledAlready,
                                              RunChoice::NotAskedFor, RunChoice::AfterFailure};
  std::string text;
  for (const RunChoice choice : kTold) {
    const std::size_t count = plan.Count(choice);
    if (count > 0) text += fmt::format("{}{} {}", text.empty() ? "" : ", ", count, ChoiceText(choice));
  }
  return text;
}

std::string WhyLines(const RunPlan& plan) {
  std::string text;
  for (const PlannedProject& planned : plan.Projects()) text += LineOf(planned);
  return text;
}

std::string LeftOutLines(const RunPlan& plan) {
  std::string text;
  for (const PlannedProject& planned : plan.Projects()) {
    if (!planned.Runs()) text += LineOf(planned);
  }
  return text;
}

nlohmann::ordered_json PlannedJson(const std::vector<const PlannedProject*>& projects) {
  auto list = nlohmann::ordered_json::array();
  for (const PlannedProject* planned : projects) {
    list.push_back({{"project", planned->name},
                    {"id", planned->id},
                    {"choice", ChoiceName(planned->choice)},
                    {"reason", planned->reason}});
  }
  return list;
}

nlohmann::ordered_json LeftOutJson(const RunPlan& plan) {
  std::vector<const PlannedProject*> leftOut;
  for (const PlannedProject& planned : plan.Projects()) {
    if (!planned.Runs()) leftOut.push_back(&planned);
  }
  return PlannedJson(leftOut);
}

}  // namespace hearthmake::host
