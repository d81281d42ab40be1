#pragma once

#include <cstdint>

#include "adapters/win32/ComHeaders.hpp"
#include "automation/Error.hpp"

namespace hearthmake::win32 {

// The HRESULT of an error number: 45 becomes 0x800A002D, as Visual Basic's own errors do; negative numbers
// are HRESULTs already. And back; what automation itself reports of a call gets Visual Basic's number.
HRESULT ToResult(std::int32_t number);
std::int32_t ToNumber(HRESULT result);

// What the system says of an HRESULT, in English where it has it; its number when it says nothing.
std::string SystemText(HRESULT result);

// The failure of a late-bound call that we made, with number, source and description of whom we called. The
// record is emptied.
automation::Error FailureOf(HRESULT result, EXCEPINFO& record);

}  // namespace hearthmake::win32
