#include "adapters/win32/VariantConversion.hpp"

#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include "automation/Error.hpp"

namespace hearthmake::win32 {

namespace {

using automation::ArrayBuffer;
using automation::Ref;
using automation::RuntimeError;
using automation::ValueKind;
using automation::Variant;
using automation::VariantType;

static_assert(sizeof(wchar_t) == sizeof(char16_t));

constexpr VARTYPE kReference = VT_BYREF;
constexpr VARTYPE kArray = VT_ARRAY;

[[noreturn]] void RaiseMismatch() { automation::Raise(RuntimeError::TypeMismatch, ""); }

template <class T>
const T& At(const void* place) {
  return *static_cast<const T*>(place);
}

// What does not fit a Long becomes a Double.
template <class T>
Variant FromWide(T value) {
  if (value <= T{std::numeric_limits<std::int32_t>::max()} &&
      (!std::is_signed_v<T> || value >= static_cast<T>(std::numeric_limits<std::int32_t>::min()))) {
    return Variant::FromLong(static_cast<std::int32_t>(value));
  }
  return Variant::FromDouble(static_cast<double>(value));
}

Variant FromText(BSTR text) {
  if (text == nullptr) return Variant::FromUtf16(u"");
  return Variant::FromUtf16({reinterpret_cast<const char16_t*>(text), SysStringLen(text)});
}

Variant FromDecimal(DECIMAL value) {
  double number = 0;
  if (FAILED(VarR8FromDec(&value, &number))) RaiseMismatch();
  return Variant::FromDouble(number);
}

// Unlocks the data of an array that was opened.
struct ArrayAccess {
  explicit ArrayAccess(SAFEARRAY* opened) : array(opened) {
    if (FAILED(SafeArrayAccessData(array, &data))) RaiseMismatch();
  }
  ArrayAccess(const ArrayAccess&) = delete;
  ArrayAccess& operator=(const ArrayAccess&) = delete;
  ~ArrayAccess() { SafeArrayUnaccessData(array); }
  std::byte* Element(std::size_t index) const {
    return static_cast<std::byte*>(data) + index * SafeArrayGetElemsize(array);
  }

  SAFEARRAY* array;
  void* data = nullptr;
};

Variant FromArray(SAFEARRAY* array, VARTYPE elements, ObjectBorder& border) {
  if (array == nullptr) return Variant::FromArray(Ref<ArrayBuffer>(new ArrayBuffer({{0, 0}})));
  std::vector<ArrayBuffer::Bound> bounds;
  for (UINT dimension = 1; dimension <= SafeArrayGetDim(array); ++dimension) {
    LONG lower = 0;
    LONG upper = -1;
    if (FAILED(SafeArrayGetLBound(array, dimension, &lower)) ||
        FAILED(SafeArrayGetUBound(array, dimension, &upper))) {
      RaiseMismatch();
    }
    bounds.push_back({lower, upper - lower + 1});
  }
  const Ref<ArrayBuffer> buffer(new ArrayBuffer(bounds));
  const ArrayAccess access(array);
  std::size_t index = 0;
  for (Variant& element : buffer->Elements()) element = FromPlace(elements, access.Element(index++), border);
  return Variant::FromArray(buffer);
}

SAFEARRAY* ToArray(const ArrayBuffer& buffer, ObjectBorder& border) {
  std::vector<SAFEARRAYBOUND> bounds;
  for (const auto& bound : buffer.Bounds()) {
    bounds.push_back({static_cast<ULONG>(bound.count), bound.lower});
  }
  SAFEARRAY* array = SafeArrayCreate(VT_VARIANT, static_cast<UINT>(bounds.size()), bounds.data());
  if (array == nullptr) automation::Raise(RuntimeError::OutOfMemory, "");
  try {
    const ArrayAccess access(array);
    std::size_t index = 0;
    for (const Variant& element : buffer.Elements()) {
      *reinterpret_cast<VARIANT*>(access.Element(index++)) = ToVariant(element, border);
    }
  } catch (...) {
    SafeArrayDestroy(array);
    throw;
  }
  return array;
}

// Nothing needs no border.
Ref<automation::Object> Take(IUnknown* pointer, ObjectBorder& border) {
  return pointer == nullptr ? Ref<automation::Object>(nullptr) : border.Take(*pointer);
}
IUnknown* Give(automation::Object* object, ObjectBorder& border,
               const automation::Interface* declared = nullptr) {
  return object == nullptr ? nullptr : border.Give(*object, declared);
}

BSTR ToBstr(std::u16string_view text) {
  BSTR made =
      SysAllocStringLen(reinterpret_cast<const wchar_t*>(text.data()), static_cast<UINT>(text.size()));
  if (made == nullptr) automation::Raise(RuntimeError::OutOfMemory, "");
  return made;
}

BSTR ToBstr(const Variant& value) {
  const Variant& target = value.Target();
  if (target.Type() == VariantType::String) return ToBstr(target.AsUtf16());
  const Variant text = Variant::FromText(automation::ToText(target));
  return ToBstr(text.AsUtf16());
}

template <class T>
void Replace(void* place, T* value) {
  T* old = std::exchange(*static_cast<T**>(place), value);
  if (old != nullptr) old->Release();
}

// By way of COM's own conversions, for the types that hosts rarely refer to.
void ToOtherPlace(VARTYPE type, void* place, const Variant& value, ObjectBorder& border) {
  OwnedVariant made;
  static_cast<VARIANT&>(made) = ToVariant(value, border);
  OwnedVariant converted;
  if (FAILED(VariantChangeType(&converted, &made, 0, type))) RaiseMismatch();
  OwnedVariant old;
  old.vt = type;
  constexpr std::size_t kWidest = sizeof(std::int64_t);
  std::size_t width = kWidest;
  switch (type & ~kArray) {
    case VT_I1:
    case VT_UI1: width = 1; break;
    case VT_UI2: width = 2; break;
    case VT_R4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_ERROR: width = 4; break;
    default: break;
  }
  if ((type & kArray) != 0) width = sizeof(void*);
  std::memcpy(&old.llVal, place, width);
  std::memcpy(place, &converted.llVal, width);
  converted.vt = VT_EMPTY;
}

}  // namespace

VARTYPE TypeOf(const automation::ValueType& type) {
  switch (type.kind) {
    case ValueKind::Void: return VT_EMPTY;
    case ValueKind::Integer: return VT_I2;
    case ValueKind::Long:
    case ValueKind::Enum: return VT_I4;
    case ValueKind::Boolean: return VT_BOOL;
    case ValueKind::Double: return VT_R8;
    case ValueKind::Date: return VT_DATE;
    case ValueKind::String: return VT_BSTR;
    case ValueKind::Variant: return VT_VARIANT;
    case ValueKind::Object: return VT_DISPATCH;
  }
  return VT_EMPTY;
}

Variant FromPlace(VARTYPE type, const void* place, ObjectBorder& border) {
  if ((type & kArray) != 0) return FromArray(At<SAFEARRAY*>(place), type & ~kArray, border);
  switch (type) {
    case VT_EMPTY: return {};
    case VT_NULL: return Variant::Null();
    case VT_I1: return Variant::FromInteger(At<std::int8_t>(place));
    case VT_UI1: return Variant::FromByte(At<std::uint8_t>(place));
    case VT_I2: return Variant::FromInteger(At<std::int16_t>(place));
    case VT_UI2: return Variant::FromLong(At<std::uint16_t>(place));
    case VT_I4:
    case VT_INT: return Variant::FromLong(At<std::int32_t>(place));
    case VT_UI4:
    case VT_UINT: return FromWide(At<std::uint32_t>(place));
    case VT_I8: return FromWide(At<std::int64_t>(place));
    case VT_UI8: return FromWide(At<std::uint64_t>(place));
    case VT_R4: return Variant::FromSingle(At<float>(place));
    case VT_R8: return Variant::FromDouble(At<double>(place));
    case VT_CY: return Variant::FromCurrency(At<CY>(place).int64);
    case VT_DATE: return Variant::FromDate(At<double>(place));
    case VT_BOOL: return Variant::FromBoolean(At<VARIANT_BOOL>(place) != VARIANT_FALSE);
    case VT_ERROR: return Variant::FromErrorCode(At<SCODE>(place));
    case VT_BSTR: return FromText(At<BSTR>(place));
    case VT_DECIMAL: return FromDecimal(At<DECIMAL>(place));
    case VT_VARIANT: return FromVariant(At<VARIANT>(place), border);
    case VT_DISPATCH:
    case VT_UNKNOWN: return Variant::FromObject(Take(At<IUnknown*>(place), border));
    default: RaiseMismatch();
  }
}

Variant FromVariant(const VARIANT& value, ObjectBorder& border) {
  if ((value.vt & kReference) != 0) {
    if (value.byref == nullptr) RaiseMismatch();
    return FromPlace(value.vt & ~kReference, value.byref, border);
  }
  if (value.vt == VT_DECIMAL) return FromDecimal(value.decVal);
  return FromPlace(value.vt, &value.llVal, border);
}

void ToPlace(VARTYPE type, void* place, const Variant& value, ObjectBorder& border,
             const automation::Interface* object) {
  switch (type) {
    case VT_I2: *static_cast<std::int16_t*>(place) = automation::ToInteger(value); return;
    case VT_I4: *static_cast<std::int32_t*>(place) = automation::ToLong(value); return;
    case VT_BOOL:
      *static_cast<VARIANT_BOOL*>(place) = automation::ToBoolean(value) ? VARIANT_TRUE : VARIANT_FALSE;
      return;
    case VT_R8: *static_cast<double*>(place) = automation::ToDouble(value); return;
    case VT_DATE: *static_cast<double*>(place) = automation::ToDate(value); return;
    case VT_BSTR: {
      const BSTR text = ToBstr(value);
      SysFreeString(std::exchange(*static_cast<BSTR*>(place), text));
      return;
    }
    case VT_VARIANT: {
      const VARIANT made = ToVariant(value, border);
      VariantClear(static_cast<VARIANT*>(place));
      *static_cast<VARIANT*>(place) = made;
      return;
    }
    case VT_DISPATCH:
    case VT_UNKNOWN: Replace(place, Give(automation::ToObject(value), border, object)); return;
    default: ToOtherPlace(type, place, value, border);
  }
}

VARIANT ToVariant(const Variant& value, ObjectBorder& border) {
  VARIANT made;
  VariantInit(&made);
  const Variant& target = value.Target();
  switch (target.Type()) {
    case VariantType::Empty:
    case VariantType::ByReference: return made;
    case VariantType::Null: break;
    case VariantType::Integer: made.iVal = target.AsInteger(); break;
    case VariantType::Long: made.lVal = target.AsLong(); break;
    case VariantType::Single: made.fltVal = target.AsSingle(); break;
    case VariantType::Double:
    case VariantType::Date: made.dblVal = target.AsDouble(); break;
    case VariantType::Currency: made.cyVal.int64 = target.AsCurrency(); break;
    case VariantType::Boolean: made.boolVal = target.AsBoolean() ? VARIANT_TRUE : VARIANT_FALSE; break;
    case VariantType::Byte: made.bVal = target.AsByte(); break;
    case VariantType::Error: made.scode = target.AsErrorCode(); break;
    case VariantType::String: made.bstrVal = ToBstr(target.AsUtf16()); break;
    case VariantType::Array: made.parray = ToArray(*target.AsArray(), border); break;
    case VariantType::Object: {
      made.punkVal = Give(target.AsObject(), border);
      // An enumerator has no members to call.
      const bool isEnumerator = dynamic_cast<automation::Enumerator*>(target.AsObject()) != nullptr;
      made.vt = isEnumerator ? VT_UNKNOWN : VT_DISPATCH;
      return made;
    }
  }
  made.vt = static_cast<VARTYPE>(target.Type());
  return made;
}

}  // namespace hearthmake::win32
