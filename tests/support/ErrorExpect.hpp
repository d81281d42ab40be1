#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "automation/Error.hpp"

namespace hearthmake::support {

// The error that a call raises; one of number 0, and a failure of the test, when it raises none.
template <class Function>
automation::Error ErrorOf(const Function& function) {
  try {
    function();
  } catch (const automation::Error& error) {
    return error;
  }
  ADD_FAILURE() << "no error was raised";
  return automation::Error(0, "", "");
}

// Expects number, source and text of the error that a call raises.
template <class Function>
void ExpectError(const Function& function, std::int32_t number, const std::string& source,
                 const std::string& description) {
  const automation::Error error = ErrorOf(function);
  EXPECT_EQ(error.Number(), number);
  EXPECT_EQ(error.Source(), source);
  EXPECT_EQ(error.Description(), description);
}

template <class Function>
void ExpectError(const Function& function, automation::BuildErrors number, const std::string& source,
                 const std::string& description) {
  ExpectError(function, static_cast<std::int32_t>(number), source, description);
}

}  // namespace hearthmake::support
