#pragma once

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "platform/Clock.hpp"
#include "support/VbsValues.hpp"
#include "vbscript/intrinsics/Intrinsics.hpp"

namespace hearthmake::vbscript {

// A host with nothing but a clock that stands still.
class VbsClockHost : public Host {
 public:
  explicit VbsClockHost(double now) { m_platform.clock = std::make_shared<StoppedClock>(now); }

  const platform::Platform& Platform() override { return m_platform; }
  std::int32_t ShowMessage(std::string_view, std::int32_t, std::string_view) override { return 1; }
  std::string AskForText(std::string_view, std::string_view, std::string_view) override { return {}; }
  automation::Ref<automation::Object> CreateObject(std::string_view) override { return nullptr; }
  automation::Ref<automation::Object> GetObject(std::string_view, std::string_view) override {
    return nullptr;
  }

 private:
  class StoppedClock : public platform::Clock {
   public:
    explicit StoppedClock(double now) : m_now(now) {}
    double Now() override { return m_now; }
    void Sleep(std::chrono::milliseconds) override {}

   private:
    double m_now;
  };

  platform::Platform m_platform;
};

// Calls one intrinsic of a list by its name, as the machine does.
class VbsIntrinsicCall {
 public:
  explicit VbsIntrinsicCall(std::span<const Intrinsic> intrinsics, double now = 36974.5)
      : m_intrinsics(intrinsics), m_host(now), m_context{.host = m_host, .budget = {}, .random = {}} {}

  automation::Variant Value(const char* name, std::vector<automation::Variant> arguments) {
    for (const Intrinsic& intrinsic : m_intrinsics) {
      if (std::strcmp(intrinsic.name, name) != 0) continue;
      EXPECT_GE(arguments.size(), intrinsic.minimumArguments) << name;
      EXPECT_LE(arguments.size(), intrinsic.maximumArguments) << name;
      return intrinsic.call(m_context, arguments);
    }
    ADD_FAILURE() << "no intrinsic " << name;
    return {};
  }
  std::string operator()(const char* name, std::vector<automation::Variant> arguments) {
    return VbsOutcome([&] { return Value(name, std::move(arguments)); });
  }
  Context& TheContext() { return m_context; }

 private:
  std::span<const Intrinsic> m_intrinsics;
  VbsClockHost m_host;
  Context m_context;
};

}  // namespace hearthmake::vbscript
