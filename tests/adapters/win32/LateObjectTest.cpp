#include "adapters/win32/LateObject.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "adapters/win32/LateEnumerator.hpp"
#include "doubles/BorderDouble.hpp"
#include "doubles/ClassDouble.hpp"
#include "doubles/DispatchDouble.hpp"
#include "support/ErrorExpect.hpp"

namespace hearthmake::win32 {
namespace {

using automation::Ref;
using automation::ToText;
using automation::Variant;
using doubles::Answer;
using doubles::CallArguments;
using doubles::DispatchDouble;
using support::ErrorOf;
using support::ExpectError;
using testing::ElementsAre;

class Sample final : public DispatchDouble {
 public:
  explicit Sample(std::shared_ptr<doubles::CallLog> log) : DispatchDouble("Sample", log) {
    Get("Text", [] { return Variant::FromText("Prüf é"); });
    Get("Itself", [this] { return Ref<Sample>(this); });
    Get("Nothing", [] { return Variant::FromObject(nullptr); });
    Let("Value", 2, [](CallArguments) { return Answer(); });
    Method("Do", 0, 5, [](CallArguments) { return Answer(); });
    Method("Fail", 0, [](CallArguments) -> Answer { automation::Raise(1004, "The sample", "Failed: é"); });
    Enumeration([this] {
      return [this, left = 2]() mutable { return left-- > 0 ? Ref<IDispatch>(this) : Ref<IDispatch>(); };
    });
  }
};

class LateObjectTest : public testing::Test {
 protected:
  std::shared_ptr<doubles::CallLog> log = std::make_shared<doubles::CallLog>();
  LateObject object{doubles::MakeDouble<Sample>(log)};
};

TEST_F(LateObjectTest, ReadsPropertiesInAnyCase) {
  EXPECT_EQ(ToText(object.Call("Text")), "Prüf é");
  EXPECT_EQ(ToText(object.Call("TEXT")), "Prüf é");
}

TEST_F(LateObjectTest, PassesArgumentsInTheirOrderAndTypes) {
  const std::string text = "text";
  object.Call("Do", {"literal", text, 7, true, Variant::FromDouble(1)});
  object.Let("Value", {"name", std::string_view("new")});
  EXPECT_THAT(log->calls, ElementsAre("Sample.Do(\"literal\", \"text\", 7, True, type 5)",
                                      "Sample.Value=(\"name\", \"new\")"));
}

TEST_F(LateObjectTest, GivesObjectsAsObjects) {
  EXPECT_EQ(ToText(object.Object("Itself").Object("Itself").Call("Text")), "Prüf é");
  EXPECT_EQ(ErrorOf([&] { object.Object("Nothing"); }).Number(), 91);
  EXPECT_EQ(ErrorOf([&] { object.Object("Text"); }).Number(), 91);
  EXPECT_EQ(ErrorOf([&] { object.Call("Itself"); }).Number(), 13);
}

TEST_F(LateObjectTest, RaisesTheErrorOfTheObject) {
  ExpectError([&] { object.Call("Fail"); }, 1004, "The sample", "Failed: é");
}

TEST_F(LateObjectTest, NamesTheMemberThatIsNotThere) {
  ExpectError([&] { object.Call("NoSuch"); }, 438, "",
              "Object doesn't support this property or method: NoSuch");
}

TEST_F(LateObjectTest, RefusesWhatTheMemberDoesNotTake) {
  EXPECT_EQ(ErrorOf([&] { object.Call("Text", {1}); }).Number(), 450);
  EXPECT_EQ(ErrorOf([&] { object.Let("Text", {1}); }).Number(), 438);
}

TEST_F(LateObjectTest, WalksACollection) {
  LateEnumerator walk(object);
  EXPECT_EQ(ToText(walk.Next()->Call("Text")), "Prüf é");
  EXPECT_TRUE(walk.Next().has_value());
  EXPECT_FALSE(walk.Next().has_value());
  EXPECT_FALSE(walk.Next().has_value());
}

TEST(LateObject, WalksNothingThatIsNoCollection) {
  class Plain final : public DispatchDouble {
   public:
    Plain() : DispatchDouble("Plain", std::make_shared<doubles::CallLog>()) {}
  };
  const LateObject plain(doubles::MakeDouble<Plain>());
  EXPECT_EQ(ErrorOf([&] { LateEnumerator walk(plain); }).Number(), 438);
}

TEST(LateObject, GetsWhatACalleeLeavesInAReference) {
  // What takes a reference to a VARIANT.
  class Setter final : public IDispatch {
   public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID* ids) override {
      *ids = 1;
      return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT*, EXCEPINFO*,
                                     UINT*) override {
      VARIANT& last = parameters->rgvarg[0];
      if (last.vt != (VT_BYREF | VT_VARIANT) || last.pvarVal->lVal != 5) return DISP_E_TYPEMISMATCH;
      last.pvarVal->lVal = 6;
      return S_OK;
    }
  } setter;
  const LateObject object{Ref<IDispatch>(&setter)};
  Variant value = Variant::FromLong(5);
  std::array arguments = {Variant::FromText("first"), Variant::ByReference(&value)};
  object.Call("Set", arguments, NoObjects());
  EXPECT_EQ(value.AsLong(), 6);
}

TEST(LateObject, MakesObjectsByTheirProgId) {
  const doubles::ComThread com;
  const auto log = std::make_shared<doubles::CallLog>();
  const doubles::ClassDouble sample("Hearthmake.Test.Sample",
                                    [&] { return doubles::MakeDouble<Sample>(log); });
  EXPECT_EQ(ToText(LateObject::Create("Hearthmake.Test.Sample").Call("Text")), "Prüf é");
  const automation::Error error = ErrorOf([] { LateObject::Create("Hearthmake.Test.None"); });
  EXPECT_EQ(error.Number(), 429);
  EXPECT_THAT(error.Description(),
              testing::StartsWith("ActiveX component can't create object: Hearthmake.Test.None ("));
}

}  // namespace
}  // namespace hearthmake::win32
