#pragma once

#include <string>

#include "automation/Interface.hpp"
#include "automation/Object.hpp"

namespace hearthmake {

// What an entry of the build report can be about: a project, a source project.
class ReportItem {
 public:
  ReportItem() = default;
  ReportItem(const ReportItem&) = delete;
  ReportItem& operator=(const ReportItem&) = delete;

  virtual std::string IReportItem_Name() const = 0;
  // Lines joined by CR LF, each opened by a tab.
  virtual std::string IReportItem_Details() const = 0;

 protected:
  ~ReportItem() = default;
};

// The public interface by itself. A host can create one; its texts are empty.
class IReportItem final : public automation::Object, public ReportItem {
 public:
  static const automation::Interface& Describe();
  const automation::Interface& Declaration() const override { return Describe(); }

  std::string Name() const { return {}; }
  std::string Details() const { return {}; }

  std::string IReportItem_Name() const override { return Name(); }
  std::string IReportItem_Details() const override { return Details(); }
};

}  // namespace hearthmake
