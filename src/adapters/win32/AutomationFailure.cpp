#include "adapters/win32/AutomationFailure.hpp"

#include <string>

#include "adapters/win32/WideText.hpp"

namespace hearthmake::win32 {

namespace {

using automation::Error;
using automation::RuntimeError;

constexpr std::uint32_t kControlFacility = 0x800A0000;
constexpr std::uint32_t kFacilityMask = 0xFFFF0000;

constexpr std::int32_t Number(RuntimeError error) { return static_cast<std::int32_t>(error); }

std::string TakeText(BSTR& text) {
  const std::string taken = text == nullptr ? "" : ToUtf8({text, SysStringLen(text)});
  SysFreeString(text);
  text = nullptr;
  return taken;
}

// What went wrong with the call itself.
Error CallFailure(HRESULT result) {
  const std::int32_t number = ToNumber(result);
  return {number, "", number > 0 ? automation::RuntimeErrorText(RuntimeError{number}) : SystemText(result)};
}

}  // namespace

HRESULT ToResult(std::int32_t number) {
  if (number < 0) return number;
  if (number == 0 || number > 0xFFFF) return E_FAIL;
  return static_cast<HRESULT>(kControlFacility | static_cast<std::uint32_t>(number));
}

std::int32_t ToNumber(HRESULT result) {
  const auto bits = static_cast<std::uint32_t>(result);
  if ((bits & kFacilityMask) == kControlFacility) return static_cast<std::int32_t>(bits & 0xFFFF);
  switch (result) {
    case DISP_E_UNKNOWNNAME:
    case DISP_E_MEMBERNOTFOUND: return Number(RuntimeError::MemberNotFound);
    case DISP_E_TYPEMISMATCH: return Number(RuntimeError::TypeMismatch);
    case DISP_E_OVERFLOW: return Number(RuntimeError::Overflow);
    case DISP_E_BADINDEX: return Number(RuntimeError::SubscriptOutOfRange);
    case DISP_E_BADPARAMCOUNT: return Number(RuntimeError::WrongNumberOfArguments);
    case DISP_E_PARAMNOTOPTIONAL: return Number(RuntimeError::ArgumentNotOptional);
    case DISP_E_NONAMEDARGS:
    case DISP_E_PARAMNOTFOUND: return Number(RuntimeError::NamedArgumentNotFound);
    case E_OUTOFMEMORY: return Number(RuntimeError::OutOfMemory);
    default: return result;
  }
}

std::string SystemText(HRESULT result) {
  wchar_t text[512] = {};
  const DWORD length = FormatMessageW(
      FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, static_cast<DWORD>(result),
      MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US), text, static_cast<DWORD>(std::size(text)), nullptr);
  std::string found = ToUtf8({text, length});
  while (!found.empty() && (found.back() == '\n' || found.back() == '\r')) found.pop_back();
  if (!found.empty()) return found;
  swprintf(text, std::size(text), L"Automation error 0x%08lX", static_cast<unsigned long>(result));
  return ToUtf8(text);
}

Error FailureOf(HRESULT result, EXCEPINFO& record) {
  if (result == DISP_E_EXCEPTION && record.pfnDeferredFillIn != nullptr) record.pfnDeferredFillIn(&record);
  const std::string source = TakeText(record.bstrSource);
  std::string description = TakeText(record.bstrDescription);
  TakeText(record.bstrHelpFile);
  if (result != DISP_E_EXCEPTION) return CallFailure(result);
  const HRESULT thrown = record.scode != 0 ? record.scode : ToResult(record.wCode);
  if (description.empty()) description = SystemText(thrown);
  return {ToNumber(thrown), source, description};
}

}  // namespace hearthmake::win32
