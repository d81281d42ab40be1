#pragma once

#include <exception>
#include <string>

namespace hearthmake::host {

// What the command's process ends with.
enum class ExitStatus : int {
  Done = 0,
  Failed = 1,      // the build failed
  WrongInput = 2,  // wrong usage or input
  Cancelled = 3,
};

// A failure of the command itself: what is wrong and where, and what to do next (may be empty).
class HostError : public std::exception {
 public:
  explicit HostError(std::string message, std::string advice = {}, ExitStatus status = ExitStatus::WrongInput)
      : m_message(std::move(message)), m_advice(std::move(advice)), m_status(status) {}

  const char* what() const noexcept override { return m_message.c_str(); }
  const std::string& Advice() const { return m_advice; }
  ExitStatus Status() const { return m_status; }

 private:
  std::string m_message;
  std::string m_advice;
  ExitStatus m_status;
};

}  // namespace hearthmake::host
