#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <memory>
#include <string>

#include "platform/ProcessLauncher.hpp"

// What every ProcessLauncher does, whatever it stands on. An adapter's test instantiates the suite:
//
//   INSTANTIATE_TEST_SUITE_P(Posix, ProcessLauncherConformance, ::testing::Values(MakeLauncher));

namespace hearthmake::platform {

struct ProcessLauncherPlayground {
  std::shared_ptr<ProcessLauncher> launcher;
  std::string quick;    // a command line that ends at once
  std::string lasting;  // one that runs for a minute
  std::string missing;  // one that names no program
  std::shared_ptr<void> keepAlive;
};

using ProcessLauncherFactory = std::function<ProcessLauncherPlayground()>;

class ProcessLauncherConformance : public ::testing::TestWithParam<ProcessLauncherFactory> {
 protected:
  static constexpr std::chrono::seconds kLong{20};

  void SetUp() override { m_playground = GetParam()(); }

  ProcessLauncherPlayground m_playground;
};

TEST_P(ProcessLauncherConformance, WaitsForTheEndOfTheChild) {
  const auto child = m_playground.launcher->Start(m_playground.quick);
  ASSERT_NE(child, nullptr);
  EXPECT_TRUE(child->Wait(kLong));
  EXPECT_TRUE(child->Wait(std::chrono::milliseconds(0)));
}

TEST_P(ProcessLauncherConformance, GivesNothingWhenThereIsNoSuchProgram) {
  EXPECT_EQ(m_playground.launcher->Start(m_playground.missing), nullptr);
  EXPECT_EQ(m_playground.launcher->Start(""), nullptr);
  EXPECT_EQ(m_playground.launcher->Start("   "), nullptr);
  EXPECT_EQ(m_playground.launcher->Start("\"\""), nullptr);
}

TEST_P(ProcessLauncherConformance, ComesBackFromAWaitWhenTheTimeIsOver) {
  const auto child = m_playground.launcher->Start(m_playground.lasting);
  ASSERT_NE(child, nullptr);
  const auto start = std::chrono::steady_clock::now();
  EXPECT_FALSE(child->Wait(std::chrono::milliseconds(0)));
  EXPECT_FALSE(child->Wait(std::chrono::milliseconds(30)));
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(25));
  child->Terminate();
  EXPECT_TRUE(child->Wait(std::chrono::milliseconds(0)));
}

TEST_P(ProcessLauncherConformance, TerminatesAgainWithoutEffect) {
  const auto child = m_playground.launcher->Start(m_playground.quick);
  ASSERT_NE(child, nullptr);
  EXPECT_TRUE(child->Wait(kLong));
  child->Terminate();
  child->Terminate();
  EXPECT_TRUE(child->Wait(std::chrono::milliseconds(0)));
}

TEST_P(ProcessLauncherConformance, RunsChildrenSideBySide) {
  const auto lasting = m_playground.launcher->Start(m_playground.lasting);
  const auto quick = m_playground.launcher->Start(m_playground.quick);
  ASSERT_NE(lasting, nullptr);
  ASSERT_NE(quick, nullptr);
  EXPECT_TRUE(quick->Wait(kLong));
  EXPECT_FALSE(lasting->Wait(std::chrono::milliseconds(0)));
  lasting->Terminate();
}

}  // namespace hearthmake::platform
