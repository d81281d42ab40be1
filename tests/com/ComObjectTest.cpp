#include "com/ComObject.hpp"

#include <gtest/gtest.h>

#include "support/ComHost.hpp"
#include "support/ComSample.hpp"

namespace hearthmake::com {
namespace {

using automation::Ref;

TEST(ComObject, IsOneIdentityWhateverIsAskedFor) {
  const auto shelf = MakeShelf();
  const auto unknown = Query<IUnknown>(shelf.Get(), IID_IUnknown);
  for (const IID& iid :
       {IID_IDispatch, IID_ISupportErrorInfo, IID_IProvideClassInfo2, IID_IConnectionPointContainer,
        ShelfId(), ParseGuid(Labelled::Describe().InterfaceId())}) {
    const auto other = Query<IUnknown>(shelf.Get(), iid);
    ASSERT_TRUE(other);
    EXPECT_EQ(Query<IUnknown>(other.Get(), IID_IUnknown).Get(), unknown.Get());
    EXPECT_EQ(Query<IShelf>(other.Get(), ShelfId()).Get(), shelf.Get());
  }
  EXPECT_FALSE(Query<IUnknown>(shelf.Get(), IID_IMarshal));
}

TEST(ComObject, TakesAndGivesEveryTypeThroughItsVtable) {
  const auto shelf = MakeShelf();
  EXPECT_EQ(shelf->put_Label(Text("B\xC3\xBC"
                                  "cher")),
            S_OK);
  Text label;
  EXPECT_EQ(shelf->get_Label(label.Place()), S_OK);
  EXPECT_EQ(label.Utf8(),
            "B\xC3\xBC"
            "cher");
  double sum = 0;
  EXPECT_EQ(shelf->Sum(-3, 0.5, VARIANT_TRUE, 100.25, 2, &sum), S_OK);
  EXPECT_EQ(sum, -3 + 0.5 + 1000 + 100.25 + 20000);
}

TEST(ComObject, WritesInOutArgumentsBack) {
  const auto shelf = MakeShelf();
  Text text("abc");
  long number = 21;
  OwnedVariant any;
  static_cast<VARIANT&>(any) = LongOf(5);
  VARIANT_BOOL result = VARIANT_FALSE;
  EXPECT_EQ(shelf->Change(text.Reference(), &number, &any, &result), S_OK);
  EXPECT_EQ(text.Utf8(), "abc!");
  EXPECT_EQ(number, 42);
  EXPECT_EQ(TextOf(any), "was 5");
  EXPECT_EQ(result, VARIANT_TRUE);
  EXPECT_EQ(shelf->Change(nullptr, &number, &any, &result), E_POINTER);
}

TEST(ComObject, TellsOfErrorsWithNumberSourceAndText) {
  const auto shelf = MakeShelf();
  EXPECT_EQ(
      Query<ISupportErrorInfo>(shelf.Get(), IID_ISupportErrorInfo)->InterfaceSupportsErrorInfo(ShelfId()),
      S_OK);
  EXPECT_EQ(shelf->Fail(45), static_cast<HRESULT>(0x800A002D));
  const LeftError error = TakeError();
  EXPECT_EQ(error.source, "Shelf.Fail");
  EXPECT_EQ(error.text, "It fell: \xC3\xA5");
  EXPECT_EQ(shelf->Fail(static_cast<long>(0x80040003)), static_cast<HRESULT>(0x80040003));
}

TEST(ComObject, GivesItsFurtherInterfacesMembers) {
  const auto shelf = MakeShelf();
  const auto labelled = Query<ILabelled>(shelf.Get(), ParseGuid(Labelled::Describe().InterfaceId()));
  ASSERT_TRUE(labelled);
  Text text;
  EXPECT_EQ(labelled->get_Text(text.Place()), S_OK);
  EXPECT_EQ(text.Utf8(), "labelled shelf");
  EXPECT_NE(IdOf(labelled.Get(), L"text"), DISPID_UNKNOWN);
  EXPECT_EQ(IdOf(shelf.Get(), L"text"), DISPID_UNKNOWN);
}

TEST(ComObject, KeepsTheIdentityOfObjectsThatGoRound) {
  const auto shelf = MakeShelf();
  const auto other = MakeShelf();
  EXPECT_EQ(shelf->putref_Other(other.Get()), S_OK);
  IDispatch* found = nullptr;
  EXPECT_EQ(shelf->get_Other(&found), S_OK);
  EXPECT_EQ(Ref<IDispatch>::Adopt(found).Get(), other.Get());
  EXPECT_EQ(shelf->putref_Other(nullptr), S_OK);
  EXPECT_EQ(shelf->get_Other(&found), S_OK);
  EXPECT_EQ(found, nullptr);

  const Ref<HostDispatch> host(new HostDispatch([](auto&&...) { return S_OK; }));
  EXPECT_EQ(shelf->putref_Other(host.Get()), S_OK);
  EXPECT_EQ(shelf->get_Other(&found), S_OK);
  EXPECT_EQ(Ref<IDispatch>::Adopt(found).Get(), host.Get());
  EXPECT_EQ(shelf->putref_Other(nullptr), S_OK);
  EXPECT_EQ(host->References(), 1U);
}

TEST(ComObject, RefusesAnObjectOfAnotherClass) {
  const auto shelf = MakeShelf();
  const auto other = MakeShelf();
  EXPECT_EQ(shelf->put_Neighbour(other.Get()), S_OK);
  IShelf* found = nullptr;
  EXPECT_EQ(shelf->get_Neighbour(&found), S_OK);
  EXPECT_EQ(Ref<IShelf>::Adopt(found).Get(), other.Get());
  const Ref<HostDispatch> host(new HostDispatch([](auto&&...) { return S_OK; }));
  EXPECT_EQ(shelf->put_Neighbour(reinterpret_cast<IShelf*>(host.Get())), static_cast<HRESULT>(0x800A000D));
  shelf->put_Neighbour(nullptr);
}

TEST(ComObject, LetsOptionalArgumentsBeLeftOut) {
  const auto shelf = MakeShelf();
  Text noted;
  OwnedVariant missing;
  missing.vt = VT_ERROR;
  missing.scode = DISP_E_PARAMNOTFOUND;
  EXPECT_EQ(shelf->Note(4, &missing, noted.Place()), S_OK);
  EXPECT_EQ(noted.Utf8(), "4");
  EXPECT_EQ(missing.vt, VT_ERROR);
  OwnedVariant answer;
  EXPECT_EQ(shelf->Note(4, &answer, noted.Place()), S_OK);
  EXPECT_EQ(TextOf(answer), "noted");
}

TEST(ComObject, RefusesCallsFromAnotherThread) {
  const auto shelf = MakeShelf();
  HRESULT result = S_OK;
  struct Call {
    IShelf* shelf;
    HRESULT* result;
  } call{shelf.Get(), &result};
  HANDLE thread = CreateThread(
      nullptr, 0,
      [](void* data) -> DWORD {
        auto* from = static_cast<Call*>(data);
        *from->result = from->shelf->Fail(45);
        return 0;
      },
      &call, 0, nullptr);
  WaitForSingleObject(thread, INFINITE);
  CloseHandle(thread);
  EXPECT_EQ(result, RPC_E_WRONG_THREAD);
}

TEST(ComObject, GoesWithTheLastReferenceAndTheThreadsStateWithIt) {
  {
    const auto shelf = MakeShelf();
    EXPECT_EQ(Shelf::Count(), 1);
    EXPECT_TRUE(ModuleLock::IsAnyHeld());
    EXPECT_NE(ThreadState::CurrentOrNull(), nullptr);
  }
  EXPECT_EQ(Shelf::Count(), 0);
  EXPECT_EQ(ThreadState::CurrentOrNull(), nullptr);
  EXPECT_FALSE(ModuleLock::IsAnyHeld());
}

}  // namespace
}  // namespace hearthmake::com
