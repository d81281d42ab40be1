#include "com/MachineClasses.hpp"

#include <gtest/gtest.h>

#include <array>
#include <optional>

#include "automation/Interface.hpp"
#include "com/Com.hpp"
#include "com/ThreadState.hpp"

namespace hearthmake::com {
namespace {

using automation::InvokeKind;
using automation::Variant;

// A program that keeps an apartment of its own, or none, and has COM.
class MachineClasses : public testing::Test {
 protected:
  MachineClasses() { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
  ~MachineClasses() override {
    m_attachment.reset();
    CoUninitialize();
  }

  std::optional<ThreadState::Attachment> m_attachment{std::in_place};
};

TEST_F(MachineClasses, MakesObjectsThatAreCalledLikeAnyOther) {
  const auto expression = CreateOfMachine("VBScript.RegExp");
  if (!expression) GTEST_SKIP() << "this machine has no VBScript.RegExp";
  std::array pattern = {Variant::FromText("^o\\w+s$")};
  expression->Invoke(*expression->FindMember("Pattern"), InvokeKind::Let, pattern);
  std::array text = {Variant::FromText("orders")};
  EXPECT_TRUE(
      automation::ToBoolean(expression->Invoke(*expression->FindMember("Test"), InvokeKind::Call, text)));
}

TEST_F(MachineClasses, TellTheirTypes) {
  const auto expression = CreateOfMachine("VBScript.RegExp");
  if (!expression) GTEST_SKIP() << "this machine has no VBScript.RegExp";
  EXPECT_EQ(expression->Declaration().Name(), "IRegExp2");
}

TEST_F(MachineClasses, GiveNothingForWhatTheMachineDoesNotHave) {
  EXPECT_FALSE(CreateOfMachine("Hearthmake.NoSuchClass"));
  EXPECT_FALSE(GetOfMachine("", "Hearthmake.NoSuchClass"));
  EXPECT_FALSE(GetOfMachine("hearthmake-no-such-moniker:", ""));
}

TEST_F(MachineClasses, LeaveNoStateBehindTheAttachment) {
  EXPECT_NE(ThreadState::CurrentOrNull(), nullptr);
  {
    const ThreadState::Attachment nested;
    CreateOfMachine("VBScript.RegExp");
  }
  EXPECT_NE(ThreadState::CurrentOrNull(), nullptr);
  m_attachment.reset();
  EXPECT_EQ(ThreadState::CurrentOrNull(), nullptr);
}

}  // namespace
}  // namespace hearthmake::com
