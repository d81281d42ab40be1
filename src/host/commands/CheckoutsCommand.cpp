#include <fmt/format.h>

#include <set>
#include <string>
#include <utility>

#include "automation/Error.hpp"
#include "automation/OleDate.hpp"
#include "automation/Text.hpp"
#include "host/commands/Commands.hpp"
#include "host/sources/SourceProjects.hpp"
#include "host/text/Json.hpp"

namespace hearthmake::host {

namespace {

using nlohmann::ordered_json;
using platform::VSSCheckout;

// Projects may lie inside each other: what both of them tell of is listed once.
class CheckoutList {
 public:
  void Add(const SSProject& source) {
    for (VSSCheckout& checkout : source.Checkouts()) {
      const std::string file = automation::Lower(source.SrcSafeIni() + "|" + checkout.Spec + "|");
      if (m_known.insert(file + checkout.Username).second) m_checkouts.push_back(std::move(checkout));
    }
  }

  std::string Lines() const {
    std::string text;
    for (const VSSCheckout& checkout : m_checkouts) {
      const std::string comment = Printable(checkout.Comment);
      text += fmt::format("{}  {}  {}{}\n", Printable(checkout.Spec),
                          checkout.Username.empty() ? "-" : Printable(checkout.Username),
                          automation::FormatIsoDate(checkout.Date), comment.empty() ? "" : "  " + comment);
    }
    return text.empty() ? "Nothing is checked out.\n" : text;
  }

  ordered_json Json() const {
    auto list = ordered_json::array();
    for (const VSSCheckout& checkout : m_checkouts) {
      list.push_back({{"file", checkout.Spec},
                      {"user", checkout.Username},
                      {"date", automation::FormatIsoDate(checkout.Date)},
                      {"comment", checkout.Comment}});
    }
    return list;
  }

 private:
  std::set<std::string> m_known;
  std::vector<VSSCheckout> m_checkouts;
};

}  // namespace

ExitStatus CheckoutsCommand(Session& session, const CheckoutsArguments& arguments) {
  const auto build = session.OpenBuild(arguments.build);
  CheckoutList list;
  ExitStatus status = ExitStatus::Done;
  for (const auto& source : ChosenSources(*build, {})) {
    try {
      list.Add(*source);
    } catch (const automation::Error& error) {
      session.Out().Note(fmt::format("{}: {}", Printable(source->Project()), Printable(error.Description())));
      status = ExitStatus::Failed;
    }
  }
  session.Out().Out(arguments.json ? JsonText(list.Json(), 2) + "\n" : list.Lines());
  return status;
}

}  // namespace hearthmake::host
