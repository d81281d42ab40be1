#include "adapters/win32/VariantConversion.hpp"

#include <gtest/gtest.h>

#include <limits>

#include "automation/Error.hpp"

namespace hearthmake::win32 {
namespace {

using automation::Variant;
using automation::VariantType;

// There and back again.
Variant Round(const Variant& value) {
  OwnedVariant made;
  static_cast<VARIANT&>(made) = ToVariant(value, NoObjects());
  EXPECT_EQ(made.vt, static_cast<VARTYPE>(value.Type()));
  return FromVariant(made, NoObjects());
}

TEST(VariantConversion, KeepsEveryValue) {
  EXPECT_TRUE(Round(Variant()).IsEmpty());
  EXPECT_TRUE(Round(Variant::Null()).IsNull());
  EXPECT_EQ(Round(Variant::FromByte(200)).AsByte(), 200);
  EXPECT_EQ(Round(Variant::FromInteger(-5)).AsInteger(), -5);
  EXPECT_EQ(Round(Variant::FromLong(-70000)).AsLong(), -70000);
  EXPECT_EQ(Round(Variant::FromSingle(1.5F)).AsSingle(), 1.5F);
  EXPECT_EQ(Round(Variant::FromDouble(0.1)).AsDouble(), 0.1);
  EXPECT_EQ(Round(Variant::FromCurrency(12345)).AsCurrency(), 12345);
  EXPECT_EQ(Round(Variant::FromDate(36526.5)).Type(), VariantType::Date);
  EXPECT_TRUE(Round(Variant::FromBoolean(true)).AsBoolean());
  EXPECT_EQ(Round(Variant::FromUtf16(std::u16string_view(u"a\0b", 3))).AsUtf16(),
            std::u16string_view(u"a\0b", 3));
  EXPECT_TRUE(Round(Variant::Missing()).IsMissing());
  EXPECT_EQ(Round(Variant::FromObject(nullptr)).AsObject(), nullptr);
}

TEST(VariantConversion, KeepsArraysWithTheirBounds) {
  const automation::Ref<automation::ArrayBuffer> buffer(new automation::ArrayBuffer({{1, 2}, {0, 3}}));
  std::int32_t next = 0;
  for (Variant& element : buffer->Elements()) element = Variant::FromLong(next++);
  const Variant back = Round(Variant::FromArray(buffer));
  ASSERT_EQ(back.AsArray()->Bounds().size(), 2U);
  EXPECT_EQ(back.AsArray()->Bounds()[0].lower, 1);
  EXPECT_EQ(back.AsArray()->Bounds()[1].count, 3);
  next = 0;
  for (const Variant& element : back.AsArray()->Elements()) EXPECT_EQ(element.AsLong(), next++);
}

TEST(VariantConversion, TakesWhatAutomationHasNoTypeFor) {
  VARIANT value;
  VariantInit(&value);
  value.vt = VT_UI4;
  value.ulVal = 3000000000UL;
  EXPECT_EQ(FromVariant(value, NoObjects()).AsDouble(), 3e9);
  value.vt = VT_I8;
  value.llVal = -1;
  EXPECT_EQ(FromVariant(value, NoObjects()).AsLong(), -1);
  value.llVal = std::numeric_limits<std::int64_t>::min();
  EXPECT_EQ(FromVariant(value, NoObjects()).Type(), VariantType::Double);
  value.vt = VT_UI2;
  value.uiVal = 60000;
  EXPECT_EQ(FromVariant(value, NoObjects()).AsLong(), 60000);
  value.vt = VT_RECORD;
  EXPECT_THROW(FromVariant(value, NoObjects()), automation::Error);
  value.vt = VT_BYREF | VT_I4;
  value.byref = nullptr;
  EXPECT_THROW(FromVariant(value, NoObjects()), automation::Error);
}

TEST(VariantConversion, ReadsTypedArrays) {
  OwnedVariant array;
  array.vt = VT_ARRAY | VT_BSTR;
  array.parray = SafeArrayCreateVector(VT_BSTR, 0, 2);
  LONG index = 1;
  OwnedVariant text;
  text.vt = VT_BSTR;
  text.bstrVal = SysAllocString(L"two");
  ASSERT_EQ(SafeArrayPutElement(array.parray, &index, text.bstrVal), S_OK);
  const Variant value = FromVariant(array, NoObjects());
  EXPECT_EQ(automation::ToText(value.AsArray()->Elements()[0]), "");
  EXPECT_EQ(automation::ToText(value.AsArray()->Elements()[1]), "two");
}

TEST(VariantConversion, StoresWhatAReferenceCanHold) {
  std::uint8_t byte = 1;
  ToPlace(VT_UI1, &byte, Variant::FromLong(200), NoObjects());
  EXPECT_EQ(byte, 200);
  EXPECT_THROW(ToPlace(VT_UI1, &byte, Variant::FromLong(300), NoObjects()), automation::Error);
  float single = 0;
  ToPlace(VT_R4, &single, Variant::FromText("2.5"), NoObjects());
  EXPECT_EQ(single, 2.5F);
  std::int16_t integer = 0;
  EXPECT_THROW(ToPlace(VT_I2, &integer, Variant::FromLong(70000), NoObjects()), automation::Error);
}

TEST(VariantConversion, LetsNoObjectsOverAClosedBorder) {
  OwnedVariant object;
  object.vt = VT_UNKNOWN;
  ASSERT_EQ(CreateTypeLib2(SYS_WIN32, L"none.tlb", reinterpret_cast<ICreateTypeLib2**>(&object.punkVal)),
            S_OK);
  EXPECT_THROW(FromVariant(object, NoObjects()), automation::Error);
}

}  // namespace
}  // namespace hearthmake::win32
