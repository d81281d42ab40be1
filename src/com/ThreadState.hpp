#pragma once

#include <map>
#include <memory>
#include <optional>
#include <unordered_map>
#include <utility>

#include "automation/Object.hpp"
#include "com/Com.hpp"
#include "com/Module.hpp"
#include "com/TypeLibrary.hpp"
#include "foundation/Apartment.hpp"

namespace hearthmake::com {

class ComObject;
class HostObject;
class EventConnection;

// What the library keeps of one thread (a COM apartment): the Apartment of the core, and which object of
// ours stands behind which object of COM.
//
// It begins with the first object that is created on the thread and ends when the host holds none any more
// and no call is under way. So the end of a host's last reference frees everything, also what a script
// keeps, and no work is left to the end of the thread, where COM may not be called any more.
class ThreadState {
 public:
  using Composer = platform::Platform (*)();

  ThreadState(const ThreadState&) = delete;
  ThreadState& operator=(const ThreadState&) = delete;

  // That of this thread; error 91 when there is none.
  static ThreadState& Current();
  static ThreadState* CurrentOrNull();

  // For the time of one call: keeps the state, and makes it when it is given a composer.
  class Call {
   public:
    Call() : Call(nullptr) {}
    explicit Call(Composer composer);
    Call(const Call&) = delete;
    Call& operator=(const Call&) = delete;
    ~Call();

   private:
    ThreadState* m_state;
  };

  // For as long as it lives, in a program that has an Apartment of its own on this thread: the state stands
  // beside that, and makes none.
  class Attachment {
   public:
    Attachment();
    Attachment(const Attachment&) = delete;
    Attachment& operator=(const Attachment&) = delete;
    ~Attachment();
  };

  // For as long as a host has something of the thread that is no object of the public interfaces.
  class Hold {
   public:
    Hold() : m_state(Current()) { ++m_state.m_holds; }
    Hold(const Hold&) = delete;
    Hold& operator=(const Hold&) = delete;
    ~Hold() { --m_state.m_holds; }

   private:
    ThreadState& m_state;
  };

  // An interface of an object of ours (or of the host's, when it came from there) for the caller, who owns
  // the reference. Null for null; error 13 when the object does not have the interface.
  IUnknown* Give(automation::Object* object, const automation::Interface* declared = nullptr);
  // The object behind an interface pointer; null for null.
  automation::Ref<automation::Object> Take(IUnknown* pointer);

  TypeLibrary& Types() { return m_types; }

  // For the objects that are known here.
  void Forget(automation::Object& object) { m_objects.erase(&object); }
  void Forget(IUnknown* identity, const HostObject& object);
  // The sinks that hosts have connected to an object, by number.
  using ConnectionKey = std::pair<automation::Object*, DWORD>;
  std::map<ConnectionKey, EventConnection*>& Connections() { return m_connections; }

 private:
  explicit ThreadState(Composer composer);
  ~ThreadState() = default;
  bool IsHeld() const { return m_holds != 0 || !m_objects.empty(); }
  static void EndIfIdle();

  ModuleLock m_lock;
  Composer m_composer;  // null: the thread's Apartment is somebody else's
  int m_calls = 0;
  int m_holds = 0;
  std::unordered_map<automation::Object*, ComObject*> m_objects;
  std::unordered_map<IUnknown*, HostObject*> m_hostObjects;
  std::map<ConnectionKey, EventConnection*> m_connections;
  TypeLibrary m_types;
  std::optional<Apartment> m_apartment;  // the last: its objects may still ask for the above
};

}  // namespace hearthmake::com
