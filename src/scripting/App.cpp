#include "scripting/App.hpp"

#include <functional>
#include <thread>

#include "foundation/Apartment.hpp"

namespace hearthmake {

std::string App::Path() const { return Ports().system->ComponentFolder(); }
std::string App::EXEName() const { return "Hearthmake"; }
std::string App::Title() const { return "Hearthmake Business objects"; }
std::string App::ProductName() const { return "Hearthmake"; }
std::int16_t App::Major() const { return HEARTHMAKE_VERSION_MAJOR; }
std::int16_t App::Minor() const { return HEARTHMAKE_VERSION_MINOR; }
std::int16_t App::Revision() const { return HEARTHMAKE_VERSION_PATCH; }

std::int32_t App::ThreadID() const {
  return static_cast<std::int32_t>(std::hash<std::thread::id>()(std::this_thread::get_id()) & 0x7FFFFFFF);
}

}  // namespace hearthmake
