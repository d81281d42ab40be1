#include "foundation/Apartment.hpp"

#include <utility>

#include "automation/Error.hpp"
#include "foundation/Settings.hpp"
#include "foundation/mTypes.hpp"
#include "platform/ScriptEngine.hpp"

namespace hearthmake {

namespace {
thread_local Apartment* t_current = nullptr;
}  // namespace

Apartment::Apartment(platform::Platform platform)
    : m_platform(std::move(platform)), m_outer(std::exchange(t_current, this)) {}

Apartment::~Apartment() {
  EndEngines();
  t_current = m_outer;
}

void Apartment::EndWithMe(const std::shared_ptr<platform::ScriptEngine>& engine) {
  std::erase_if(m_engines, [](const auto& known) { return known.expired(); });
  m_engines.push_back(engine);
}

void Apartment::EndEngines() noexcept {
  const auto engines = std::move(m_engines);
  for (const auto& known : engines) {
    // The build that has it may go with its names; the engine itself stays until they all went.
    const auto engine = known.lock();
    if (!engine) continue;
    try {
      engine->Reset();
    } catch (const automation::Error&) {
      continue;  // it runs: whoever runs it still has it
    }
  }
}

Apartment& Apartment::Current() {
  if (t_current == nullptr) automation::Raise(automation::RuntimeError::ObjectNotSet, "Apartment");
  return *t_current;
}

}  // namespace hearthmake
