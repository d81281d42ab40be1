#include "adapters/win32/MessagePump.hpp"

#include <gtest/gtest.h>
#include <windows.h>

namespace hearthmake::win32 {
namespace {

int s_delivered = 0;

LRESULT CALLBACK Count(HWND window, UINT message, WPARAM first, LPARAM second) {
  if (message == WM_APP) ++s_delivered;
  return DefWindowProcW(window, message, first, second);
}

TEST(MessagePump, DeliversWhatWaits) {
  WNDCLASSW type{};
  type.lpfnWndProc = Count;
  type.hInstance = GetModuleHandleW(nullptr);
  type.lpszClassName = L"HearthmakeMessagePumpTest";
  ASSERT_NE(RegisterClassW(&type), 0);
  const HWND window = CreateWindowExW(0, type.lpszClassName, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                      type.hInstance, nullptr);
  ASSERT_NE(window, nullptr);
  s_delivered = 0;
  MessagePump pump;
  pump.DeliverPending();
  EXPECT_EQ(s_delivered, 0);
  PostMessageW(window, WM_APP, 0, 0);
  PostMessageW(window, WM_APP, 0, 0);
  pump.DeliverPending();
  EXPECT_EQ(s_delivered, 2);
  DestroyWindow(window);
}

TEST(MessagePump, LeavesTheEndOfTheHostToTheHost) {
  PostQuitMessage(7);
  MessagePump().DeliverPending();
  MSG message{};
  ASSERT_NE(PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE), 0);
  EXPECT_EQ(message.message, UINT{WM_QUIT});
  EXPECT_EQ(message.wParam, WPARAM{7});
}

}  // namespace
}  // namespace hearthmake::win32
