#include "build/IReportItem.hpp"

#include "automation/Declare.hpp"

namespace hearthmake {

const automation::Interface& IReportItem::Describe() {
  static const automation::Interface kInterface =
      automation::Declare("IReportItem", "_IReportItem", "{51DEC06A-2750-4DC9-9580-CE55575A0270}",
                          "{43C045C4-E8B7-4663-832E-0807E2E9F899}")
          .get<&ReportItem::IReportItem_Name>("Name")
          .get<&ReportItem::IReportItem_Details>("Details")
          .build();
  return kInterface;
}

}  // namespace hearthmake
