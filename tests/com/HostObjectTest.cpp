#include "com/HostObject.hpp"

#include <gtest/gtest.h>

#include "support/ComHost.hpp"
#include "support/ComSample.hpp"

namespace hearthmake::com {
namespace {

using automation::Ref;

TEST(HostObject, AnswersCallsOfTheLibrary) {
  const auto shelf = MakeShelf();
  const Ref<HostDispatch> host(
      new HostDispatch([](DISPID id, DISPPARAMS& parameters, VARIANT* result, EXCEPINFO*) {
        EXPECT_EQ(id, 42);
        EXPECT_EQ(parameters.cArgs, 0U);
        *result = LongOf(99);
        return S_OK;
      }));
  OwnedVariant result;
  EXPECT_EQ(shelf->Ask(host.Get(), Text("answer"), &result), S_OK);
  EXPECT_EQ(result.lVal, 99);
}

TEST(HostObject, GivesOutIdsThatHoldForEveryObject) {
  const ThreadState::Call call([] { return platform::Platform(); });
  const auto answer = [](DISPID id, DISPPARAMS&, VARIANT* result, EXCEPINFO*) {
    *result = LongOf(id);
    return S_OK;
  };
  const Ref<HostDispatch> first(new HostDispatch(answer));
  const Ref<HostDispatch> second(new HostDispatch(answer, IID_NULL, 7));
  const auto one = ThreadState::Current().Take(first.Get());
  const auto other = ThreadState::Current().Take(second.Get());
  ASSERT_EQ(&one->Declaration(), &other->Declaration());
  const auto id = one->FindMember("answer");
  ASSERT_TRUE(id.has_value());
  EXPECT_EQ(automation::ToLong(one->Invoke(*id, automation::InvokeKind::Call, {})), 42);
  EXPECT_EQ(automation::ToLong(other->Invoke(*id, automation::InvokeKind::Call, {})), 7);
  EXPECT_FALSE(one->FindMember("nothing").has_value());
}

TEST(HostObject, PassesItsErrorsOn) {
  const auto shelf = MakeShelf();
  const Ref<HostDispatch> host(new HostDispatch([](DISPID, DISPPARAMS&, VARIANT*, EXCEPINFO* failure) {
    failure->scode = static_cast<SCODE>(0x800A0035);
    failure->bstrSource = SysAllocString(L"Host");
    failure->bstrDescription = SysAllocString(L"No such file");
    return DISP_E_EXCEPTION;
  }));
  OwnedVariant result;
  EXPECT_EQ(shelf->Ask(host.Get(), Text("Answer"), &result), static_cast<HRESULT>(0x800A0035));
  const LeftError error = TakeError();
  EXPECT_EQ(error.source, "Host");
  EXPECT_EQ(error.text, "No such file");
  EXPECT_EQ(shelf->Ask(host.Get(), Text("Nothing"), &result), static_cast<HRESULT>(0x800A01B6));
}

TEST(HostObject, MayDropTheCallerAndFail) {
  auto shelf = MakeShelf();
  const Ref<HostDispatch> host(new HostDispatch([&](DISPID, DISPPARAMS&, VARIANT*, EXCEPINFO* failure) {
    shelf = nullptr;
    failure->scode = static_cast<SCODE>(0x800A0035);
    return DISP_E_EXCEPTION;
  }));
  OwnedVariant result;
  EXPECT_EQ(shelf->Ask(host.Get(), Text("Answer"), &result), static_cast<HRESULT>(0x800A0035));
  EXPECT_EQ(Shelf::Count(), 0);
  EXPECT_EQ(ThreadState::CurrentOrNull(), nullptr);
}

TEST(HostObject, IsReleasedWithTheLastUse) {
  const Ref<HostDispatch> host(new HostDispatch([](auto&&...) { return S_OK; }));
  {
    const auto shelf = MakeShelf();
    EXPECT_EQ(shelf->putref_Other(host.Get()), S_OK);
    EXPECT_GT(host->References(), 1U);
  }
  EXPECT_EQ(host->References(), 1U);
  EXPECT_EQ(ThreadState::CurrentOrNull(), nullptr);
}

}  // namespace
}  // namespace hearthmake::com
