#pragma once

#include <cstdint>
#include <initializer_list>
#include <new>
#include <span>
#include <string>
#include <string_view>
#include <utility>
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
  // A text of this length whose characters the caller sets at once, through Writable.
  static StringBuffer* NewUnset(std::size_t length);
  char16_t* Writable() { return Data(); }  // only for a sole owner
  void AddRef() noexcept { ++m_references; }
  void Release() noexcept {
    if (--m_references == 0) ::operator delete(this);
  }

  std::u16string_view View() const { return {Data(), m_length}; }
  bool IsShared() const { return m_references > 1; }
  // Appends in place; only for a sole owner. False when the capacity is too small: nothing is changed.
  bool Append(std::u16string_view text);
  std::size_t Capacity() const { return m_capacity; }

 private:
  StringBuffer(std::size_t length, std::size_t capacity)
      : m_length(static_cast<std::uint32_t>(length)), m_capacity(static_cast<std::uint32_t>(capacity)) {}
  static void* Allocate(std::size_t capacity);
  // The characters stand right behind the header, in the same allocation.
  char16_t* Data() { return reinterpret_cast<char16_t*>(this + 1); }
  const char16_t* Data() const { return reinterpret_cast<const char16_t*>(this + 1); }

  std::uint32_t m_references = 0;
  std::uint32_t m_length;
  std::uint32_t m_capacity;
};

// The elements of an Array variant, in the order in which the first index runs fastest. Variants share a
// buffer by reference count; an array is a value, so whoever writes must be the sole owner (IsShared) or
// take a copy first.
//
// A lock is a counted reference too, held by somebody who points to an element: it does not make the buffer
// shared, but its elements must stay where they are, and a copy of it must be a real one.
class ArrayBuffer {
 public:
  struct Bound {
    std::int32_t lower = 0;
    std::int32_t count = 0;
  };
  static constexpr std::size_t kMostElements = std::size_t{1} << 28;

  // Error 7 when it would have more than kMostElements.
  explicit ArrayBuffer(std::span<const Bound> bounds);
  ArrayBuffer(std::initializer_list<Bound> bounds)
      : ArrayBuffer(std::span<const Bound>(bounds.begin(), bounds.size())) {}
  ArrayBuffer(const ArrayBuffer&) = delete;
  ArrayBuffer& operator=(const ArrayBuffer&) = delete;

  void AddRef() noexcept { ++m_references; }
  void Release() noexcept {
    if (--m_references == 0) End();
  }
  void Lock() noexcept {
    ++m_references;
    ++m_locks;
  }
  void Unlock() noexcept {
    --m_locks;
    Release();
  }
  bool IsLocked() const { return m_locks != 0; }
  bool IsShared() const { return m_references - m_locks > 1; }

  std::span<const Bound> Bounds() const { return m_bounds; }
  std::span<Variant> Elements();
  std::span<const Variant> Elements() const;
  // The element of an array of one dimension that counts from 0; null for any other and outside.
  Variant* VectorElement(std::int32_t index);

  // A buffer of its own with the same elements.
  Ref<ArrayBuffer> Clone() const;
  // Changes the number of elements in the last dimension and keeps the elements; only for a sole owner
  // without locks.
  void ResizeLast(std::int32_t count);

 private:
  friend class Teardown;
  ~ArrayBuffer();
  void End() noexcept;
  std::size_t CountElements() const;
  void Reserve(std::size_t capacity);

  std::uint32_t m_references = 0;
  std::uint32_t m_locks = 0;
  std::uint32_t m_vectorCount = 0;  // elements when VectorElement may serve them
  std::size_t m_count = 0;
  std::size_t m_capacity = 0;
  Variant* m_elements = nullptr;
  std::vector<Bound> m_bounds;
};

// A value of any type: the only variant of the tree, spoken by dispatch, the script engine and the COM
// border. Sixteen bytes. Copies share texts, arrays and objects.
//
// Integer and Boolean are kept sign-extended to 32 bits, so that AsLong reads them too.
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

  static Variant Null() { return Variant(VariantType::Null); }
  static Variant FromByte(std::uint8_t value) {
    Variant result(VariantType::Byte);
    result.m_value.longValue = value;
    return result;
  }
  static Variant FromInteger(std::int16_t value) { return FromWhole(VariantType::Integer, value); }
  static Variant FromLong(std::int32_t value) { return FromWhole(VariantType::Long, value); }
  static Variant FromSingle(float value) {
    Variant result(VariantType::Single);
    result.m_value.singleValue = value;
    return result;
  }
  static Variant FromDouble(double value) {
    Variant result(VariantType::Double);
    result.m_value.doubleValue = value;
    return result;
  }
  static Variant FromCurrency(std::int64_t tenThousandths) {
    Variant result(VariantType::Currency);
    result.m_value.currencyValue = tenThousandths;
    return result;
  }
  static Variant FromDate(double oleDate) {
    Variant result(VariantType::Date);
    result.m_value.doubleValue = oleDate;
    return result;
  }
  static Variant FromBoolean(bool value) { return FromWhole(VariantType::Boolean, value ? -1 : 0); }
  static Variant FromText(std::string_view utf8);
  static Variant FromUtf16(std::u16string_view text);
  // Takes a reference of its own.
  static Variant FromStringBuffer(StringBuffer* text) {
    Variant result(VariantType::String);
    result.m_value.text = text;
    text->AddRef();
    return result;
  }
  static Variant FromUtf16(std::u16string_view first, std::u16string_view second);  // joined
  static Variant FromObject(Ref<Object> object);                                    // null is Nothing
  static Variant FromErrorCode(std::int32_t code) { return FromWhole(VariantType::Error, code); }
  static Variant FromArray(Ref<ArrayBuffer> array) {
    Variant result(VariantType::Array);
    result.m_value.array = array.Detach();
    return result;
  }
  // Refers to a variant that outlives this one; never to a reference.
  static Variant ByReference(Variant* target) {
    Variant result(VariantType::ByReference);
    result.m_value.reference = target;
    return result;
  }
  // The value of an argument that the caller left out.
  static Variant Missing();

  VariantType Type() const { return m_type; }
  bool IsEmpty() const { return m_type == VariantType::Empty; }
  bool IsNull() const { return m_type == VariantType::Null; }
  bool IsObject() const { return m_type == VariantType::Object; }
  bool IsMissing() const;

  // The raw contents; the type must be the one named.
  std::uint8_t AsByte() const { return static_cast<std::uint8_t>(m_value.longValue); }
  std::int16_t AsInteger() const { return static_cast<std::int16_t>(m_value.longValue); }
  std::int32_t AsLong() const { return m_value.longValue; }  // Integer, Boolean and Byte too
  float AsSingle() const { return m_value.singleValue; }
  double AsDouble() const { return m_value.doubleValue; }  // Date too
  std::int64_t AsCurrency() const { return m_value.currencyValue; }
  bool AsBoolean() const { return m_value.longValue != 0; }
  std::u16string_view AsUtf16() const { return m_value.text->View(); }
  StringBuffer* AsStringBuffer() const { return m_value.text; }
  Object* AsObject() const { return m_value.object; }
  ArrayBuffer* AsArray() const { return m_value.array; }
  std::int32_t AsErrorCode() const { return m_value.longValue; }
  Variant* AsReference() const { return m_value.reference; }

  // The variant itself, or the one that it refers to.
  const Variant& Target() const { return m_type == VariantType::ByReference ? *m_value.reference : *this; }
  Variant& Target() { return m_type == VariantType::ByReference ? *m_value.reference : *this; }

  // Whether it shares something counted. Every type below String holds its value itself.
  bool IsCounted() const {
    return m_type >= VariantType::String && (m_type <= VariantType::Object || m_type == VariantType::Array);
  }

  // A note of whoever keeps the variant, about the place rather than the value: copies and assignments
  // leave it where it is.
  std::uint16_t Mark() const { return m_mark; }
  void SetMark(std::uint16_t mark) { m_mark = mark; }

  // For the script engine, which keeps values in raw slots: these overwrite without releasing what was
  // there, so that must be nothing counted.
  void OverwriteEmpty() { m_type = VariantType::Empty; }
  void OverwriteWhole(VariantType type, std::int32_t value) {
    m_type = type;
    m_value.longValue = value;
  }
  void OverwriteDouble(double value) {
    m_type = VariantType::Double;
    m_value.doubleValue = value;
  }
  void OverwriteReference(Variant* target) {
    m_type = VariantType::ByReference;
    m_value.reference = target;
  }
  // Moves the other's value in, which is Empty then.
  void OverwriteWith(Variant& other) {
    m_type = other.m_type;
    m_value = other.m_value;
    other.m_type = VariantType::Empty;
  }
  void OverwriteWithCopy(const Variant& other) {
    m_type = other.m_type;
    m_value = other.m_value;
    AddRef();
  }

 private:
  union Value {
    std::int32_t longValue;
    float singleValue;
    double doubleValue;
    std::int64_t currencyValue = 0;
    StringBuffer* text;
    Object* object;
    ArrayBuffer* array;
    Variant* reference;
  };

  explicit Variant(VariantType type) noexcept : m_type(type) {}
  static Variant FromWhole(VariantType type, std::int32_t value) {
    Variant result(type);
    result.m_value.longValue = value;
    return result;
  }
  void AddRef() const noexcept {
    if (m_type < VariantType::String) return;
    if (m_type == VariantType::String) return m_value.text->AddRef();
    if (m_type == VariantType::Object || m_type == VariantType::Array) AddRefCounted();
  }
  void Release() noexcept {
    if (m_type < VariantType::String) return;
    if (m_type == VariantType::String) return m_value.text->Release();
    if (m_type == VariantType::Object || m_type == VariantType::Array) ReleaseCounted();
  }
  void AddRefCounted() const noexcept;
  void ReleaseCounted() noexcept;

  VariantType m_type = VariantType::Empty;
  std::uint16_t m_mark = 0;
  Value m_value;
};

inline std::span<Variant> ArrayBuffer::Elements() { return {m_elements, m_count}; }
inline std::span<const Variant> ArrayBuffer::Elements() const { return {m_elements, m_count}; }
inline Variant* ArrayBuffer::VectorElement(std::int32_t index) {
  return static_cast<std::uint32_t>(index) < m_vectorCount ? m_elements + index : nullptr;
}

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
