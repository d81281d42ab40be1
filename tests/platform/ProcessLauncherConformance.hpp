#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <memory>
#include <string>

#include "automation/Error.hpp"
#include "platform/ProcessLauncher.hpp"

// What every ProcessLauncher does, whatever it stands on. An adapter's test instantiates the suite:
//
//   INSTANTIATE_TEST_SUITE_P(Posix, ProcessLauncherConformance, ::testing::Values(MakeLauncher));

namespace hearthmake::platform {

struct ProcessLauncherPlayground {
  std::shared_ptr<ProcessLauncher> launcher;
  std::string quick;    // a command line that ends at once, with exit code 3
  std::string lasting;  // one that runs for a minute
  std::string missing;  // one that names no program
  std::string echoing;  // one that writes its standard input to its standard output
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

TEST_P(ProcessLauncherConformance, TellsTheExitCodeOfWhatHasEnded) {
  const auto quick = m_playground.launcher->Start(m_playground.quick);
  const auto lasting = m_playground.launcher->Start(m_playground.lasting);
  ASSERT_TRUE(quick && lasting);
  EXPECT_GT(quick->ProcessId(), 0);
  EXPECT_EQ(lasting->ExitCode(), std::nullopt);
  ASSERT_TRUE(quick->Wait(kLong));
  EXPECT_EQ(quick->ExitCode(), 3);
  EXPECT_EQ(quick->ExitCode(), 3);
  lasting->Terminate();
  EXPECT_NE(lasting->ExitCode().value_or(0), 0);
}

TEST_P(ProcessLauncherConformance, PipesTheStreamsOfAChild) {
  auto child = m_playground.launcher->StartPiped(m_playground.echoing);
  ASSERT_NE(child.process, nullptr);
  char buffer[64];
  EXPECT_EQ(child.output->Read(buffer, sizeof buffer, std::chrono::milliseconds(0)), std::nullopt);
  child.input->Write("through");
  child.input.reset();
  const auto got = child.output->Read(buffer, sizeof buffer, kLong);
  EXPECT_EQ(std::string(buffer, got.value_or(0)), "through");
  EXPECT_EQ(child.output->Read(buffer, sizeof buffer, kLong), 0U);
  EXPECT_EQ(child.error->Read(buffer, sizeof buffer, kLong), 0U);
  EXPECT_TRUE(child.process->Wait(kLong));
  EXPECT_EQ(m_playground.launcher->StartPiped(m_playground.missing).process, nullptr);
}

TEST_P(ProcessLauncherConformance, WritingToAChildThatIsGoneIsAnError) {
  const auto child = m_playground.launcher->StartPiped(m_playground.quick);
  ASSERT_NE(child.process, nullptr);
  ASSERT_TRUE(child.process->Wait(kLong));
  EXPECT_THROW(child.input->Write("x"), automation::Error);
}

}  // namespace hearthmake::platform
