#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <type_traits>

#include "automation/Convert.hpp"

// Entries of the vtables through which early-bound hosts call declared members. An entry has the very
// signature that a type library gives the member, and knows nothing but where its arguments lie: whoever
// stands behind the interface pointer (see com/ComObject) turns them into variants and back.

// The convention of COM: the only one there is on 64 bits. Callers on 32 bits align the stack to 4 bytes.
#ifdef __i386__
#define HEARTHMAKE_COM_CALL __attribute__((stdcall, force_align_arg_pointer))
#else
#define HEARTHMAKE_COM_CALL
#endif

namespace hearthmake::automation {

struct VtableSlot {
  ValueType type;
  bool isInOut = false;
};

// What is behind an entry. Of an event or a member without arguments there are no slots.
struct VtableCall {
  Variant (*invoke)(Object& self, std::span<Variant> arguments) = nullptr;
  const VtableSlot* slots = nullptr;
  std::size_t slotCount = 0;
  ValueType result;

  std::span<const VtableSlot> Slots() const { return {slots, slotCount}; }
};

class VtableReceiver {
 public:
  // Does the call. There is a place for each slot (null when the caller passed a null pointer for an in/out
  // parameter) and, when the member has a result, a last one that receives it. The result is an HRESULT.
  virtual std::int32_t CallThroughVtable(const VtableCall& call, void* const* places) noexcept = 0;

 protected:
  ~VtableReceiver() = default;
};

// What an interface pointer points to.
struct VtableFace {
  const void* vtable = nullptr;
  VtableReceiver* receiver = nullptr;
};

// A VARIANT as it lies in memory: as wide as two pointers behind its type.
struct VtableVariant {
  std::uint16_t type;
  std::uint16_t reserved[3];
  union {
    std::int64_t whole;
    void* pointers[2];
  } value;
};

// How a value is passed: a text as BSTR, an object as interface pointer.
template <class T>
struct VtableType {
  using Type = std::int32_t;  // enumerations
  static_assert(std::is_enum_v<T>);
};
template <>
struct VtableType<std::int16_t> {
  using Type = std::int16_t;
};
template <>
struct VtableType<std::int32_t> {
  using Type = std::int32_t;
};
template <>
struct VtableType<bool> {
  using Type = std::int16_t;
};
template <>
struct VtableType<double> {
  using Type = double;
};
template <>
struct VtableType<Date> {
  using Type = double;
};
template <>
struct VtableType<std::string> {
  using Type = char16_t*;
};
template <>
struct VtableType<Variant> {
  using Type = VtableVariant;
};
template <class T>
struct VtableType<Ref<T>> {
  using Type = void*;
};
template <PublicClass T>
struct VtableType<T> {
  using Type = void*;
};
template <class T>
struct VtableType<std::optional<T>> : VtableType<T> {};
template <>
struct VtableType<void> {
  using Type = void;
};

template <class T>
using VtableValue = typename VtableType<std::remove_cvref_t<std::remove_pointer_t<T>>>::Type;

template <class A>
inline constexpr bool kVtableInOut =
    std::is_lvalue_reference_v<A> && !std::is_const_v<std::remove_reference_t<A>> &&
    !PublicClass<std::remove_cvref_t<A>>;

template <class A>
using VtableParameter = std::conditional_t<kVtableInOut<A>, VtableValue<A>*, VtableValue<A>>;

// The entry of one member, described by a VtableCall: Described::kCall.
template <auto Function, class Described, class M = decltype(Function)>
struct VtableEntry;

template <auto Function, class Described, class R, class C, class... A>
struct VtableEntry<Function, Described, R (C::*)(A...)> {
  using EntryPoint = void (*)();
  static EntryPoint Address() {
    if constexpr (std::is_void_v<R>) {
      return reinterpret_cast<EntryPoint>(&Call);
    } else {
      return reinterpret_cast<EntryPoint>(&CallForResult);
    }
  }

  static std::int32_t HEARTHMAKE_COM_CALL Call(VtableFace* face, VtableParameter<A>... arguments) {
    void* const places[] = {PlaceOf<A>(arguments)..., nullptr};
    return face->receiver->CallThroughVtable(Described::kCall, places);
  }
  static std::int32_t HEARTHMAKE_COM_CALL CallForResult(VtableFace* face, VtableParameter<A>... arguments,
                                                        VtableValue<R>* result) {
    void* const places[] = {PlaceOf<A>(arguments)..., result};
    return face->receiver->CallThroughVtable(Described::kCall, places);
  }

 private:
  template <class P>
  static void* PlaceOf(VtableParameter<P>& argument) {
    if constexpr (kVtableInOut<P>) {
      return argument;
    } else {
      return &argument;
    }
  }
};

template <auto Function, class Described, class R, class C, class... A>
struct VtableEntry<Function, Described, R (C::*)(A...) const>
    : VtableEntry<Function, Described, R (C::*)(A...)> {};

}  // namespace hearthmake::automation
