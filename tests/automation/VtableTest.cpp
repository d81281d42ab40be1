#include "automation/Vtable.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "automation/Declare.hpp"

namespace hearthmake::automation {
namespace {

class Counter final : public Object {
 public:
  static const Interface& Describe();
  const Interface& Declaration() const override { return Describe(); }

  std::int32_t Add(std::int16_t first, double second, bool third) {
    return static_cast<std::int32_t>(first + second) + (third ? 100 : 0);
  }
  void Fill(std::string& text, std::int32_t& number, const Variant& /*value*/) {
    text += "!";
    ++number;
  }
  Object* Self() { return this; }
};

const Interface& Counter::Describe() {
  static const Interface kInterface = Declare("Counter", "_Counter", "{IID}")
                                          .method<&Counter::Add>("Add", {"a", "b", "c"})
                                          .method<&Counter::Fill>("Fill", {"t", "n", "v"})
                                          .get<&Counter::Self>("Self")
                                          .build();
  return kInterface;
}

// Notes what arrives and answers with a fixed number.
class Recorder final : public VtableReceiver {
 public:
  std::int32_t CallThroughVtable(const VtableCall& call, void* const* places) noexcept override {
    m_call = &call;
    m_places.assign(places, places + call.slotCount + 1);
    if (call.result.kind == ValueKind::Long) {
      Variant arguments[3] = {Variant::FromInteger(*At<std::int16_t>(0)), Variant::FromDouble(*At<double>(1)),
                             Variant::FromBoolean(*At<std::int16_t>(2) != 0)};
      *At<std::int32_t>(3) = ToLong(call.invoke(*m_object, std::span<Variant>(arguments)));
    }
    return 17;
  }
  template <class T>
  T* At(std::size_t index) {
    return static_cast<T*>(m_places[index]);
  }

  Ref<Counter> m_object = Make<Counter>();
  const VtableCall* m_call = nullptr;
  std::vector<void*> m_places;
};

template <class F>
F* EntryOf(std::size_t index) {
  return reinterpret_cast<F*>(Counter::Describe().Members()[index].vtableEntry);
}

TEST(Vtable, EntriesTakeValuesAndGiveTheResult) {
  Recorder recorder;
  VtableFace face{nullptr, &recorder};
  std::int32_t result = 0;
  const auto add = EntryOf<std::int32_t(VtableFace*, std::int16_t, double, std::int16_t, std::int32_t*)>(0);
  EXPECT_EQ(add(&face, 7, 2.0, -1, &result), 17);
  EXPECT_EQ(result, 109);
}

TEST(Vtable, EntriesPassThePlacesOfInOutArgumentsOn) {
  Recorder recorder;
  VtableFace face{nullptr, &recorder};
  char16_t* text = nullptr;
  std::int32_t number = 4;
  VtableVariant value{3, {}, {}};
  const auto fill = EntryOf<std::int32_t(VtableFace*, char16_t**, std::int32_t*, VtableVariant)>(1);
  EXPECT_EQ(fill(&face, &text, &number, value), 17);
  EXPECT_EQ(recorder.At<char16_t*>(0), &text);
  EXPECT_EQ(recorder.At<std::int32_t>(1), &number);
  ASSERT_EQ(recorder.m_call->slotCount, 3U);
  EXPECT_TRUE(recorder.m_call->slots[0].isInOut);
  EXPECT_TRUE(recorder.m_call->slots[1].isInOut);
  EXPECT_FALSE(recorder.m_call->slots[2].isInOut);
  EXPECT_EQ(recorder.m_call->slots[2].type.kind, ValueKind::Variant);
}

TEST(Vtable, EntriesTellWhatTheResultIs) {
  Recorder recorder;
  VtableFace face{nullptr, &recorder};
  void* result = nullptr;
  EntryOf<std::int32_t(VtableFace*, void**)>(2)(&face, &result);
  EXPECT_EQ(recorder.m_call->result.kind, ValueKind::Object);
  EXPECT_EQ(recorder.At<void*>(0), &result);
}

}  // namespace
}  // namespace hearthmake::automation
