#pragma once

#include <memory>
#include <vector>

#include "adapters/typelib/ByteView.hpp"
#include "platform/TypeLibReader.hpp"

namespace hearthmake::typelib {

// A type library in one of the formats.
class TypeLib {
 public:
  TypeLib() = default;
  TypeLib(const TypeLib&) = delete;
  TypeLib& operator=(const TypeLib&) = delete;
  virtual ~TypeLib() = default;

  // Both read what they need when they are called, and raise error 45, source "TypeLibReader", when the
  // library is damaged.
  virtual platform::TypeLibInfo Info() const = 0;
  virtual std::vector<platform::TypeDescription> Types() const = 0;

  // The library that lies in these bytes; nullptr when they start with the mark of neither format.
  static std::unique_ptr<TypeLib> Recognize(const ByteView& bytes);
};

}  // namespace hearthmake::typelib
