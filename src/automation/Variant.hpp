#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "automation/RefCounted.hpp"

namespace hearthmake::automation {

class Object;
class Variant;

// The subtypes of a variant, with automation's own numbers.
enum class VariantType : std::uint16_t {
  Empty = 0,
  Null = 1,
  Integer = 2,
  Long = 3,
  Single = 4,
  Double = 5,
  Currency = 6,
  Date = 7,
  String = 8,
  Object = 9,
  Error = 10,
  Boolean = 11,
  Byte = 17,
  Array = 0x200C,
  ByReference = 0x400C,
};

// The text of a String variant: UTF-16, shared between variants by reference count, never changed while
// shared. Capacity is kept so that the sole owner of a text can append to it in place.
class StringBuffer {
 public:
  static StringBuffer* New(std::u16string_view text, std::size_t capacity = 0);
  void AddRef() noexcept { ++m_references; }
  void Release() noexcept;

  std::u16string_view View() const { return {Data(), m_length}; }
  bool IsShared() const { return m_references > 1; }
  // Appends in place; only for a sole owner. False when the capacity is too small: nothing is changed.
  bool Append(std::u16string_view text);
  std::size_t Capacity() const { return m_capacity; }

 private:
  StringBuffer(std::size_t length, std::size_t capacity)
      : m_length(static_cast<std::uint32_t>(length)), m_capacity(static_cast<std::uint32_t>(capacity)) {}
  // The characters stand right behind the header, in the same allocation.
  char16_t* Data() { return reinterpret_cast<char16_t*>(this + 1); }
  const char16_t* Data() const { return reinterpret_cast<const char16_t*>(this + 1); }

  std::uint32_t m_references = 0;
  std::uint32_t m_length;
  std::uint32_t m_capacity;
};

// The elements of an Array variant, in the order in which the first index runs fastest.
class ArrayBuffer {
 public:
  struct Bound {
    std::int32_t lower = 0;
    std::int32_t count = 0;
  };
  explicit ArrayBuffer(std::vector<Bound> bounds);

  void AddRef() noexcept { ++m_references; }
  void Release() noexcept;

  const std::vector<Bound>& Bounds() const { return m_bounds; }
  std::vector<Variant>& Elements() { return m_elements; }
  const std::vector<Variant>& Elements() const { return m_elements; }

 private:
  ~ArrayBuffer();

  std::uint32_t m_references = 0;
  std::vector<Bound> m_bounds;
  std::vector<Variant> m_elements;
};

// A value of any type: the only variant of the tree, spoken by dispatch, the script engine and the COM
// border. Sixteen bytes. Copies share texts, arrays and objects.
class Variant {
 public:
  Variant() noexcept = default;
  Variant(const Variant& other) noexcept : m_type(other.m_type), m_value(other.m_value) { AddRef(); }
  Variant(Variant&& other) noexcept : m_type(other.m_type), m_value(other.m_value) {
    other.m_type = VariantType::Empty;
  }
  Variant& operator=(Variant other) noexcept {
    std::swap(m_type, other.m_type);
    std::swap(m_value, other.m_value);
    return *this;
  }
  ~Variant() { Release(); }

  static Variant Null();
  static Variant FromByte(std::uint8_t value);
  static Variant FromInteger(std::int16_t value);
  static Variant FromLong(std::int32_t value);
  static Variant FromSingle(float value);
  static Variant FromDouble(double value);
  static Variant FromCurrency(std::int64_t tenThousandths);
  static Variant FromDate(double oleDate);
  static Variant FromBoolean(bool value);
  static Variant FromText(std::string_view utf8);
  static Variant FromUtf16(std::u16string_view text);
  static Variant FromUtf16(std::u16string_view first, std::u16string_view second);  // joined
  static Variant FromObject(Ref<Object> object);  // null is Nothing
  static Variant FromErrorCode(std::int32_t code);
  static Variant FromArray(Ref<ArrayBuffer> array);
  // Refers to a variant that outlives this one; never to a reference.
  static Variant ByReference(Variant* target);
  // The value of an argument that the caller left out.
  static Variant Missing();

  VariantType Type() const { return m_type; }
  bool IsEmpty() const { return m_type == VariantType::Empty; }
  bool IsNull() const { return m_type == VariantType::Null; }
  bool IsObject() const { return m_type == VariantType::Object; }
  bool IsMissing() const;

  // The raw contents; the type must be the one named.
  std::uint8_t AsByte() const { return m_value.byteValue; }
  std::int16_t AsInteger() const { return m_value.integerValue; }
  std::int32_t AsLong() const { return m_value.longValue; }
  float AsSingle() const { return m_value.singleValue; }
  double AsDouble() const { return m_value.doubleValue; }  // Date too
  std::int64_t AsCurrency() const { return m_value.currencyValue; }
  bool AsBoolean() const { return m_value.integerValue != 0; }
  std::u16string_view AsUtf16() const { return m_value.text->View(); }
  StringBuffer* AsStringBuffer() const { return m_value.text; }
  Object* AsObject() const { return m_value.object; }
  ArrayBuffer* AsArray() const { return m_value.array; }
  std::int32_t AsErrorCode() const { return m_value.longValue; }
  Variant* AsReference() const { return m_value.reference; }

  // The variant itself, or the one that it refers to.
  const Variant& Target() const { return m_type == VariantType::ByReference ? *m_value.reference : *this; }
  Variant& Target() { return m_type == VariantType::ByReference ? *m_value.reference : *this; }

 private:
  union Value {
    std::uint8_t byteValue;
    std::int16_t integerValue;
    std::int32_t longValue;
    float singleValue;
    double doubleValue;
    std::int64_t currencyValue = 0;
    StringBuffer* text;
    Object* object;
    ArrayBuffer* array;
    Variant* reference;
  };

  bool IsCounted() const {
    return m_type == VariantType::String || m_type == VariantType::Object || m_type == VariantType::Array;
  }
  void AddRef() const noexcept {
    if (IsCounted()) AddRefCounted();
  }
  void Release() noexcept {
    if (IsCounted()) ReleaseCounted();
  }
  void AddRefCounted() const noexcept;
  void ReleaseCounted() noexcept;

  VariantType m_type = VariantType::Empty;
  Value m_value;
};

static_assert(sizeof(Variant) == 16);

// Conversions as Visual Basic makes them, from any variant (a reference is followed). Error 13 "Type
// mismatch" where there is no conversion, 6 "Overflow" where the value does not fit, 94 for Null.
std::int16_t ToInteger(const Variant& value);
std::int32_t ToLong(const Variant& value);  // fractions are rounded, halves to the even number
double ToDouble(const Variant& value);
bool ToBoolean(const Variant& value);
double ToDate(const Variant& value);
std::string ToText(const Variant& value);
// The object, null for Nothing; error 424-like type mismatch for what is no object.
Object* ToObject(const Variant& value);

}  // namespace hearthmake::automation
