#pragma once

#include <chrono>

namespace hearthmake::posix {

// A date and time of day on the clock on the wall, whatever its zone.
using LocalTime = std::chrono::local_time<std::chrono::milliseconds>;

// An OLE date counts days from 1899-12-30. Before that day the time of day still counts forward, so
// that -1.25 is 06:00 on 1899-12-29. Dates outside the years 100 to 9999 are error 6.
double ToOleDate(LocalTime time);

// The nearest millisecond. A number that is no date is error 6.
LocalTime FromOleDate(double date);

}  // namespace hearthmake::posix
