#pragma once

#include <functional>
#include <string>

#include "adapters/win32/WideText.hpp"
#include "automation/RefCounted.hpp"
#include "com/Com.hpp"
#include "com/VariantConversion.hpp"
#include "doubles/UnknownDouble.hpp"

namespace hearthmake::com {

// A text of the host's.
class Text {
 public:
  Text() = default;
  explicit Text(const char* text) : m_text(SysAllocString(win32::ToWide(text).c_str())) {}
  Text(const Text&) = delete;
  Text& operator=(const Text&) = delete;
  ~Text() { SysFreeString(m_text); }

  operator BSTR() const { return m_text; }  // NOLINT(google-explicit-constructor)
  BSTR* Place() {
    SysFreeString(m_text);
    m_text = nullptr;
    return &m_text;
  }
  BSTR* Reference() { return &m_text; }
  std::string Utf8() const { return m_text == nullptr ? "" : win32::ToUtf8({m_text, SysStringLen(m_text)}); }

 private:
  BSTR m_text = nullptr;
};

inline std::string TextOf(VARIANT value) {
  OwnedVariant text;
  if (FAILED(VariantChangeType(&text, &value, 0, VT_BSTR))) return "(no text)";
  return text.bstrVal == nullptr ? "" : win32::ToUtf8(text.bstrVal);
}

inline VARIANT LongOf(long value) {
  VARIANT made;
  VariantInit(&made);
  made.vt = VT_I4;
  made.lVal = value;
  return made;
}

template <class T>
automation::Ref<T> Query(IUnknown* from, REFIID iid) {
  void* found = nullptr;
  if (FAILED(from->QueryInterface(iid, &found))) return nullptr;
  return automation::Ref<T>::Adopt(static_cast<T*>(found));
}

inline DISPID IdOf(IDispatch* object, const wchar_t* name) {
  std::wstring text = name;
  LPOLESTR names[] = {text.data()};
  DISPID id = DISPID_UNKNOWN;
  object->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id);
  return id;
}

// The error that a failed early-bound call left.
struct LeftError {
  std::string source;
  std::string text;
};
inline LeftError TakeError() {
  IErrorInfo* found = nullptr;
  if (GetErrorInfo(0, &found) != S_OK) return {"(none)", "(none)"};
  const auto info = automation::Ref<IErrorInfo>::Adopt(found);
  Text source;
  Text text;
  info->GetSource(source.Place());
  info->GetDescription(text.Place());
  return {source.Utf8(), text.Utf8()};
}

// An object of the host's: one member, "Answer", that a function answers for. As a sink it hears everything.
class HostDispatch final : public doubles::TypelessDispatch {
 public:
  using Handler = std::function<HRESULT(DISPID, DISPPARAMS&, VARIANT*, EXCEPINFO*)>;

  explicit HostDispatch(Handler handler, IID events = IID_NULL, DISPID answer = 42)
      : TypelessDispatch(0), m_handler(std::move(handler)), m_events(events), m_answer(answer) {}

  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override {
    if (lstrcmpiW(names[0], L"Answer") != 0) return DISP_E_UNKNOWNNAME;
    *ids = m_answer;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT* result,
                                   EXCEPINFO* failure, UINT*) override {
    return m_handler(id, *parameters, result, failure);
  }

 private:
  ~HostDispatch() override = default;
  bool AnswersTo(REFIID iid) const override { return iid == m_events && iid != IID_NULL; }

  Handler m_handler;
  IID m_events;
  DISPID m_answer;
};

}  // namespace hearthmake::com
