#include "com/Dispatch.hpp"

#include <gtest/gtest.h>

#include <vector>

#include "support/ComHost.hpp"
#include "support/ComSample.hpp"

namespace hearthmake::com {
namespace {

using automation::Ref;

VARIANT Reference(VARTYPE type, void* place) {
  VARIANT made;
  VariantInit(&made);
  made.vt = static_cast<VARTYPE>(VT_BYREF | type);
  made.byref = place;
  return made;
}

VARIANT Borrowed(BSTR text) {
  VARIANT made;
  VariantInit(&made);
  made.vt = VT_BSTR;
  made.bstrVal = text;
  return made;
}

struct Failure {
  ~Failure() {
    SysFreeString(record.bstrSource);
    SysFreeString(record.bstrDescription);
  }
  EXCEPINFO record = {};
};

// Arguments from the first to the last, as one writes them.
HRESULT Invoke(IDispatch* object, const wchar_t* name, WORD flags, std::vector<VARIANT> arguments,
               VARIANT* result = nullptr, EXCEPINFO* failure = nullptr) {
  std::vector<VARIANT> reversed(arguments.rbegin(), arguments.rend());
  DISPID put = DISPID_PROPERTYPUT;
  DISPPARAMS parameters = {reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
  if ((flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0) {
    parameters.rgdispidNamedArgs = &put;
    parameters.cNamedArgs = 1;
  }
  return object->Invoke(IdOf(object, name), IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters, result,
                        failure, nullptr);
}

TEST(Dispatch, FindsNamesWithoutRegardToCaseAndParameters) {
  const auto shelf = MakeShelf();
  EXPECT_EQ(IdOf(shelf.Get(), L"LABEL"), 0);
  EXPECT_EQ(IdOf(shelf.Get(), L"NewEnum"), -4);
  EXPECT_EQ(IdOf(shelf.Get(), L"nothing"), DISPID_UNKNOWN);
  wchar_t member[] = L"Change";
  wchar_t first[] = L"lngnumber";
  wchar_t second[] = L"strText";
  LPOLESTR names[] = {member, first, second};
  DISPID ids[3] = {};
  EXPECT_EQ(shelf->GetIDsOfNames(IID_NULL, names, 3, LOCALE_USER_DEFAULT, ids), S_OK);
  EXPECT_EQ(ids[1], 1);
  EXPECT_EQ(ids[2], 0);
}

TEST(Dispatch, ReadsAndWritesPropertiesAndConvertsArguments) {
  const auto shelf = MakeShelf();
  EXPECT_EQ(Invoke(shelf.Get(), L"Label", DISPATCH_PROPERTYPUT, {LongOf(12)}), S_OK);
  OwnedVariant label;
  EXPECT_EQ(Invoke(shelf.Get(), L"Label", DISPATCH_PROPERTYGET, {}, &label), S_OK);
  EXPECT_EQ(label.vt, VT_BSTR);
  EXPECT_EQ(TextOf(label), "12");
  OwnedVariant sum;
  const Text number("2.5");
  EXPECT_EQ(Invoke(shelf.Get(), L"Sum", DISPATCH_METHOD | DISPATCH_PROPERTYGET,
                   {LongOf(1), Borrowed(number), LongOf(0), LongOf(4), LongOf(1)}, &sum),
            S_OK);
  EXPECT_EQ(sum.vt, VT_R8);
  EXPECT_EQ(sum.dblVal, 10007.5);
}

TEST(Dispatch, WritesBackThroughTypedAndVariantReferences) {
  const auto shelf = MakeShelf();
  Text text("abc");
  OwnedVariant number;
  static_cast<VARIANT&>(number) = LongOf(4);
  OwnedVariant any;
  OwnedVariant result;
  EXPECT_EQ(Invoke(shelf.Get(), L"Change", DISPATCH_METHOD,
                   {Reference(VT_BSTR, text.Reference()), Reference(VT_VARIANT, &number),
                    Reference(VT_VARIANT, &any)},
                   &result),
            S_OK);
  EXPECT_EQ(text.Utf8(), "abc!");
  EXPECT_EQ(number.lVal, 8);
  EXPECT_EQ(TextOf(any), "was ");
  EXPECT_EQ(result.vt, VT_BOOL);
}

TEST(Dispatch, LeavesArgumentsByValueAlone) {
  const auto shelf = MakeShelf();
  Text label("new");
  EXPECT_EQ(Invoke(shelf.Get(), L"Label", DISPATCH_PROPERTYPUT, {Reference(VT_BSTR, label.Reference())}),
            S_OK);
  EXPECT_EQ(label.Utf8(), "new");
}

TEST(Dispatch, TellsOfErrorsInTheRecord) {
  const auto shelf = MakeShelf();
  Failure failure;
  EXPECT_EQ(Invoke(shelf.Get(), L"Fail", DISPATCH_METHOD, {LongOf(1004)}, nullptr, &failure.record),
            DISP_E_EXCEPTION);
  EXPECT_EQ(failure.record.scode, static_cast<SCODE>(0x800A03EC));
  EXPECT_EQ(win32::ToUtf8(failure.record.bstrSource), "Shelf.Fail");
  EXPECT_EQ(win32::ToUtf8(failure.record.bstrDescription), "It fell: \xC3\xA5");
  EXPECT_EQ(Invoke(shelf.Get(), L"Fail", DISPATCH_METHOD, {LongOf(1004)}), DISP_E_EXCEPTION);
}

TEST(Dispatch, RefusesTooManyTooFewAndUnfitArguments) {
  const auto shelf = MakeShelf();
  const Text word("word");
  const auto scode = [&](std::vector<VARIANT> arguments) {
    Failure failure;
    EXPECT_EQ(Invoke(shelf.Get(), L"Fail", DISPATCH_METHOD, std::move(arguments), nullptr, &failure.record),
              DISP_E_EXCEPTION);
    return static_cast<unsigned>(failure.record.scode);
  };
  EXPECT_EQ(scode({}), 0x800A01C1U);
  EXPECT_EQ(scode({LongOf(1), LongOf(2)}), 0x800A01C2U);
  EXPECT_EQ(scode({Borrowed(word)}), 0x800A000DU);
}

TEST(Dispatch, TakesNamedArguments) {
  const auto shelf = MakeShelf();
  OwnedVariant answer;
  VARIANT arguments[] = {Reference(VT_VARIANT, &answer)};
  DISPID name = 1;
  DISPPARAMS parameters = {arguments, &name, 1, 1};
  OwnedVariant result;
  EXPECT_EQ(shelf->Invoke(IdOf(shelf.Get(), L"Note"), IID_NULL, 0, DISPATCH_METHOD, &parameters, &result,
                          nullptr, nullptr),
            S_OK);
  EXPECT_EQ(TextOf(result), "none");
  EXPECT_EQ(TextOf(answer), "noted");
}

TEST(Dispatch, WalksACollection) {
  const auto shelf = MakeShelf();
  DISPPARAMS none = {};
  OwnedVariant result;
  ASSERT_EQ(
      shelf->Invoke(DISPID_NEWENUM, IID_NULL, 0, DISPATCH_PROPERTYGET, &none, &result, nullptr, nullptr),
      S_OK);
  ASSERT_EQ(result.vt, VT_UNKNOWN);
  const auto items = Query<IEnumVARIANT>(result.punkVal, IID_IEnumVARIANT);
  ASSERT_TRUE(items);
  VARIANT list[2];
  ULONG fetched = 0;
  EXPECT_EQ(items->Next(2, list, &fetched), S_OK);
  EXPECT_EQ(list[1].lVal, 20);
  IEnumVARIANT* copy = nullptr;
  ASSERT_EQ(items->Clone(&copy), S_OK);
  const auto clone = Ref<IEnumVARIANT>::Adopt(copy);
  EXPECT_EQ(items->Next(2, list, &fetched), S_FALSE);
  EXPECT_EQ(fetched, 1U);
  EXPECT_EQ(clone->Next(1, list, nullptr), S_OK);
  EXPECT_EQ(list[0].lVal, 30);
  EXPECT_EQ(items->Reset(), S_OK);
  EXPECT_EQ(items->Skip(2), S_OK);
  EXPECT_EQ(items->Skip(2), S_FALSE);
}

}  // namespace
}  // namespace hearthmake::com
