#include "automation/Variant.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <new>

#include "automation/Error.hpp"
#include "automation/Object.hpp"
#include "automation/OleDate.hpp"
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

StringBuffer* StringBuffer::New(std::u16string_view text, std::size_t capacity) {
  capacity = std::max(capacity, text.size());
  if (capacity > std::numeric_limits<std::int32_t>::max() / 2) Raise(RuntimeError::OutOfMemory, "");
  void* memory = ::operator new(sizeof(StringBuffer) + capacity * sizeof(char16_t), std::nothrow);
  if (memory == nullptr) Raise(RuntimeError::OutOfMemory, "");
  auto* buffer = new (memory) StringBuffer(text.size(), capacity);
  if (!text.empty()) std::memcpy(buffer->Data(), text.data(), text.size() * sizeof(char16_t));
  return buffer;
}

void StringBuffer::Release() noexcept {
  if (--m_references == 0) ::operator delete(this);
}

bool StringBuffer::Append(std::u16string_view text) {
  if (m_capacity - m_length < text.size()) return false;
  if (!text.empty()) std::memmove(Data() + m_length, text.data(), text.size() * sizeof(char16_t));
  m_length += static_cast<std::uint32_t>(text.size());
  return true;
}

ArrayBuffer::ArrayBuffer(std::vector<Bound> bounds) : m_bounds(std::move(bounds)) {
  std::size_t count = m_bounds.empty() ? 0 : 1;
  for (const Bound& bound : m_bounds) count *= static_cast<std::size_t>(std::max(bound.count, 0));
  m_elements.resize(count);
}

ArrayBuffer::~ArrayBuffer() = default;

void ArrayBuffer::Release() noexcept {
  if (--m_references == 0) delete this;
}

void Variant::AddRefCounted() const noexcept {
  switch (m_type) {
    case VariantType::String: m_value.text->AddRef(); break;
    case VariantType::Array: m_value.array->AddRef(); break;
    default:
      if (m_value.object != nullptr) m_value.object->AddRef();
  }
}

void Variant::ReleaseCounted() noexcept {
  switch (m_type) {
    case VariantType::String: m_value.text->Release(); break;
    case VariantType::Array: m_value.array->Release(); break;
    default:
      if (m_value.object != nullptr) m_value.object->Release();
  }
}

Variant Variant::Null() {
  Variant result;
  result.m_type = VariantType::Null;
  return result;
}

Variant Variant::FromByte(std::uint8_t value) {
  Variant result;
  result.m_type = VariantType::Byte;
  result.m_value.byteValue = value;
  return result;
}

Variant Variant::FromInteger(std::int16_t value) {
  Variant result;
  result.m_type = VariantType::Integer;
  result.m_value.integerValue = value;
  return result;
}

Variant Variant::FromLong(std::int32_t value) {
  Variant result;
  result.m_type = VariantType::Long;
  result.m_value.longValue = value;
  return result;
}

Variant Variant::FromSingle(float value) {
  Variant result;
  result.m_type = VariantType::Single;
  result.m_value.singleValue = value;
  return result;
}

Variant Variant::FromDouble(double value) {
  Variant result;
  result.m_type = VariantType::Double;
  result.m_value.doubleValue = value;
  return result;
}

Variant Variant::FromCurrency(std::int64_t tenThousandths) {
  Variant result;
  result.m_type = VariantType::Currency;
  result.m_value.currencyValue = tenThousandths;
  return result;
}

Variant Variant::FromDate(double oleDate) {
  Variant result;
  result.m_type = VariantType::Date;
  result.m_value.doubleValue = oleDate;
  return result;
}

Variant Variant::FromBoolean(bool value) {
  Variant result;
  result.m_type = VariantType::Boolean;
  result.m_value.integerValue = value ? -1 : 0;
  return result;
}

Variant Variant::FromText(std::string_view utf8) { return FromUtf16(Utf8ToUtf16(utf8)); }

Variant Variant::FromUtf16(std::u16string_view text) {
  Variant result;
  result.m_value.text = StringBuffer::New(text);
  result.m_value.text->AddRef();
  result.m_type = VariantType::String;
  return result;
}

Variant Variant::FromUtf16(std::u16string_view first, std::u16string_view second) {
  Variant result;
  result.m_value.text = StringBuffer::New(first, first.size() + second.size());
  result.m_value.text->AddRef();
  result.m_type = VariantType::String;
  result.m_value.text->Append(second);
  return result;
}

Variant Variant::FromObject(Ref<Object> object) {
  Variant result;
  result.m_type = VariantType::Object;
  result.m_value.object = object.Detach();
  return result;
}

Variant Variant::FromErrorCode(std::int32_t code) {
  Variant result;
  result.m_type = VariantType::Error;
  result.m_value.longValue = code;
  return result;
}

Variant Variant::FromArray(Ref<ArrayBuffer> array) {
  Variant result;
  result.m_type = VariantType::Array;
  result.m_value.array = array.Detach();
  return result;
}

Variant Variant::ByReference(Variant* target) {
  Variant result;
  result.m_type = VariantType::ByReference;
  result.m_value.reference = target;
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
