#include "com/Failure.hpp"

#include "adapters/win32/WideText.hpp"
#include "automation/RefCounted.hpp"

namespace hearthmake::com {

namespace {

using automation::Error;
using automation::Ref;
using automation::RuntimeError;

constexpr std::int32_t Number(RuntimeError error) { return static_cast<std::int32_t>(error); }

BSTR MakeBstr(const std::string& text) { return SysAllocString(win32::ToWide(text).c_str()); }

}  // namespace

HRESULT Report(const Error& error, REFIID iid) noexcept {
  const HRESULT result = ToResult(error.Number());
  ICreateErrorInfo* made = nullptr;
  if (FAILED(CreateErrorInfo(&made))) return result;
  const auto creation = Ref<ICreateErrorInfo>::Adopt(made);
  creation->SetGUID(iid);
  creation->SetSource(win32::ToWide(error.Source()).data());
  creation->SetDescription(win32::ToWide(error.Description()).data());
  IErrorInfo* info = nullptr;
  if (FAILED(creation->QueryInterface(IID_IErrorInfo, reinterpret_cast<void**>(&info)))) return result;
  SetErrorInfo(0, info);
  info->Release();
  return result;
}

HRESULT Report(const Error& error, EXCEPINFO* record) noexcept {
  if (record == nullptr) return DISP_E_EXCEPTION;
  *record = {};
  record->scode = ToResult(error.Number());
  record->bstrSource = MakeBstr(error.Source());
  record->bstrDescription = MakeBstr(error.Description());
  return DISP_E_EXCEPTION;
}

Error CaughtError() noexcept {
  try {
    throw;
  } catch (const Error& error) {
    return error;
  } catch (const std::bad_alloc&) {
    return {Number(RuntimeError::OutOfMemory), "", automation::RuntimeErrorText(RuntimeError::OutOfMemory)};
  } catch (const std::exception& error) {
    return {E_FAIL, "Hearthmake", error.what()};
  } catch (...) {
    return {E_FAIL, "Hearthmake", "Unexpected failure"};
  }
}

}  // namespace hearthmake::com
