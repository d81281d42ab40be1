#pragma once

#include <exception>
#include <new>

#include "adapters/win32/AutomationFailure.hpp"
#include "automation/Error.hpp"
#include "com/Com.hpp"

namespace hearthmake::com {

using win32::FailureOf;
using win32::ToNumber;
using win32::ToResult;

// Leaves the error where an early-bound caller looks for it, and gives its HRESULT.
HRESULT Report(const automation::Error& error, REFIID iid) noexcept;
// The same for a late-bound caller; the record may be null.
HRESULT Report(const automation::Error& error, EXCEPINFO* record) noexcept;

// Whatever a member throws, as the library's own kind of error. Call it where something was caught.
automation::Error CaughtError() noexcept;

// Runs what may throw for an early-bound caller.
template <class F>
HRESULT Guarded(REFIID iid, F run) noexcept {
  try {
    return run();
  } catch (...) {
    return Report(CaughtError(), iid);
  }
}

}  // namespace hearthmake::com
