#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "adapters/win32/AutomationFailure.hpp"
#include "adapters/win32/ComHeaders.hpp"
#include "adapters/win32/VariantConversion.hpp"
#include "adapters/win32/WideText.hpp"
#include "automation/Error.hpp"
#include "automation/RefCounted.hpp"
#include "automation/Text.hpp"
#include "automation/Variant.hpp"
#include "doubles/CallLog.hpp"
#include "doubles/UnknownDouble.hpp"

namespace hearthmake::doubles {

// What a member of a double gives: a value, or another object.
struct Answer {
  Answer() = default;
  Answer(automation::Variant given) : value(std::move(given)) {}  // NOLINT(google-explicit-constructor)
  template <class T>
  Answer(const automation::Ref<T>& given) : object(given.Get()) {}  // NOLINT(google-explicit-constructor)

  automation::Variant value;
  automation::Ref<IDispatch> object;
};

using CallArguments = std::span<automation::Variant>;

// A walk over objects, as a collection's enumerator gives it.
class EnumeratorDouble final : public UnknownDouble<IEnumVARIANT> {
 public:
  using Source = std::function<automation::Ref<IDispatch>()>;  // null at the end

  // Begins with one reference.
  explicit EnumeratorDouble(Source source)
      : UnknownDouble(IID_IEnumVARIANT, 1), m_source(std::move(source)) {}

  HRESULT STDMETHODCALLTYPE Next(ULONG count, VARIANT* items, ULONG* fetched) override {
    ULONG given = 0;
    while (given < count) {
      auto next = m_source();
      if (!next) break;
      items[given].vt = VT_DISPATCH;
      items[given++].pdispVal = next.Detach();
    }
    if (fetched != nullptr) *fetched = given;
    return given == count ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE Skip(ULONG) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Reset() override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT**) override { return E_NOTIMPL; }

 private:
  ~EnumeratorDouble() override = default;

  Source m_source;
};

// An automation object whose members are functions. It is called through IDispatch as any other, is as
// strict about the kinds of calls and the number of arguments as a type library makes it, and writes every
// call down. What a function throws reaches the caller as EXCEPINFO.
class DispatchDouble : public TypelessDispatch {
 public:
  using Function = std::function<Answer(CallArguments)>;

  DispatchDouble(std::string name, std::shared_ptr<CallLog> log)
      : TypelessDispatch(0), m_name(std::move(name)), m_log(std::move(log)) {}

  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override {
    const std::string name = win32::ToUtf8(names[0]);
    for (std::size_t i = 0; i < m_members.size(); ++i) {
      if (!automation::EqualsIgnoreCaseAscii(m_members[i].name, name)) continue;
      *ids = static_cast<DISPID>(i);
      return S_OK;
    }
    *ids = DISPID_UNKNOWN;
    return DISP_E_UNKNOWNNAME;
  }

  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                                   VARIANT* result, EXCEPINFO* failure, UINT*) override {
    if (id == DISPID_NEWENUM && m_newEnum) {
      result->vt = VT_UNKNOWN;
      result->punkVal = new EnumeratorDouble(m_newEnum());
      return S_OK;
    }
    if (id < 0 || static_cast<std::size_t>(id) >= m_members.size()) return DISP_E_MEMBERNOTFOUND;
    const Member& member = m_members[static_cast<std::size_t>(id)];
    const bool isLet = (flags & DISPATCH_PROPERTYPUT) != 0;
    if (!isLet && (flags & member.readFlag) == 0) return DISP_E_MEMBERNOTFOUND;
    const Entry& entry = isLet ? member.let : member.read;
    if (!entry.function) return DISP_E_MEMBERNOTFOUND;
    if (parameters->cArgs < entry.fewest || parameters->cArgs > entry.most) return DISP_E_BADPARAMCOUNT;
    const bool namesValue =
        parameters->cNamedArgs == 1 && parameters->rgdispidNamedArgs[0] == DISPID_PROPERTYPUT;
    if (namesValue != isLet) return DISP_E_PARAMNOTFOUND;
    return Run(member.name + (isLet ? "=" : ""), entry.function, *parameters, result, failure);
  }

 protected:
  ~DispatchDouble() override = default;

  const std::shared_ptr<CallLog>& Log() const { return m_log; }

  // Optional parameters make `most` greater than `fewest`.
  void Method(const char* name, unsigned fewest, unsigned most, Function function) {
    Find(name).read = {std::move(function), fewest, most};
    Find(name).readFlag = DISPATCH_METHOD;
  }
  void Method(const char* name, unsigned count, Function function) {
    Method(name, count, count, std::move(function));
  }
  void Get(const char* name, unsigned fewest, unsigned most, Function function) {
    Find(name).read = {std::move(function), fewest, most};
    Find(name).readFlag = DISPATCH_PROPERTYGET;
  }
  void Get(const char* name, unsigned count, Function function) {
    Get(name, count, count, std::move(function));
  }
  void Get(const char* name, std::function<Answer()> function) {
    Get(name, 0, [function = std::move(function)](CallArguments) { return function(); });
  }
  // The value is the last argument, and counted.
  void Let(const char* name, unsigned count, Function function) {
    Find(name).let = {std::move(function), count, count};
  }
  void Enumeration(std::function<EnumeratorDouble::Source()> walk) { m_newEnum = std::move(walk); }

 private:
  struct Entry {
    Function function;
    unsigned fewest = 0;
    unsigned most = 0;
  };
  struct Member {
    std::string name;
    Entry read;
    WORD readFlag = 0;
    Entry let;
  };

  Member& Find(const std::string& name) {
    for (Member& member : m_members) {
      if (member.name == name) return member;
    }
    return m_members.emplace_back(Member{name, {}, 0, {}});
  }

  HRESULT Run(const std::string& member, const Function& function, const DISPPARAMS& parameters,
              VARIANT* result, EXCEPINFO* failure) {
    const automation::Ref<DispatchDouble> kept(this);
    try {
      std::vector<automation::Variant> arguments;
      for (UINT i = parameters.cArgs; i-- > 0;)
        arguments.push_back(win32::FromVariant(parameters.rgvarg[i], win32::NoObjects()));
      m_log->Note(m_name + "." + member, arguments);
      Answer answer = function(arguments);
      if (result == nullptr) return S_OK;
      if (answer.object) {
        result->vt = VT_DISPATCH;
        result->pdispVal = answer.object.Detach();
      } else {
        *result = win32::ToVariant(answer.value, win32::NoObjects());
      }
      return S_OK;
    } catch (const automation::Error& error) {
      *failure = {};
      failure->scode = win32::ToResult(error.Number());
      failure->bstrSource = SysAllocString(win32::ToWide(error.Source()).c_str());
      failure->bstrDescription = SysAllocString(win32::ToWide(error.Description()).c_str());
      return DISP_E_EXCEPTION;
    }
  }

  std::string m_name;
  std::shared_ptr<CallLog> m_log;
  std::vector<Member> m_members;
  std::function<EnumeratorDouble::Source()> m_newEnum;
};

template <class T, class... Arguments>
automation::Ref<T> MakeDouble(Arguments&&... arguments) {
  return automation::Ref<T>(new T(std::forward<Arguments>(arguments)...));
}

}  // namespace hearthmake::doubles
