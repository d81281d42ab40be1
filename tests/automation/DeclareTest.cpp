#include "automation/Declare.hpp"

#include <gtest/gtest.h>

#include <stdexcept>

#include "support/ErrorExpect.hpp"

namespace hearthmake::automation {

enum class Colour : std::int32_t { Red = 1, Blue = 7 };
const Enumeration& DescribeEnumeration(Colour) {
  static const Enumeration kEnumeration = {"Colours", "{GUID}", {{"Red", 1}, {"Blue", 7}}};
  return kEnumeration;
}

namespace {

using support::ErrorOf;

class Other final : public Object {
 public:
  static const Interface& Describe() {
    static const Interface kInterface = automation::Declare("Other", "_Other", "").build();
    return kInterface;
  }
  const Interface& Declaration() const override { return Describe(); }
};

// One member of every shape that a declaration knows.
class Sample final : public Object {
 public:
  static const Interface& Describe();
  const Interface& Declaration() const override { return Describe(); }

  std::string Name() const { return m_name; }
  void SetName(const std::string& value) { m_name = value; }
  std::int32_t Number() const { return m_number; }
  void SetNumber(std::int32_t value) { m_number = value; }
  std::int16_t Small() const { return 12; }
  bool Flag() const { return true; }
  double Ratio() const { return 0.5; }
  Date When() const { return {1.25}; }
  Colour Paint() const { return m_colour; }
  void SetPaint(Colour value) { m_colour = value; }
  Variant Anything(const Variant& value) const { return value; }
  std::string Item(const Variant& vIndex) const { return "item " + ToText(vIndex); }
  Sample& Self() { return *this; }
  Sample* Nothing() { return nullptr; }
  Ref<Sample> Fresh() const { return Make<Sample>(); }
  bool Fill(std::string& strFiles, std::int32_t& lngCount) {
    strFiles += "!";
    ++lngCount;
    return true;
  }
  void FillAndFail(std::string& strFiles) {
    strFiles = "changed";
    Raise(45, "Sample.FillAndFail", "failed");
  }
  std::string NameOf(Sample& objSample) { return objSample.m_name; }
  bool IsNothing(Sample* objSample) { return objSample == nullptr; }
  std::int32_t Add(std::int32_t a, std::optional<std::int32_t> b) { return a + b.value_or(100); }
  std::int32_t Cell(std::int32_t row) const { return m_cells[static_cast<std::size_t>(row)]; }
  void SetCell(std::int32_t row, std::int32_t value) { m_cells[static_cast<std::size_t>(row)] = value; }
  Ref<Enumerator> NewEnum() { return nullptr; }

 private:
  std::string m_name = "sample";
  std::int32_t m_number = 0;
  Colour m_colour = Colour::Red;
  std::array<std::int32_t, 4> m_cells{};
};

const Interface& Sample::Describe() {
  static const Interface kInterface = automation::Declare("Sample", "_Sample", "{IID}", "{CLSID}")
                                          .newEnum<&Sample::NewEnum>()
                                          .get<&Sample::Name>("Name", {}, "Its name")
                                          .let<&Sample::SetName>("Name")
                                          .get<&Sample::Number>("Number")
                                          .let<&Sample::SetNumber>("Number")
                                          .get<&Sample::Small>("Small")
                                          .get<&Sample::Flag>("Flag")
                                          .get<&Sample::Ratio>("Ratio")
                                          .get<&Sample::When>("When")
                                          .get<&Sample::Paint>("Paint")
                                          .let<&Sample::SetPaint>("Paint")
                                          .method<&Sample::Anything>("Anything", {"value"})
                                          .byDefault()
                                          .get<&Sample::Item>("item", {"vIndex"})
                                          .get<&Sample::Self>("Self")
                                          .get<&Sample::Nothing>("Nothing")
                                          .get<&Sample::Fresh>("Fresh")
                                          .method<&Sample::Fill>("Fill", {"strFiles", "lngCount"})
                                          .method<&Sample::FillAndFail>("FillAndFail", {"strFiles"})
                                          .method<&Sample::NameOf>("NameOf", {"objSample"})
                                          .method<&Sample::IsNothing>("IsNothing", {"objSample"})
                                          .method<&Sample::Add>("Add", {"a", "b"})
                                          .get<&Sample::Cell>("Cell", {"row"})
                                          .let<&Sample::SetCell>("Cell", {"row"})
                                          .build();
  return kInterface;
}

const Member& Find(const char* name, InvokeKind kind = InvokeKind::Get) {
  return *Sample::Describe().Find(Sample::Describe().Find(name).value(), kind);
}

TEST(Declare, ReadsAndWritesByName) {
  const auto sample = Make<Sample>();
  sample->Let("name", {Variant::FromText("new")});
  EXPECT_EQ(ToText(sample->Get("NAME")), "new");
  sample->Let("Number", {Variant::FromText("12")});
  EXPECT_EQ(ToLong(sample->Get("Number")), 12);
}

TEST(Declare, ResultsHaveTheTypeOfTheirMember) {
  const auto sample = Make<Sample>();
  EXPECT_EQ(sample->Get("Name").Type(), VariantType::String);
  EXPECT_EQ(sample->Get("Number").Type(), VariantType::Long);
  EXPECT_EQ(sample->Get("Small").Type(), VariantType::Integer);
  EXPECT_EQ(sample->Get("Flag").Type(), VariantType::Boolean);
  EXPECT_EQ(sample->Get("Ratio").Type(), VariantType::Double);
  EXPECT_EQ(sample->Get("When").Type(), VariantType::Date);
  EXPECT_EQ(sample->Get("Paint").Type(), VariantType::Long);
  EXPECT_EQ(sample->Get("Self").Type(), VariantType::Object);
}

TEST(Declare, TellsTheTypesOfItsMembers) {
  EXPECT_EQ(Find("Name").value.kind, ValueKind::String);
  EXPECT_EQ(Find("When").value.kind, ValueKind::Date);
  EXPECT_EQ(Find("Paint").value.kind, ValueKind::Enum);
  EXPECT_EQ(Find("Paint").value.enumeration().name, "Colours");
  EXPECT_EQ(Find("Self").value.object().Name(), "Sample");
  EXPECT_EQ(Find("FillAndFail").value.kind, ValueKind::Void);
  EXPECT_EQ(Find("Name", InvokeKind::Let).value.kind, ValueKind::String);
  EXPECT_TRUE(Find("Name", InvokeKind::Let).parameters.empty());
}

TEST(Declare, TellsTheParametersOfItsMembers) {
  const auto& fill = Find("Fill").parameters;
  EXPECT_EQ(fill[0].name, "strFiles");
  EXPECT_TRUE(fill[0].isInOut);
  EXPECT_EQ(fill[1].type.kind, ValueKind::Long);
  const auto& add = Find("Add").parameters;
  EXPECT_FALSE(add[0].isOptional);
  EXPECT_TRUE(add[1].isOptional);
  EXPECT_FALSE(Find("NameOf").parameters[0].isInOut) << "an object goes in only";
  EXPECT_EQ(Find("Name").help, "Its name");
}

TEST(Declare, TheEnumeratorIsHiddenUnderItsReservedId) {
  EXPECT_EQ(Sample::Describe().Find("NewEnum"), kNewEnumMember);
  EXPECT_TRUE(Sample::Describe().Members().front().isRestricted);
}

TEST(Declare, ConvertsArgumentsAsVisualBasicDoes) {
  const auto sample = Make<Sample>();
  sample->Let("Number", {Variant::FromDouble(2.5)});
  EXPECT_EQ(sample->Number(), 2);
  sample->Let("Name", {Variant::FromBoolean(true)});
  EXPECT_EQ(sample->Name(), "True");
  EXPECT_EQ(ErrorOf([&] { sample->Let("Number", {Variant::FromText("x")}); }).Number(), 13);
  EXPECT_EQ(ErrorOf([&] { sample->Let("Number", {Variant::FromDouble(1e10)}); }).Number(), 6);
}

TEST(Declare, EnumerationsTravelAsNumbers) {
  const auto sample = Make<Sample>();
  sample->Let("Paint", {Variant::FromInteger(7)});
  EXPECT_EQ(sample->Paint(), Colour::Blue);
  EXPECT_EQ(ToLong(sample->Get("Paint")), 7);
}

TEST(Declare, InOutArgumentsReturnToTheCallersVariables) {
  const auto sample = Make<Sample>();
  Variant files = Variant::FromText("a");
  Variant count = Variant::FromText("41");
  EXPECT_TRUE(ToBoolean(sample->Call("Fill", {Variant::ByReference(&files), Variant::ByReference(&count)})));
  EXPECT_EQ(ToText(files), "a!");
  EXPECT_EQ(ToLong(count), 42);
  EXPECT_EQ(count.Type(), VariantType::Long);
}

TEST(Declare, InOutArgumentsMayBePlainValues) {
  const auto sample = Make<Sample>();
  EXPECT_TRUE(ToBoolean(sample->Call("Fill", {Variant::FromText("a"), Variant::FromLong(1)})));
}

TEST(Declare, AFailedCallLeavesTheCallersVariablesAlone) {
  const auto sample = Make<Sample>();
  Variant files = Variant::FromText("a");
  EXPECT_EQ(ErrorOf([&] { sample->Call("FillAndFail", {Variant::ByReference(&files)}); }).Number(), 45);
  EXPECT_EQ(ToText(files), "a");
}

TEST(Declare, ObjectsGoInByTheirClass) {
  const auto sample = Make<Sample>();
  EXPECT_EQ(ToText(sample->Call("NameOf", {Variant::FromObject(sample)})), "sample");
  EXPECT_EQ(ErrorOf([&] { sample->Call("NameOf", {Variant::FromObject(Make<Other>())}); }).Number(), 13);
  EXPECT_EQ(ErrorOf([&] { sample->Call("NameOf", {Variant::FromLong(1)}); }).Number(), 13);
}

TEST(Declare, NothingGoesInOnlyWhereItIsWelcome) {
  const auto sample = Make<Sample>();
  EXPECT_TRUE(ToBoolean(sample->Call("IsNothing", {Variant::FromObject(nullptr)})));
  EXPECT_EQ(ErrorOf([&] { sample->Call("NameOf", {Variant::FromObject(nullptr)}); }).Number(), 91);
}

TEST(Declare, OptionalArgumentsMayBeLeftOut) {
  const auto sample = Make<Sample>();
  EXPECT_EQ(ToLong(sample->Call("Add", {Variant::FromLong(1), Variant::FromLong(2)})), 3);
  EXPECT_EQ(ToLong(sample->Call("Add", {Variant::FromLong(1)})), 101);
  EXPECT_EQ(ToLong(sample->Call("Add", {Variant::FromLong(1), Variant::Missing()})), 101);
  EXPECT_EQ(ErrorOf([&] { sample->Call("Add"); }).Number(), 449);
}

TEST(Declare, VariantsPassUnchangedAndWithoutReference) {
  const auto sample = Make<Sample>();
  Variant target = Variant::Null();
  EXPECT_TRUE(sample->Call("Anything", {Variant::ByReference(&target)}).IsNull());
  EXPECT_TRUE(sample->Call("Anything", {Variant()}).IsEmpty());
}

TEST(Declare, PropertiesMayHaveArguments) {
  const auto sample = Make<Sample>();
  sample->Let("Cell", {Variant::FromLong(2), Variant::FromLong(5)});
  EXPECT_EQ(ToLong(sample->Get("Cell", {Variant::FromLong(2)})), 5);
  EXPECT_EQ(ErrorOf([&] { sample->Let("Cell", {Variant::FromLong(2)}); }).Number(), 449);
}

TEST(Declare, SurplusArgumentsGoToTheDefaultMemberOfTheResult) {
  const auto sample = Make<Sample>();
  EXPECT_EQ(ToText(sample->Get("Self", {Variant::FromLong(3)})), "item 3");
  EXPECT_EQ(ToText(sample->Get("Fresh", {Variant::FromText("key")})), "item key");
}

TEST(Declare, SurplusArgumentsNeedAnObjectToGoTo) {
  const auto sample = Make<Sample>();
  EXPECT_EQ(ErrorOf([&] { sample->Get("Nothing", {Variant::FromLong(3)}); }).Number(), 91);
  EXPECT_EQ(ErrorOf([&] { sample->Get("Name", {Variant::FromLong(3)}); }).Number(), 450);
  EXPECT_EQ(ErrorOf([&] {
              sample->Get("Self", {Variant::FromLong(3), Variant::FromLong(4)});
            }).Number(),
            450);
  EXPECT_EQ(ErrorOf([&] {
              sample->Let("Name", {Variant::FromLong(3), Variant::FromLong(4)});
            }).Number(),
            450);
}

TEST(Declare, NothingIsAResultToo) {
  const auto sample = Make<Sample>();
  const Variant nothing = sample->Get("Nothing");
  EXPECT_TRUE(nothing.IsObject());
  EXPECT_EQ(nothing.AsObject(), nullptr);
}

}  // namespace
}  // namespace hearthmake::automation
