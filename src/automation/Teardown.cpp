#include "automation/Teardown.hpp"

#include <vector>

#include "automation/Object.hpp"
#include "automation/Variant.hpp"

namespace hearthmake::automation {

namespace {

constexpr int kDeepestEnd = 100;

struct Waiting {
  ArrayBuffer* array;
  Object* object;
};

thread_local int depth = 0;
thread_local std::vector<Waiting> waiting;

// Runs one end, and at the outermost one those that were put off.
template <class EndArray, class EndObject>
void Run(Waiting first, EndArray endArray, EndObject endObject) noexcept {
  if (depth >= kDeepestEnd) {
    waiting.push_back(first);
    return;
  }
  const auto end = [&](const Waiting& one) {
    ++depth;
    if (one.array != nullptr) {
      endArray(one.array);
    } else {
      endObject(one.object);
    }
    --depth;
  };
  end(first);
  while (depth == 0 && !waiting.empty()) {
    const Waiting next = waiting.back();
    waiting.pop_back();
    end(next);
  }
}

}  // namespace

void Teardown::End(ArrayBuffer* array) noexcept {
  Run(
      {array, nullptr}, [](ArrayBuffer* a) { delete a; }, [](Object* o) { o->LastReferenceGone(); });
}

void Teardown::End(Object* object) noexcept {
  Run(
      {nullptr, object}, [](ArrayBuffer* a) { delete a; }, [](Object* o) { o->LastReferenceGone(); });
}

}  // namespace hearthmake::automation
