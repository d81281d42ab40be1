#include "adapters/win32/MessagePump.hpp"

#include <windows.h>

namespace hearthmake::win32 {

void MessagePump::DeliverPending() {
  MSG message{};
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
    if (message.message == WM_QUIT) {
      // The host's own loop has to see it, after us.
      PostQuitMessage(static_cast<int>(message.wParam));
      return;
    }
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

}  // namespace hearthmake::win32
