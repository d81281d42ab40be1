#pragma once

#include "automation/Error.hpp"
#include "automation/RefCounted.hpp"

namespace hearthmake::host {

// An edit of a build, project or settings object: cancelled when it is left without Apply.
template <class T>
class EditCycle {
 public:
  explicit EditCycle(T& object) : m_object(&object) { object.BeginEdit(); }
  EditCycle(const EditCycle&) = delete;
  EditCycle& operator=(const EditCycle&) = delete;
  ~EditCycle() {
    if (!m_object) return;
    try {
      m_object->CancelEdit();
    } catch (const automation::Error&) {
      // An Apply that failed late has ended the edit already; its own error is on the way.
      return;
    }
  }

  void Apply() {
    m_object->ApplyEdit();
    m_object = nullptr;
  }

 private:
  automation::Ref<T> m_object;  // null once applied
};

}  // namespace hearthmake::host
