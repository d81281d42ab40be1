#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "automation/Declare.hpp"
#include "automation/Events.hpp"
#include "com/Com.hpp"
#include "com/ThreadState.hpp"

namespace hearthmake::com {

// What a shelf tells its listeners.
class ShelfEvents {
 public:
  virtual ~ShelfEvents() = default;
  virtual void Filling(automation::Object& /*what*/, bool& /*cancel*/) {}
  virtual void Filled(const std::string& /*label*/, automation::Variant& /*answer*/, std::int32_t /*count*/) {
  }
  static const automation::Interface& Describe() {
    static const automation::Interface kInterface =
        automation::Declare("Shelf", "__Shelf", "{7E0A35D2-98CE-4A7D-B5D7-2F1D6A4B8801}")
            .event<&ShelfEvents::Filling>("Filling", {"objWhat", "bCancel"})
            .event<&ShelfEvents::Filled>(
                "Filled", {{"strLabel", automation::kByValue}, "Answer", {"Count", automation::kByValue}})
            .build();
    return kInterface;
  }
};

// A further interface that shelves have.
class Labelled {
 public:
  virtual std::string Text() const = 0;
  static const automation::Interface& Describe() {
    static const automation::Interface kInterface =
        automation::Declare("Labelled", "_Labelled", "{7E0A35D2-98CE-4A7D-B5D7-2F1D6A4B8802}")
            .get<&Labelled::Text>("Text")
            .build();
    return kInterface;
  }

 protected:
  ~Labelled() = default;
};

// An object with a member of every kind, which needs nothing of the machine.
class Shelf final : public automation::Object, public automation::EventSource, public Labelled {
 public:
  enum class Wood : std::int32_t { Oak = 1, Pine = 2 };
  friend const automation::Enumeration& DescribeEnumeration(Wood) {
    static const automation::Enumeration kEnumeration = {"Wood", "", {{"Oak", 1}, {"Pine", 2}}};
    return kEnumeration;
  }

  Shelf() { ++s_count; }
  static int Count() { return s_count; }

  static const automation::Interface& Describe() {
    static const automation::Interface kInterface =
        automation::Declare("Shelf", "_Shelf", "{7E0A35D2-98CE-4A7D-B5D7-2F1D6A4B8803}")
            .implements(&Labelled::Describe)
            .source(&ShelfEvents::Describe)
            .byDefault()
            .get<&Shelf::Label>("Label")
            .let<&Shelf::SetLabel>("Label")
            .method<&Shelf::Sum>("Sum", {"intA", "dblB", "bC", "dtmD", "eWood"})
            .method<&Shelf::Change>("Change", {"strText", "lngNumber", "vAny"})
            .method<&Shelf::Fail>("Fail", {"lngNumber"})
            .get<&Shelf::Other>("Other")
            .set<&Shelf::SetOther>("Other")
            .method<&Shelf::Fill>("Fill", {"strLabel", "vAnswer"})
            .method<&Shelf::Echo>("Echo", {"vValue"})
            .method<&Shelf::Ask>("Ask", {"objWhom", "strMember"})
            .newEnum<&Shelf::NewEnum>()
            .method<&Shelf::Note>("Note", {"lngLine", "vAnswer"})
            .get<&Shelf::Neighbour>("Neighbour")
            .let<&Shelf::SetNeighbour>("Neighbour")
            .build();
    return kInterface;
  }
  const automation::Interface& Declaration() const override { return Describe(); }

  std::string Label() const { return m_label; }
  void SetLabel(const std::string& value) { m_label = value; }
  std::string Text() const override { return "labelled " + m_label; }
  double Sum(std::int16_t a, double b, bool c, automation::Date d, Wood wood) {
    return a + b + (c ? 1000 : 0) + d.value + 10000 * static_cast<std::int32_t>(wood);
  }
  bool Change(std::string& text, std::int32_t& number, automation::Variant& any) {
    text += "!";
    number *= 2;
    any = automation::Variant::FromText("was " + automation::ToText(any));
    return true;
  }
  void Fail(std::int32_t number) { automation::Raise(number, "Shelf.Fail", "It fell: \xC3\xA5"); }
  automation::Object* Other() { return m_other.Get(); }
  void SetOther(automation::Object* value) { m_other = automation::Ref<automation::Object>(value); }
  std::int32_t Fill(const std::string& label, automation::Variant& answer) {
    automation::Variant arguments[2] = {
        automation::Variant::FromObject(automation::Ref<automation::Object>(this)),
        automation::Variant::FromBoolean(false)};
    Tell("Filling", arguments);
    if (automation::ToBoolean(arguments[1])) return -1;
    automation::Variant filled[3] = {automation::Variant::FromText(label), answer,
                                     automation::Variant::FromLong(7)};
    Tell("Filled", filled);
    answer = filled[1];
    return static_cast<std::int32_t>(m_sinks.size());
  }
  automation::Variant Echo(const automation::Variant& value) { return value; }
  automation::Variant Ask(automation::Object& whom, const std::string& member) { return whom.Call(member); }
  automation::Ref<automation::Enumerator> NewEnum();
  automation::Ref<automation::Enumerator> Enumerate() override { return NewEnum(); }
  std::string Note(std::optional<std::int32_t> line, std::optional<automation::Variant>& answer) {
    if (answer) answer = automation::Variant::FromText("noted");
    return line ? std::to_string(*line) : "none";
  }
  Shelf* Neighbour() { return m_neighbour.Get(); }
  void SetNeighbour(Shelf* value) { m_neighbour = automation::Ref<Shelf>(value); }

  std::uint32_t Advise(std::shared_ptr<automation::EventSink> sink) override {
    m_sinks[++m_last] = std::move(sink);
    return m_last;
  }
  void Unadvise(std::uint32_t connection) override { m_sinks.erase(connection); }

 protected:
  ~Shelf() override { --s_count; }

 private:
  void Tell(const char* event, std::span<automation::Variant> values) {
    std::vector<automation::Variant> references;
    for (automation::Variant& value : values) references.push_back(automation::Variant::ByReference(&value));
    const auto sinks = m_sinks;
    for (const auto& [number, sink] : sinks) sink->Raise(event, references);
  }

  static inline int s_count = 0;
  std::string m_label = "shelf";
  automation::Ref<automation::Object> m_other;
  automation::Ref<Shelf> m_neighbour;
  std::map<std::uint32_t, std::shared_ptr<automation::EventSink>> m_sinks;
  std::uint32_t m_last = 0;
};

class ShelfWalk final : public automation::Enumerator {
 public:
  bool Next(automation::Variant& item) override {
    if (m_next == 3) return false;
    item = automation::Variant::FromLong(++m_next * 10);
    return true;
  }

 private:
  std::int32_t m_next = 0;
};

inline automation::Ref<automation::Enumerator> Shelf::NewEnum() { return automation::Make<ShelfWalk>(); }

// A shelf as a host sees it: the vtable as a type library would describe it.
struct IShelf : IDispatch {
  virtual HRESULT STDMETHODCALLTYPE get_Label(BSTR* result) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_Label(BSTR value) = 0;
  virtual HRESULT STDMETHODCALLTYPE Sum(short a, double b, VARIANT_BOOL c, DATE d, int wood,
                                        double* result) = 0;
  virtual HRESULT STDMETHODCALLTYPE Change(BSTR* text, long* number, VARIANT* any, VARIANT_BOOL* result) = 0;
  virtual HRESULT STDMETHODCALLTYPE Fail(long number) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_Other(IDispatch** result) = 0;
  virtual HRESULT STDMETHODCALLTYPE putref_Other(IDispatch* value) = 0;
  virtual HRESULT STDMETHODCALLTYPE Fill(BSTR label, VARIANT* answer, long* result) = 0;
  virtual HRESULT STDMETHODCALLTYPE Echo(VARIANT value, VARIANT* result) = 0;
  virtual HRESULT STDMETHODCALLTYPE Ask(IDispatch* whom, BSTR member, VARIANT* result) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_NewEnum(IUnknown** result) = 0;
  virtual HRESULT STDMETHODCALLTYPE Note(long line, VARIANT* answer, BSTR* result) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_Neighbour(IShelf** result) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_Neighbour(IShelf* value) = 0;
};

struct ILabelled : IDispatch {
  virtual HRESULT STDMETHODCALLTYPE get_Text(BSTR* result) = 0;
};

inline const IID& ShelfId() {
  static const IID kId = ParseGuid(Shelf::Describe().InterfaceId());
  return kId;
}

// A new shelf in the hands of a host. Its thread works on no port at all.
inline automation::Ref<IShelf> MakeShelf() {
  const ThreadState::Call call([] { return platform::Platform(); });
  const auto shelf = automation::Make<Shelf>();
  return automation::Ref<IShelf>::Adopt(reinterpret_cast<IShelf*>(ThreadState::Current().Give(shelf.Get())));
}

}  // namespace hearthmake::com
