#include "adapters/componentservices/AdminErrors.hpp"

#include <gtest/gtest.h>

#include <map>

#include "adapters/componentservices/AdminCollection.hpp"
#include "doubles/ClassDouble.hpp"
#include "doubles/DispatchDouble.hpp"
#include "support/ErrorExpect.hpp"

namespace hearthmake::componentservices {
namespace {

using automation::Variant;
using doubles::Answer;
using doubles::CallArguments;
using doubles::DispatchDouble;
using doubles::MakeDouble;

constexpr std::int32_t kObjectErrors = 1001;

// An entry of ErrorInfo.
class ErrorObject final : public DispatchDouble {
 public:
  ErrorObject(std::shared_ptr<doubles::CallLog> log, const char* name, std::map<std::string, Variant> values)
      : DispatchDouble("ErrorObject", std::move(log)), m_values(std::move(values)) {
    Get("Name", [name] { return Variant::FromText(name); });
    Get("Value", 1, [this](CallArguments a) {
      const auto found = m_values.find(automation::ToText(a[0]));
      if (found == m_values.end()) automation::Raise(45, "Catalog", "no such property");
      return found->second;
    });
  }

 private:
  std::map<std::string, Variant> m_values;
};

class ErrorList final : public DispatchDouble {
 public:
  explicit ErrorList(std::shared_ptr<doubles::CallLog> log) : DispatchDouble("ErrorInfo", std::move(log)) {
    Method("Populate", 0, [](CallArguments) { return Answer(); });
    Get("Count", [] { return Variant::FromLong(2); });
    Get("Item", 1, [this](CallArguments a) { return automation::ToLong(a[0]) == 0 ? Orders() : File(); });
  }

 private:
  Answer Orders() {
    return MakeDouble<ErrorObject>(
        Log(), "Orders",
        std::map<std::string, Variant>{{"ErrorCode", Variant::FromText("-2146368492")},
                                       {"MinorRef", Variant::FromText("Identity")}});
  }
  // As MTS has it.
  Answer File() {
    const auto code = Variant::FromLong(static_cast<std::int32_t>(0x80110414));
    return MakeDouble<ErrorObject>(Log(), "C:\\bin\\Orders.dll",
                                   std::map<std::string, Variant>{{"ErrorCode", code}});
  }
};

// A collection whose changes are refused.
class Refusing final : public DispatchDouble {
 public:
  Refusing(std::shared_ptr<doubles::CallLog> log, bool explains)
      : DispatchDouble("CatalogCollection", std::move(log)) {
    Method("SaveChanges", 0, [](CallArguments) -> Answer {
      automation::Raise(kObjectErrors, "Catalog", "Errors occurred accessing one or more objects");
    });
    if (!explains) return;
    Method("GetCollection", 2, [this](CallArguments) { return MakeDouble<ErrorList>(Log()); });
  }
};

class AdminErrors : public testing::Test {
 protected:
  void Save(bool explains) {
    AdminCollection<platform::CatalogCollection> collection(
        win32::LateObject(automation::Ref<IDispatch>(MakeDouble<Refusing>(log, explains).Get())));
    collection.SaveChanges();
  }

  doubles::ComThread com;
  std::shared_ptr<doubles::CallLog> log = std::make_shared<doubles::CallLog>();
};

TEST_F(AdminErrors, NameTheObjectsThatWereRefused) {
  support::ExpectError([&] { Save(true); }, kObjectErrors, "Catalog",
                       "Errors occurred accessing one or more objects (Orders, Identity: -2146368492; "
                       "C:\\bin\\Orders.dll: &H80110414)");
  ASSERT_GT(log->calls.size(), 1U);
  EXPECT_EQ(log->calls[1], "CatalogCollection.GetCollection(\"ErrorInfo\", \"\")");
}

TEST_F(AdminErrors, StayAsTheyAreWhereNothingExplainsThem) {
  support::ExpectError([&] { Save(false); }, kObjectErrors, "Catalog",
                       "Errors occurred accessing one or more objects");
}

}  // namespace
}  // namespace hearthmake::componentservices
