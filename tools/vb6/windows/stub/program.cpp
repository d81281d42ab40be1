// The stub of an ActiveX EXE: it registers itself when it is asked to, and does nothing else.

#include <windows.h>

#include <shellapi.h>

#include "vb6/windows/stub/Registration.hpp"

int WINAPI wWinMain(HINSTANCE /*instance*/, HINSTANCE /*previous*/, LPWSTR /*line*/, int /*show*/) {
  int count = 0;
  wchar_t** const words = CommandLineToArgvW(GetCommandLineW(), &count);
  if (words == nullptr || count != 2) return 0;
  if (lstrcmpiW(words[1], L"/RegServer") == 0) return hearthmake::vb6::stub::Register() ? 0 : 1;
  if (lstrcmpiW(words[1], L"/UnregServer") == 0) return hearthmake::vb6::stub::Unregister() ? 0 : 1;
  return 0;
}
