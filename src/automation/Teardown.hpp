#pragma once

namespace hearthmake::automation {

class ArrayBuffer;
class Object;

// Ends what nobody refers to any more. The end of one thing often is the last reference to the next: a
// long chain (a linked list, an array in an array …) would overflow the stack, so that what ends too deep
// waits until the outermost end is through.
class Teardown {
 public:
  static void End(ArrayBuffer* array) noexcept;
  static void End(Object* object) noexcept;
};

}  // namespace hearthmake::automation
