#include "com/MessageBox.hpp"

#include <gtest/gtest.h>

#include "com/Com.hpp"

namespace hearthmake::com {
namespace {

// A process as services and tasks without a user have it: nothing that it shows is seen.
class UnseenStation {
 public:
  UnseenStation() : m_station(CreateWindowStationW(L"HearthmakeTest", 0, GENERIC_ALL, nullptr)) {
    isUsed = m_station != nullptr && SetProcessWindowStation(m_station) != 0;
  }
  UnseenStation(const UnseenStation&) = delete;
  UnseenStation& operator=(const UnseenStation&) = delete;
  ~UnseenStation() {
    SetProcessWindowStation(m_before);
    CloseWindowStation(m_station);
  }
  bool isUsed = false;

 private:
  HWINSTA m_before = GetProcessWindowStation();
  HWINSTA m_station;
};

// A box that is seen waits for a person, and is not tested.
TEST(MessageBox, TakesTheButtonThatIsReadyWhereNobodySeesIt) {
  const UnseenStation station;
  ASSERT_TRUE(station.isUsed) << GetLastError();
  EXPECT_EQ(ShowMessage("Go on?", MB_OK, "Hearthmake"), IDOK);
  EXPECT_EQ(ShowMessage("Go on?", MB_YESNO, "Hearthmake"), IDYES);
  EXPECT_EQ(ShowMessage("Go on?", MB_YESNO | MB_DEFBUTTON2, "Hearthmake"), IDNO);
  EXPECT_EQ(ShowMessage("Go on?", MB_YESNOCANCEL | MB_ICONQUESTION | MB_DEFBUTTON3, "Hearthmake"), IDCANCEL);
  EXPECT_EQ(ShowMessage("Go on?", MB_RETRYCANCEL | MB_DEFBUTTON3, "Hearthmake"), IDRETRY);
  EXPECT_EQ(ShowMessage("Go on?", MB_ABORTRETRYIGNORE | MB_DEFBUTTON2, "Hearthmake"), IDRETRY);
}

}  // namespace
}  // namespace hearthmake::com
