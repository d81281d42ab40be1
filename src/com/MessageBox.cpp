#include "com/MessageBox.hpp"

#include <vector>

#include "adapters/win32/WideText.hpp"
#include "com/Com.hpp"

namespace hearthmake::com {

namespace {

bool IsAnybodyThere() {
  USEROBJECTFLAGS flags = {};
  const HWINSTA station = GetProcessWindowStation();
  // Without an answer the system's own box is the better guess.
  if (GetUserObjectInformationW(station, UOI_FLAGS, &flags, sizeof flags, nullptr) == 0) return true;
  return (flags.dwFlags & WSF_VISIBLE) != 0;
}

// By the low bits of a style, as MessageBox has them.
std::vector<std::int32_t> ButtonsOf(std::int32_t style) {
  switch (style & MB_TYPEMASK) {
    case MB_OKCANCEL: return {IDOK, IDCANCEL};
    case MB_ABORTRETRYIGNORE: return {IDABORT, IDRETRY, IDIGNORE};
    case MB_YESNOCANCEL: return {IDYES, IDNO, IDCANCEL};
    case MB_YESNO: return {IDYES, IDNO};
    case MB_RETRYCANCEL: return {IDRETRY, IDCANCEL};
    default: return {IDOK};
  }
}

std::int32_t ReadyButton(std::int32_t style) {
  const std::vector<std::int32_t> buttons = ButtonsOf(style);
  const auto index = static_cast<std::size_t>((style & MB_DEFMASK) >> 8);
  return index < buttons.size() ? buttons[index] : buttons.front();
}

}  // namespace

std::int32_t ShowMessage(std::string_view prompt, std::int32_t style, std::string_view title) {
  if (!IsAnybodyThere()) return ReadyButton(style);
  const int chosen = MessageBoxW(nullptr, win32::ToWide(prompt).c_str(), win32::ToWide(title).c_str(),
                                 static_cast<UINT>(style) | MB_TASKMODAL);
  return chosen != 0 ? chosen : ReadyButton(style);
}

}  // namespace hearthmake::com
