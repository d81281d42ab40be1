#include "build/BuildReport.hpp"

#include "automation/Error.hpp"
#include "automation/OleDate.hpp"
#include "build/Build.hpp"
#include "build/IReportItem.hpp"
#include "foundation/Apartment.hpp"
#include "foundation/clFile.hpp"
#include "foundation/mSettings.hpp"

namespace hearthmake {

namespace {

constexpr std::size_t kRuleLength = 60;

std::string DateAndTime() { return automation::FormatIsoDate(Ports().clock->Now()); }

std::string Time() {
  const std::string text = DateAndTime();
  return text.substr(text.find(' ') + 1);
}

}  // namespace

void BuildReport::SetParent(Build& build) {
  m_build = &build;
  Write(std::string(kRuleLength, '-'));
  Write("Start build: '" + build.Name() + "' Time:" + DateAndTime());
}

void BuildReport::ReportAction(const ReportItem* oReportItem, std::int32_t /*ActionType*/,
                               const std::string& strInfo) {
  if (!mSettings::CreateReport()) return;
  if (oReportItem == nullptr) {
    Write(strInfo);
  } else {
    Write("\r\n" + oReportItem->IReportItem_Name() + " (Time: " + Time() + ")\r\n" +
          oReportItem->IReportItem_Details());
  }
}

void BuildReport::Write(std::string_view text) const {
  if (m_build == nullptr) automation::Raise(automation::RuntimeError::ObjectNotSet, "BuildReport.Write");
  clFile::AppendRow(mSettings::BuildReport() + "BUILD_" + m_build->Name() + ".log", text);
}

}  // namespace hearthmake
