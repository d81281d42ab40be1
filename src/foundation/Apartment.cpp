#include "foundation/Apartment.hpp"

#include <utility>

#include "automation/Error.hpp"
#include "foundation/Settings.hpp"
#include "foundation/mTypes.hpp"

namespace hearthmake {

namespace {
thread_local Apartment* t_current = nullptr;
}  // namespace

Apartment::Apartment(platform::Platform platform)
    : m_platform(std::move(platform)), m_outer(std::exchange(t_current, this)) {}

Apartment::~Apartment() { t_current = m_outer; }

Apartment& Apartment::Current() {
  if (t_current == nullptr) automation::Raise(automation::RuntimeError::ObjectNotSet, "Apartment");
  return *t_current;
}

}  // namespace hearthmake
