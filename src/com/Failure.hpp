#pragma once

#include <exception>
#include <new>

#include "automation/Error.hpp"
#include "com/Com.hpp"

namespace hearthmake::com {

// The HRESULT of an error number: 45 becomes 0x800A002D, as Visual Basic's own errors do; negative numbers
// are HRESULTs already. And back; what automation itself reports of a call gets Visual Basic's number.
HRESULT ToResult(std::int32_t number);
std::int32_t ToNumber(HRESULT result);

// Leaves the error where an early-bound caller looks for it, and gives its HRESULT.
HRESULT Report(const automation::Error& error, REFIID iid) noexcept;
// The same for a late-bound caller; the record may be null.
HRESULT Report(const automation::Error& error, EXCEPINFO* record) noexcept;

// The failure of a call that we made. The record is emptied.
automation::Error FailureOf(HRESULT result, EXCEPINFO& record);

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
