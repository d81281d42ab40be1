#include "idl/IdlText.hpp"

#include <gtest/gtest.h>

#include <string>

#include "automation/Declare.hpp"
#include "build/Build.hpp"
#include "build/Builds.hpp"
#include "build/IReportItem.hpp"
#include "project/Enumerations.hpp"
#include "project/Project.hpp"
#include "scripting/Scripts.hpp"

namespace hearthmake::idl {
namespace {

using automation::Declare;
using automation::Object;
using automation::Ref;

class Owner;

class Shelf final : public Object {
 public:
  static const automation::Interface& Describe();
  const automation::Interface& Declaration() const override { return Describe(); }

  std::string Label() const { return {}; }
  void SetLabel(const std::string& /*value*/) {}
  void SetOwner(Object* /*value*/) {}
  std::int16_t Cell(const automation::Variant& /*vIndex*/, std::int32_t& /*lngFound*/) { return 0; }
  void Note(const std::string& /*strText*/, std::optional<std::int32_t> /*lngLine*/,
            std::optional<automation::Variant>& /*vAnswer*/) {}
  automation::Date Filled() const { return {}; }
};

const automation::Interface& Shelf::Describe() {
  static const automation::Interface kInterface =
      Declare("Shelf", "_Shelf", "{FFFFFFFF-0000-0000-0000-000000000001}")
          .get<&Shelf::Label>("Label", {}, "What \"stands\" on it")
          .let<&Shelf::SetLabel>("Label")
          .set<&Shelf::SetOwner>("Owner")
          .byDefault()
          .get<&Shelf::Cell>("Cell", {"vIndex", "lngFound"})
          .method<&Shelf::Note>("Note", {"strText", "lngLine", "vAnswer"})
          .get<&Shelf::Filled>("Filled")
          .build();
  return kInterface;
}

bool Contains(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

TEST(IdlText, WritesADualInterfaceInItsOrder) {
  EXPECT_EQ(InterfaceText(Shelf::Describe()),
            "  [odl, uuid(FFFFFFFF-0000-0000-0000-000000000001), hidden, dual, nonextensible, "
            "oleautomation]\n"
            "  interface _Shelf : IDispatch {\n"
            "    [id(1), propget, helpstring(\"What \\\"stands\\\" on it\")]\n"
            "    HRESULT Label([out, retval] BSTR* result);\n"
            "    [id(1), propput]\n"
            "    HRESULT Label([in] BSTR value);\n"
            "    [id(2), propputref]\n"
            "    HRESULT Owner([in] IDispatch* value);\n"
            "    [id(0), propget]\n"
            "    HRESULT Cell([in] VARIANT vIndex, [in, out] long* lngFound, [out, retval] short* result);\n"
            "    [id(3)]\n"
            "    HRESULT Note([in] BSTR strText, [in, optional, defaultvalue(0)] long lngLine, "
            "[in, out, optional] VARIANT* vAnswer);\n"
            "    [id(4), propget]\n"
            "    HRESULT Filled([out, retval] DATE* result);\n"
            "  };\n\n");
}

TEST(IdlText, WritesAnEnumerationWithItsValues) {
  EXPECT_EQ(EnumerationText(DescribeEnumeration(CompilationTypes{})),
            "  typedef [uuid(FD1A6810-CC3E-47CF-B2E3-89B733CDA7E5)] enum CompilationTypes {\n"
            "    NativeCode = 0,\n"
            "    PCode = -1\n"
            "  } CompilationTypes;\n\n");
}

TEST(IdlText, WritesTheEnumeratorOfACollectionAsUnknownAndRestricted) {
  EXPECT_TRUE(Contains(InterfaceText(Builds::Describe()),
                       "    [id(-4), propget, restricted]\n"
                       "    HRESULT NewEnum([out, retval] IUnknown** result);\n"));
}

TEST(IdlText, WritesTheElevenEventsInTheirOrder) {
  const std::string id = BuildEvents::Describe().InterfaceId();
  EXPECT_EQ(
      EventsText(BuildEvents::Describe()),
      "  [uuid(" + id.substr(1, 36) +
          "), hidden]\n"
          "  dispinterface __Build {\n  properties:\n  methods:\n"
          "    [id(1)]\n    void WillCompile([in, out] _Project** objProject, [in, out] VARIANT_BOOL* "
          "bCancel);\n"
          "    [id(2)]\n    void BuildFaild([in, out] _Project** objProject, [in, out] BSTR* strMessage, "
          "[in, out] VARIANT_BOOL* bCompileError);\n"
          "    [id(3)]\n    void BuildCancled([in, out] _Project** objProject);\n"
          "    [id(4)]\n    void GettingLatestVersion([in, out] _SSProject** objSSProject, "
          "[in, out] VARIANT_BOOL* bCancel);\n"
          "    [id(5)]\n    void MTSEvent([in, out] BSTR* strInfo, [in, out] VARIANT_BOOL* Cancel);\n"
          "    [id(6)]\n    void ProjectAdded([in, out] _Project** NewProject);\n"
          "    [id(7)]\n    void BuildComplete();\n"
          "    [id(8)]\n    void Error([in, out] VARIANT* strMessage);\n"
          "    [id(9)]\n    void ProjectCompiled([in, out] _Project** objProject);\n"
          "    [id(10)]\n    void BuildStart([in, out] VARIANT_BOOL* bResume);\n"
          "    [id(11)]\n    void ScriptNotify([in] BSTR strMessage, [in, out] VARIANT* Cancel, "
          "[in] long Progress);\n"
          "  };\n\n");
}

TEST(IdlText, WritesEachClassWithItsInterfaces) {
  const auto text = [](const std::string& name) {
    for (const PublicClass& entry : PublicClasses()) {
      if (entry.describe().Name() == name) return CoclassText(entry);
    }
    return "no class " + name;
  };
  EXPECT_EQ(text("Build"),
            "  [uuid(9E03676D-1E0D-45EA-BCBF-F50B645AD350)]\n"
            "  coclass Build {\n"
            "    [default] interface _Build;\n"
            "    [default, source] dispinterface __Build;\n"
            "  };\n\n");
  EXPECT_EQ(text("Project"),
            "  [uuid(57148EA4-1BBC-4FE6-B38B-D4849DA5B470)]\n"
            "  coclass Project {\n"
            "    [default] interface _Project;\n"
            "    interface _IReportItem;\n"
            "  };\n\n");
  EXPECT_TRUE(Contains(text("Projects"), ", noncreatable]\n"));
}

TEST(IdlText, GivesAClassThatCantBeCreatedTheIdAfterItsInterface) {
  EXPECT_EQ(CoclassId(Shelf::Describe()), "{00000000-0000-0000-0000-000000000001}");
  EXPECT_EQ(CoclassId(Build::Describe()), Build::Describe().ClassId());
}

TEST(IdlText, LetsOptionalArgumentsOfScriptsBeLeftOut) {
  EXPECT_TRUE(Contains(InterfaceText(Scripts::Describe()),
                       "HRESULT Notify([in] BSTR strMessage, [in, out, optional] VARIANT* Cancel, "
                       "[in, optional, defaultvalue(0)] long Progress);\n"));
}

TEST(IdlText, HoldsEveryClassAndEnumerationOfTheLibrary) {
  const std::string text = LibraryText();
  EXPECT_TRUE(
      Contains(text, "version(1.0), helpstring(\"Hearthmake Business objects\")]\nlibrary Hearthmake\n"));
  for (const PublicClass& entry : PublicClasses()) {
    EXPECT_TRUE(Contains(text, InterfaceText(entry.describe()))) << entry.describe().Name();
    EXPECT_TRUE(Contains(text, CoclassText(entry))) << entry.describe().Name();
  }
  for (const automation::Enumeration* enumeration : PublicEnumerations()) {
    EXPECT_TRUE(Contains(text, EnumerationText(*enumeration))) << enumeration->name;
  }
  EXPECT_TRUE(Contains(text, EventsText(BuildEvents::Describe())));
}

}  // namespace
}  // namespace hearthmake::idl
