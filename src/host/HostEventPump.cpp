#include "host/HostEventPump.hpp"

#include "host/system/Interrupt.hpp"

namespace hearthmake::host {

void HostEventPump::DeliverPending() {
  if (Interrupt::IsRequested()) m_terminateChildren();
  if (m_tick) m_tick();
}

}  // namespace hearthmake::host
