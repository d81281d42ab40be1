#pragma once

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
    if (m_object) m_object->CancelEdit();
  }

  void Apply() {
    m_object->ApplyEdit();
    m_object = nullptr;
  }

 private:
  automation::Ref<T> m_object;  // null once applied
};

}  // namespace hearthmake::host
