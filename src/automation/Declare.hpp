#pragma once

#include <array>
#include <initializer_list>
#include <tuple>
#include <utility>

#include "automation/Convert.hpp"
#include "automation/Vtable.hpp"

namespace hearthmake::automation {

// What a parameter's C++ type says about it, and how an argument gets there and back.
//   T, const T&         in
//   T& (no object)      in/out: what the member leaves there goes back to the caller
//   std::optional<T>    may be left out
//   std::optional<T>&   may be left out, in/out when it is not
//   C&, C* (an object)  in; a pointer may be Nothing (null), a reference may not (error 91)
template <class A>
struct Argument {
  using Value = std::remove_cvref_t<A>;
  static constexpr bool kInOut =
      std::is_lvalue_reference_v<A> && !std::is_const_v<std::remove_reference_t<A>>;
  static constexpr bool kOptional = false;
  static constexpr ValueType Type() { return Convert<Value>::Type(); }

  explicit Argument(Variant& source) : m_source(source), m_value(Convert<Value>::From(source)) {}
  A Get() {
    if constexpr (kInOut) {
      return m_value;
    } else {
      return static_cast<A>(m_value);
    }
  }
  void WriteBack() {
    if constexpr (kInOut) m_source.Target() = Convert<Value>::To(m_value);
  }

 private:
  Variant& m_source;
  Value m_value;
};

template <class T>
struct Argument<std::optional<T>> {
  static constexpr bool kInOut = false;
  static constexpr bool kOptional = true;
  static constexpr ValueType Type() { return Convert<T>::Type(); }

  explicit Argument(Variant& source) {
    if (!source.Target().IsMissing()) m_value = Convert<T>::From(source);
  }
  std::optional<T> Get() { return std::move(m_value); }
  void WriteBack() {}

 private:
  std::optional<T> m_value;
};

template <class T>
struct Argument<std::optional<T>&> {
  static constexpr bool kInOut = true;
  static constexpr bool kOptional = true;
  static constexpr ValueType Type() { return Convert<T>::Type(); }

  explicit Argument(Variant& source) : m_source(source) {
    if (!source.Target().IsMissing()) m_value = Convert<T>::From(source);
  }
  std::optional<T>& Get() { return m_value; }
  void WriteBack() {
    if (m_value) m_source.Target() = Convert<T>::To(*m_value);
  }

 private:
  Variant& m_source;
  std::optional<T> m_value;
};

template <PublicClass C>
struct Argument<C&> {
  static constexpr bool kInOut = false;
  static constexpr bool kOptional = false;
  static constexpr ValueType Type() { return Convert<Ref<C>>::Type(); }

  explicit Argument(Variant& source) : m_value(Convert<Ref<C>>::From(source)) {
    if (!m_value) Raise(RuntimeError::ObjectNotSet, "");
  }
  C& Get() { return *m_value; }
  void WriteBack() {}

 private:
  Ref<C> m_value;
};

template <PublicClass C>
struct Argument<C*> {
  static constexpr bool kInOut = false;
  static constexpr bool kOptional = false;
  static constexpr ValueType Type() { return Convert<Ref<C>>::Type(); }

  explicit Argument(Variant& source) : m_value(Convert<Ref<C>>::From(source)) {}
  C* Get() { return m_value.Get(); }
  void WriteBack() {}

 private:
  Ref<C> m_value;
};

// A result: a value, or an object by reference or pointer (null is Nothing).
template <class R>
struct Result {
  using Value = std::remove_cvref_t<R>;
  static constexpr ValueType Type() { return Convert<Value>::Type(); }
  static Variant To(const Value& value) { return Convert<Value>::To(value); }
};

template <>
struct Result<void> {
  static constexpr ValueType Type() { return {}; }
};

template <PublicClass C>
struct Result<C&> {
  static constexpr ValueType Type() { return Convert<Ref<C>>::Type(); }
  static Variant To(C& value) { return Variant::FromObject(Ref<C>(&value)); }
};

template <PublicClass C>
struct Result<C*> {
  static constexpr ValueType Type() { return Convert<Ref<C>>::Type(); }
  static Variant To(C* value) { return Variant::FromObject(Ref<C>(value)); }
};

// Takes the signature of a member function apart.
template <class M>
struct Signature;

template <class R, class C, class... A>
struct Signature<R (C::*)(A...)> {
  using Class = C;
  using Return = R;
  using Arguments = std::tuple<Argument<A>...>;
  static constexpr std::size_t kCount = sizeof...(A);
  static std::vector<Parameter> Parameters() {
    return {Parameter{"", Argument<A>::Type(), Argument<A>::kInOut, Argument<A>::kOptional}...};
  }
};

template <class R, class C, class... A>
struct Signature<R (C::*)(A...) const> : Signature<R (C::*)(A...)> {};

// The dispatch entry of one member: converts, calls, writes back.
template <auto Function>
struct Thunk {
  using S = Signature<decltype(Function)>;

  static Variant Invoke(Object& self, std::span<Variant> arguments) {
    return Call(self, arguments, std::make_index_sequence<S::kCount>());
  }

 private:
  // An interface that several classes implement is declared with the members of a class beside Object.
  static typename S::Class& Cast(Object& self) {
    if constexpr (PublicClass<typename S::Class>) {
      return static_cast<typename S::Class&>(self);
    } else {
      return dynamic_cast<typename S::Class&>(self);
    }
  }

  template <std::size_t... I>
  static Variant Call(Object& self, [[maybe_unused]] std::span<Variant> arguments,
                      std::index_sequence<I...>) {
    auto& object = Cast(self);
    typename S::Arguments converted{std::tuple_element_t<I, typename S::Arguments>(arguments[I])...};
    const auto writeBack = [&] { (std::get<I>(converted).WriteBack(), ...); };
    if constexpr (std::is_void_v<typename S::Return>) {
      (object.*Function)(std::get<I>(converted).Get()...);
      writeBack();
      return {};
    } else {
      Variant result = Result<typename S::Return>::To((object.*Function)(std::get<I>(converted).Get()...));
      writeBack();
      return result;
    }
  }
};

// What a caller through the vtable does not know of the member behind an entry.
template <auto Function>
struct VtableMember {
  using S = Signature<decltype(Function)>;
  template <std::size_t... I>
  static constexpr auto Slots(std::index_sequence<I...>) {
    return std::array<VtableSlot, S::kCount>{
        VtableSlot{std::tuple_element_t<I, typename S::Arguments>::Type(),
                   std::tuple_element_t<I, typename S::Arguments>::kInOut}...};
  }
  static constexpr auto kSlots = Slots(std::make_index_sequence<S::kCount>());
  static constexpr VtableCall kCall{&Thunk<Function>::Invoke, kSlots.data(), S::kCount,
                                    Result<typename S::Return>::Type()};
};

// A parameter of an event. Handlers get a reference, unless the event says that the value goes.
struct EventParameter {
  EventParameter(const char* parameterName, bool byValue = false)  // NOLINT(google-explicit-constructor)
      : name(parameterName), isByValue(byValue) {}
  const char* name;
  bool isByValue;
};
inline constexpr bool kByValue = true;

// Builds the declaration of a class, member by member in interface order:
//   Declare("Build", "_Build", iid, clsid).let<&Build::SetName>("Name").get<&Build::Name>("Name") …
class Declare {
 public:
  Declare(std::string name, std::string interfaceName, std::string iid, std::string clsid = "")
      : m_interface(std::move(name), std::move(interfaceName), std::move(iid), std::move(clsid)) {}

  template <auto Function>
  Declare&& method(const char* name, std::initializer_list<const char*> parameters = {},
                   const char* help = "") && {
    return std::move(*this).template Entry<Function>(name, MemberKind::Method, parameters, help);
  }
  template <auto Function>
  Declare&& get(const char* name, std::initializer_list<const char*> parameters = {},
                const char* help = "") && {
    return std::move(*this).template Entry<Function>(name, MemberKind::Get, parameters, help);
  }
  template <auto Function>
  Declare&& let(const char* name, std::initializer_list<const char*> parameters = {},
                const char* help = "") && {
    return std::move(*this).template Entry<Function>(name, MemberKind::Let, parameters, help);
  }
  template <auto Function>
  Declare&& set(const char* name, std::initializer_list<const char*> parameters = {},
                const char* help = "") && {
    return std::move(*this).template Entry<Function>(name, MemberKind::Set, parameters, help);
  }
  // An event: a member function that its listeners override. There is nothing to invoke.
  template <auto Function>
  Declare&& event(const char* name, std::initializer_list<EventParameter> parameters = {}) && {
    Member member;
    member.name = name;
    member.id = kNextId;
    member.parameters = Signature<decltype(Function)>::Parameters();
    auto declared = parameters.begin();
    for (Parameter& parameter : member.parameters) {
      parameter.name = declared->name;
      parameter.isInOut = !declared->isByValue;
      ++declared;
    }
    m_interface.Add(std::move(member));
    return std::move(*this);
  }
  // A further interface of the class, and the interface of its events.
  Declare&& implements(Interface::Described further) && {
    m_interface.Implement(further);
    return std::move(*this);
  }
  Declare&& source(Interface::Described events) && {
    m_interface.SetSource(events);
    return std::move(*this);
  }
  // The next entry is the default member.
  Declare&& byDefault() && {
    m_id = kDefaultMember;
    return std::move(*this);
  }
  // The enumerator of a collection.
  template <auto Function>
  Declare&& newEnum() && {
    m_id = kNewEnumMember;
    return std::move(*this).template Entry<Function>("NewEnum", MemberKind::Get, {}, "");
  }
  Interface build() && { return std::move(m_interface); }

 private:
  template <auto Function>
  Declare&& Entry(const char* name, MemberKind kind, std::initializer_list<const char*> names,
                  const char* help) && {
    using S = Signature<decltype(Function)>;
    Member member;
    member.name = name;
    member.kind = kind;
    member.id = std::exchange(m_id, kNextId);
    member.help = help;
    member.parameters = S::Parameters();
    if (kind == MemberKind::Let || kind == MemberKind::Set) {
      member.value = member.parameters.back().type;
      member.parameters.pop_back();
    } else {
      member.value = Result<typename S::Return>::Type();
    }
    auto parameterName = names.begin();
    for (Parameter& parameter : member.parameters) parameter.name = *parameterName++;
    member.isRestricted = member.id == kNewEnumMember;
    member.invoke = &Thunk<Function>::Invoke;
    member.vtableEntry = VtableEntry<Function, VtableMember<Function>>::Address();
    m_interface.Add(std::move(member));
    return std::move(*this);
  }

  static constexpr std::int32_t kNextId = 1;
  std::int32_t m_id = kNextId;
  Interface m_interface;
};

}  // namespace hearthmake::automation
