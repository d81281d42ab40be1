#include "automation/Variant.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <new>

#include "automation/Error.hpp"
#include "automation/Object.hpp"
#include "automation/OleDate.hpp"
#include "automation/Teardown.hpp"
#include "automation/Text.hpp"
#include "automation/Utf.hpp"

namespace hearthmake::automation {

namespace {

// DISP_E_PARAMNOTFOUND, automation's mark of an argument that was left out.
constexpr std::int32_t kParameterNotFound = static_cast<std::int32_t>(0x80020004);

constexpr double kCurrencyUnit = 10000.0;

[[noreturn]] void RaiseTypeMismatch() { Raise(RuntimeError::TypeMismatch, ""); }

// "&H" and up to eight digits, perhaps with an "&" behind them.
bool IsHexadecimal(std::string_view text) {
  if (text.size() < 3 || !EqualsIgnoreCaseAscii(text.substr(0, 2), "&h")) return false;
  text.remove_prefix(2);
  if (text.size() > 1 && text.ends_with('&')) text.remove_suffix(1);
  return text.size() <= 8 && text.find_first_not_of("0123456789abcdefABCDEF") == std::string_view::npos;
}

double ParseNumber(const std::string& text) {
  std::string_view digits = Trim(text);
  if (IsHexadecimal(digits)) return Val(digits);
  const bool hasPlus = digits.starts_with('+') && !digits.starts_with("+-");
  if (hasPlus) digits.remove_prefix(1);
  double value = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  if (error == std::errc::result_out_of_range) {
    if (Val(digits) != 0) Raise(RuntimeError::Overflow, "");
    return 0;
  }
  if (error != std::errc() || end != digits.data() + digits.size() || !std::isfinite(value))
    RaiseTypeMismatch();
  return value;
}

// "True" and "False" in any case, or any number: not zero is true.
bool ParseBoolean(const std::string& text) {
  const std::string_view word = Trim(text);
  if (EqualsIgnoreCaseAscii(word, "true")) return true;
  if (EqualsIgnoreCaseAscii(word, "false")) return false;
  return ParseNumber(text) != 0;
}

// Fifteen significant digits, as Visual Basic prints a Double; seven for a Single.
std::string FormatNumber(double value, int digits) {
  char buffer[40];
  const int length = std::snprintf(buffer, sizeof buffer, "%.*G", digits, value);
  return std::string(buffer, static_cast<std::size_t>(length));
}

std::string FormatCurrency(std::int64_t tenThousandths) {
  const bool isNegative = tenThousandths < 0;
  const auto magnitude = isNegative ? 0 - static_cast<std::uint64_t>(tenThousandths)
                                    : static_cast<std::uint64_t>(tenThousandths);
  std::string text = (isNegative ? "-" : "") + std::to_string(magnitude / 10000);
  if (const auto fraction = magnitude % 10000; fraction != 0) {
    std::string digits = std::to_string(10000 + fraction).substr(1);
    digits.erase(digits.find_last_not_of('0') + 1);
    text += "." + digits;
  }
  return text;
}

double RoundHalfToEven(double value) { return std::nearbyint(value); }

}  // namespace

void* StringBuffer::Allocate(std::size_t capacity) {
  if (capacity > std::numeric_limits<std::int32_t>::max() / 2) Raise(RuntimeError::OutOfMemory, "");
  void* memory = ::operator new(sizeof(StringBuffer) + capacity * sizeof(char16_t), std::nothrow);
  if (memory == nullptr) Raise(RuntimeError::OutOfMemory, "");
  return memory;
}

StringBuffer* StringBuffer::NewUnset(std::size_t length) {
  return new (Allocate(length)) StringBuffer(length, length);
}

StringBuffer* StringBuffer::New(std::u16string_view text, std::size_t capacity) {
  capacity = std::max(capacity, text.size());
  auto* buffer = new (Allocate(capacity)) StringBuffer(text.size(), capacity);
  if (!text.empty()) std::memcpy(buffer->Data(), text.data(), text.size() * sizeof(char16_t));
  return buffer;
}

bool StringBuffer::Append(std::u16string_view text) {
  if (m_capacity - m_length < text.size()) return false;
  if (!text.empty()) std::memmove(Data() + m_length, text.data(), text.size() * sizeof(char16_t));
  m_length += static_cast<std::uint32_t>(text.size());
  return true;
}

ArrayBuffer::ArrayBuffer(std::span<const Bound> bounds) : m_bounds(bounds.begin(), bounds.end()) {
  const std::size_t count = CountElements();
  if (count != 0) {
    // Zeroed memory is Empty, and costs nothing until it is used.
    m_elements = static_cast<Variant*>(std::calloc(count, sizeof(Variant)));
    if (m_elements == nullptr) Raise(RuntimeError::OutOfMemory, "");
    m_capacity = count;
  }
  m_count = count;
  if (m_bounds.size() == 1 && m_bounds[0].lower == 0) m_vectorCount = static_cast<std::uint32_t>(count);
}

ArrayBuffer::~ArrayBuffer() {
  std::destroy_n(m_elements, m_count);
  std::free(m_elements);
}

void ArrayBuffer::End() noexcept { Teardown::End(this); }

std::size_t ArrayBuffer::CountElements() const {
  std::size_t count = m_bounds.empty() ? 0 : 1;
  for (const Bound& bound : m_bounds) {
    count *= static_cast<std::size_t>(std::max(bound.count, 0));
    if (count > kMostElements) Raise(RuntimeError::OutOfMemory, "");
  }
  return count;
}

// Variants may be moved bit by bit, so that a growing array costs no more than its copy in memory.
void ArrayBuffer::Reserve(std::size_t capacity) {
  if (capacity <= m_capacity) return;
  void* memory = std::realloc(static_cast<void*>(m_elements), capacity * sizeof(Variant));
  if (memory == nullptr) Raise(RuntimeError::OutOfMemory, "");
  m_elements = static_cast<Variant*>(memory);
  m_capacity = capacity;
}

Ref<ArrayBuffer> ArrayBuffer::Clone() const {
  Ref<ArrayBuffer> copy(new ArrayBuffer(m_bounds));
  for (std::size_t i = 0; i < m_count; ++i) {
    const Variant& element = m_elements[i];
    const bool isLocked = element.Type() == VariantType::Array && element.AsArray()->IsLocked();
    copy->m_elements[i] = isLocked ? Variant::FromArray(element.AsArray()->Clone()) : element;
  }
  return copy;
}

void ArrayBuffer::ResizeLast(std::int32_t count) {
  const std::int32_t before = std::exchange(m_bounds.back().count, count);
  std::size_t wanted = 0;
  try {
    wanted = CountElements();
    // Growing one by one must not copy everything each time.
    if (wanted > m_capacity) Reserve(m_count == 0 ? wanted : std::max(wanted, m_capacity + m_capacity / 2));
  } catch (...) {
    m_bounds.back().count = before;
    throw;
  }
  if (wanted > m_count) {
    std::uninitialized_default_construct_n(m_elements + m_count, wanted - m_count);
  } else {
    std::destroy_n(m_elements + wanted, m_count - wanted);
  }
  m_count = wanted;
  if (m_bounds.size() == 1 && m_bounds[0].lower == 0) m_vectorCount = static_cast<std::uint32_t>(wanted);
}

void Variant::AddRefCounted() const noexcept {
  if (m_type == VariantType::Array) {
    m_value.array->AddRef();
  } else if (m_value.object != nullptr) {
    m_value.object->AddRef();
  }
}

void Variant::ReleaseCounted() noexcept {
  if (m_type == VariantType::Array) {
    m_value.array->Release();
  } else if (m_value.object != nullptr) {
    m_value.object->Release();
  }
}

Variant Variant::FromText(std::string_view utf8) { return FromUtf16(Utf8ToUtf16(utf8)); }

Variant Variant::FromUtf16(std::u16string_view text) { return FromStringBuffer(StringBuffer::New(text)); }

Variant Variant::FromUtf16(std::u16string_view first, std::u16string_view second) {
  Variant result;
  result.m_value.text = StringBuffer::New(first, first.size() + second.size());
  result.m_value.text->AddRef();
  result.m_type = VariantType::String;
  result.m_value.text->Append(second);
  return result;
}

Variant Variant::FromObject(Ref<Object> object) {
  Variant result(VariantType::Object);
  result.m_value.object = object.Detach();
  return result;
}

Variant Variant::Missing() { return FromErrorCode(kParameterNotFound); }

bool Variant::IsMissing() const {
  return m_type == VariantType::Error && m_value.longValue == kParameterNotFound;
}

double ToDouble(const Variant& value) {
  const Variant& source = value.Target();
  switch (source.Type()) {
    case VariantType::Empty: return 0;
    case VariantType::Null: Raise(RuntimeError::InvalidUseOfNull, "");
    case VariantType::Byte: return source.AsByte();
    case VariantType::Integer:
    case VariantType::Boolean: return source.AsInteger();
    case VariantType::Long: return source.AsLong();
    case VariantType::Single: return source.AsSingle();
    case VariantType::Double:
    case VariantType::Date: return source.AsDouble();
    case VariantType::Currency: return static_cast<double>(source.AsCurrency()) / kCurrencyUnit;
    case VariantType::String: return ParseNumber(Utf16ToUtf8(source.AsUtf16()));
    default: RaiseTypeMismatch();
  }
}

std::int32_t ToLong(const Variant& value) {
  const Variant& source = value.Target();
  if (source.Type() == VariantType::Long) return source.AsLong();
  const double rounded = RoundHalfToEven(ToDouble(source));
  if (!(rounded >= -2147483648.0 && rounded <= 2147483647.0)) Raise(RuntimeError::Overflow, "");
  return static_cast<std::int32_t>(rounded);
}

std::int16_t ToInteger(const Variant& value) {
  const std::int32_t wide = ToLong(value);
  if (wide < -32768 || wide > 32767) Raise(RuntimeError::Overflow, "");
  return static_cast<std::int16_t>(wide);
}

bool ToBoolean(const Variant& value) {
  const Variant& source = value.Target();
  if (source.Type() == VariantType::String) return ParseBoolean(Utf16ToUtf8(source.AsUtf16()));
  return ToDouble(source) != 0;
}

double ToDate(const Variant& value) { return ToDouble(value); }

std::string ToText(const Variant& value) {
  const Variant& source = value.Target();
  switch (source.Type()) {
    case VariantType::Empty: return {};
    case VariantType::Null: Raise(RuntimeError::InvalidUseOfNull, "");
    case VariantType::Byte: return std::to_string(source.AsByte());
    case VariantType::Integer: return std::to_string(source.AsInteger());
    case VariantType::Long: return std::to_string(source.AsLong());
    case VariantType::Single: return FormatNumber(source.AsSingle(), 7);
    case VariantType::Double: return FormatNumber(source.AsDouble(), 15);
    case VariantType::Date: return FormatDate(source.AsDouble());
    case VariantType::Currency: return FormatCurrency(source.AsCurrency());
    case VariantType::Boolean: return source.AsBoolean() ? "True" : "False";
    case VariantType::String: return Utf16ToUtf8(source.AsUtf16());
    default: RaiseTypeMismatch();
  }
}

Object* ToObject(const Variant& value) {
  const Variant& source = value.Target();
  if (!source.IsObject()) RaiseTypeMismatch();
  return source.AsObject();
}

}  // namespace hearthmake::automation
