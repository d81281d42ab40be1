#include "com/ConnectionPoint.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/ComHost.hpp"
#include "support/ComSample.hpp"

namespace hearthmake::com {
namespace {

using automation::Ref;

const IID& EventsId() {
  static const IID kId = ParseGuid(ShelfEvents::Describe().InterfaceId());
  return kId;
}

Ref<IConnectionPoint> PointOf(IUnknown* object) {
  const auto container = Query<IConnectionPointContainer>(object, IID_IConnectionPointContainer);
  IConnectionPoint* point = nullptr;
  EXPECT_EQ(container->FindConnectionPoint(EventsId(), &point), S_OK);
  return Ref<IConnectionPoint>::Adopt(point);
}

long Fill(IShelf* shelf, VARIANT* answer) {
  long result = 0;
  EXPECT_EQ(shelf->Fill(Text("books"), answer, &result), S_OK);
  return result;
}

TEST(ConnectionPoint, BringsEventsWithTypedReferences) {
  const auto shelf = MakeShelf();
  std::vector<std::string> heard;
  const Ref<HostDispatch> sink(new HostDispatch(
      [&](DISPID id, DISPPARAMS& parameters, VARIANT*, EXCEPINFO*) {
        VARIANT* arguments = parameters.rgvarg;
        if (id == 1) {
          EXPECT_EQ(parameters.cArgs, 2U);
          EXPECT_EQ(arguments[0].vt, VT_BYREF | VT_BOOL);
          EXPECT_EQ(arguments[1].vt, VT_BYREF | VT_DISPATCH);
          EXPECT_EQ(*arguments[1].ppdispVal, static_cast<IDispatch*>(shelf.Get()));
          heard.emplace_back("filling");
          return S_OK;
        }
        EXPECT_EQ(arguments[2].vt, VT_BSTR);
        EXPECT_EQ(arguments[1].vt, VT_BYREF | VT_VARIANT);
        EXPECT_EQ(arguments[0].vt, VT_I4);
        EXPECT_EQ(arguments[0].lVal, 7);
        heard.push_back("filled " + TextOf(arguments[2]));
        VariantClear(arguments[1].pvarVal);
        *arguments[1].pvarVal = LongOf(5);
        return S_OK;
      },
      EventsId()));
  DWORD number = 0;
  const auto point = PointOf(shelf.Get());
  ASSERT_EQ(point->Advise(sink.Get(), &number), S_OK);
  OwnedVariant answer;
  EXPECT_EQ(Fill(shelf.Get(), &answer), 1);
  EXPECT_EQ(heard, (std::vector<std::string>{"filling", "filled books"}));
  EXPECT_EQ(answer.lVal, 5);
  EXPECT_EQ(point->Unadvise(number), S_OK);
  EXPECT_EQ(point->Unadvise(number), CONNECT_E_NOCONNECTION);
  EXPECT_EQ(sink->References(), 1U);
}

TEST(ConnectionPoint, TakesAnAnswerThroughABooleanReference) {
  const auto shelf = MakeShelf();
  const Ref<HostDispatch> sink(new HostDispatch([](DISPID id, DISPPARAMS& parameters, VARIANT*, EXCEPINFO*) {
    if (id == 1) *parameters.rgvarg[0].pboolVal = VARIANT_TRUE;
    return S_OK;
  }));
  DWORD number = 0;
  ASSERT_EQ(PointOf(shelf.Get())->Advise(sink.Get(), &number), S_OK);
  OwnedVariant answer;
  EXPECT_EQ(Fill(shelf.Get(), &answer), -1);
}

TEST(ConnectionPoint, KeepsASinkThatFailsFromTheOthers) {
  const auto shelf = MakeShelf();
  int heard = 0;
  const Ref<HostDispatch> failing(new HostDispatch([](DISPID, DISPPARAMS&, VARIANT*, EXCEPINFO* failure) {
    failure->bstrDescription = SysAllocString(L"broken");
    return DISP_E_EXCEPTION;
  }));
  const Ref<HostDispatch> gone(new HostDispatch([](auto&&...) { return RPC_E_DISCONNECTED; }));
  const Ref<HostDispatch> hearing(new HostDispatch([&](auto&&...) {
    ++heard;
    return S_OK;
  }));
  const auto point = PointOf(shelf.Get());
  DWORD number = 0;
  for (const auto& sink : {failing, gone, hearing}) ASSERT_EQ(point->Advise(sink.Get(), &number), S_OK);
  OwnedVariant answer;
  EXPECT_EQ(Fill(shelf.Get(), &answer), 3);
  EXPECT_EQ(heard, 2);
}

TEST(ConnectionPoint, ListsItsConnectionsAndRefusesWhatIsNoSink) {
  const auto shelf = MakeShelf();
  const auto point = PointOf(shelf.Get());
  const Ref<HostDispatch> sink(new HostDispatch([](auto&&...) { return S_OK; }));
  DWORD first = 0;
  DWORD second = 0;
  ASSERT_EQ(point->Advise(sink.Get(), &first), S_OK);
  ASSERT_EQ(point->Advise(sink.Get(), &second), S_OK);
  EXPECT_NE(first, second);
  IEnumConnections* found = nullptr;
  ASSERT_EQ(point->EnumConnections(&found), S_OK);
  const auto connections = Ref<IEnumConnections>::Adopt(found);
  CONNECTDATA data[3] = {};
  ULONG fetched = 0;
  EXPECT_EQ(connections->Next(3, data, &fetched), S_FALSE);
  ASSERT_EQ(fetched, 2U);
  EXPECT_EQ(data[0].dwCookie, first);
  for (ULONG i = 0; i < fetched; ++i) data[i].pUnk->Release();
  EXPECT_EQ(point->Advise(nullptr, &first), E_POINTER);
  IConnectionPoint* other = nullptr;
  const auto container = Query<IConnectionPointContainer>(shelf.Get(), IID_IConnectionPointContainer);
  EXPECT_EQ(container->FindConnectionPoint(IID_IDispatch, &other), CONNECT_E_NOCONNECTION);
}

TEST(ConnectionPoint, LetsAHandlerDisconnectItselfAndDropTheObject) {
  auto shelf = MakeShelf();
  auto point = PointOf(shelf.Get());
  DWORD number = 0;
  const Ref<HostDispatch> sink(new HostDispatch([&](DISPID id, DISPPARAMS&, VARIANT*, EXCEPINFO*) {
    if (id != 1) return S_OK;
    point->Unadvise(number);
    point = nullptr;
    shelf = nullptr;
    return S_OK;
  }));
  ASSERT_EQ(point->Advise(sink.Get(), &number), S_OK);
  OwnedVariant answer;
  Fill(shelf.Get(), &answer);
  EXPECT_EQ(Shelf::Count(), 0);
  EXPECT_EQ(sink->References(), 1U);
  EXPECT_EQ(ThreadState::CurrentOrNull(), nullptr);
}

}  // namespace
}  // namespace hearthmake::com
