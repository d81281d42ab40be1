#include "project/Reference.hpp"

#include <gtest/gtest.h>

#include "support/ProjectBench.hpp"

namespace hearthmake {
namespace {

automation::Ref<Reference> External(const std::string& path, ReferenceTypes type) {
  auto reference = automation::Make<Reference>();
  reference->MarkExternal();
  reference->SetGUID("{G}");
  reference->SetBinaryVersion("2.0");
  reference->SetPath(path);
  reference->SetReferenceType(type);
  return reference;
}

TEST(Reference, IsEmptyAtCreation) {
  const auto reference = automation::Make<Reference>();
  EXPECT_EQ(reference->Id(), "0");
  EXPECT_EQ(reference->GUID(), "");
  EXPECT_EQ(reference->BinaryVersion(), "");
  EXPECT_EQ(reference->Description(), "");
  EXPECT_EQ(reference->Path(), "");
  EXPECT_EQ(reference->ReferencedProject(), 0);
  EXPECT_FALSE(reference->IsExternal());
  EXPECT_EQ(reference->ReferenceType(), ReferenceTypes::RT_UNDEFINED);
  EXPECT_EQ(reference->TypeCode(), "");
}

TEST(Reference, CutsGuidAt50VersionAt10PathAndDescriptionAt255) {
  const auto reference = automation::Make<Reference>();
  reference->SetGUID(std::string(60, 'g'));
  reference->SetBinaryVersion(std::string(60, 'v'));
  reference->SetPath(std::string(300, 'p'));
  reference->SetDescription(std::string(300, 'd'));
  EXPECT_EQ(reference->GUID(), std::string(50, 'g'));
  EXPECT_EQ(reference->BinaryVersion(), std::string(10, 'v'));
  EXPECT_EQ(reference->Path(), std::string(255, 'p'));
  EXPECT_EQ(reference->Description(), std::string(255, 'd'));
}

TEST(Reference, ReadsItsTextsWithoutOuterBlanks) {
  const auto reference = automation::Make<Reference>();
  reference->SetGUID(" {G} ");
  reference->SetBinaryVersion(" 1.0 ");
  reference->SetPath("  C:\\My Files\\x.dll ");
  reference->SetDescription(" A B ");
  EXPECT_EQ(reference->GUID(), "{G}");
  EXPECT_EQ(reference->BinaryVersion(), "1.0");
  EXPECT_EQ(reference->Path(), "C:\\My Files\\x.dll");
  EXPECT_EQ(reference->Description(), "A B");
}

TEST(Reference, ReadsTheRegisteredNameForAnEmptyDescriptionWithoutStoringIt) {
  const support::ProjectBench bench;
  bench.SetClassesValue("Typelib\\{G}\\2.0", "Registered library");
  const auto reference = External("C:\\x.dll", ReferenceTypes::RT_REFERENCE);
  EXPECT_EQ(reference->Description(), "Registered library");
  bench.SetClassesValue("Typelib\\{G}\\2.0", "Another name");
  EXPECT_EQ(reference->Description(), "Another name");
  EXPECT_EQ(reference->ReferenceString(), "Reference=*\\G{G}#2.0#0#C:\\x.dll#Another name");
  reference->SetDescription("Own");
  EXPECT_EQ(reference->Description(), "Own");
}

TEST(Reference, HasNoDescriptionWhenTheLibraryIsNotRegistered) {
  const support::Workbench bench;
  EXPECT_EQ(External("C:\\x.dll", ReferenceTypes::RT_REFERENCE)->Description(), "");
}

TEST(Reference, DoesNotAskTheRegistryAboutAnInternalOne) {
  const support::ProjectBench bench;
  bench.SetClassesValue("Typelib\\{G}\\2.0", "Registered library");
  const auto reference = automation::Make<Reference>();
  reference->SetGUID("{G}");
  reference->SetBinaryVersion("2.0");
  EXPECT_EQ(reference->Description(), "");
}

TEST(Reference, WritesALibraryWithTypeMarkAndNeutralLocale) {
  const support::Workbench bench;
  const auto reference = External("C:\\x\\y.dll", ReferenceTypes::RT_REFERENCE);
  reference->SetDescription("My Lib");
  EXPECT_EQ(reference->ReferenceString(), "Reference=*\\G{G}#2.0#0#C:\\x\\y.dll#My Lib");
}

TEST(Reference, WritesAControlWithoutBlankBehindTheSemicolon) {
  EXPECT_EQ(External("GRID.OCX", ReferenceTypes::RT_OBJECT)->ReferenceString(), "Object={G}#2.0#0;GRID.OCX");
}

TEST(Reference, WithoutGuidGivesItsRowBack) {
  const auto reference = automation::Make<Reference>();
  reference->MarkExternal();
  reference->SetPath("*\\A..\\Lib\\Lib.vbp");
  reference->SetReferenceType(ReferenceTypes::RT_REFERENCE);
  EXPECT_EQ(reference->ReferenceString(), "Reference=*\\A..\\Lib\\Lib.vbp");
  reference->SetReferenceType(ReferenceTypes::RT_OBJECT);
  EXPECT_EQ(reference->ReferenceString(), "Object=*\\A..\\Lib\\Lib.vbp");
}

TEST(Reference, OfUndefinedTypeIsAControlByItsExtension) {
  const auto isControl = [](const char* path) {
    return External(path, ReferenceTypes::RT_UNDEFINED)->IsUserControl();
  };
  EXPECT_TRUE(isControl("C:\\x\\grid.OCX"));
  EXPECT_TRUE(isControl("grid.oca"));
  EXPECT_FALSE(isControl("grid.ocx2"));
  EXPECT_FALSE(isControl("grid.dll"));
  EXPECT_FALSE(isControl("C:\\ocx\\x"));
  EXPECT_FALSE(isControl(""));
}

TEST(Reference, OfADefinedTypeIsAControlByThatTypeAlone) {
  EXPECT_TRUE(External("x.dll", ReferenceTypes::RT_OBJECT)->IsUserControl());
  EXPECT_FALSE(External("x.ocx", ReferenceTypes::RT_REFERENCE)->IsUserControl());
}

TEST(Reference, KeepsOneLetterForItsType) {
  const auto reference = automation::Make<Reference>();
  reference->SetReferenceType(ReferenceTypes::RT_OBJECT);
  EXPECT_EQ(reference->TypeCode(), "O");
  EXPECT_EQ(reference->ReferenceType(), ReferenceTypes::RT_OBJECT);
  reference->SetReferenceType(ReferenceTypes::RT_REFERENCE);
  EXPECT_EQ(reference->TypeCode(), "R");
  EXPECT_EQ(reference->ReferenceType(), ReferenceTypes::RT_REFERENCE);
  reference->SetReferenceType(static_cast<ReferenceTypes>(7));
  EXPECT_EQ(reference->TypeCode(), "R") << "an unknown type changes nothing";
  reference->SetReferenceType(ReferenceTypes::RT_UNDEFINED);
  EXPECT_EQ(reference->TypeCode(), "U");
  EXPECT_EQ(reference->ReferenceType(), ReferenceTypes::RT_UNDEFINED);
}

TEST(Reference, ToAProjectIsNotExternal) {
  const auto reference = automation::Make<Reference>();
  reference->MarkExternal();
  reference->SetReferencedProject(12);
  EXPECT_EQ(reference->ReferencedProject(), 12);
  EXPECT_FALSE(reference->IsExternal());
}

TEST(Reference, LoadsAnExternalOneFromItsRow) {
  const support::Workbench bench;
  modDatabase::GetDatabase()->Execute(
      "INSERT INTO ExternalReferences(TypeLibGUID, BinaryVersion, Description, Path, ProjectID, Type) "
      "VALUES ('{G}', '1.A', 'Desc', 'x.ocx', 1, 'O')");
  const auto reference = automation::Make<Reference>();
  reference->LoadExternal(*modDatabase::OpenDynaset("SELECT * FROM ExternalReferences"));
  EXPECT_EQ(reference->GUID(), "{G}");
  EXPECT_EQ(reference->BinaryVersion(), "1.A");
  EXPECT_EQ(reference->Description(), "Desc");
  EXPECT_EQ(reference->Path(), "x.ocx");
  EXPECT_EQ(reference->ReferenceType(), ReferenceTypes::RT_OBJECT);
  EXPECT_TRUE(reference->IsExternal());
}

TEST(Reference, LoadsARowOfNullsAsAnEmptyOne) {
  const support::Workbench bench;
  modDatabase::GetDatabase()->Execute("INSERT INTO ExternalReferences(ProjectID) VALUES (1)");
  const auto reference = automation::Make<Reference>();
  reference->LoadExternal(*modDatabase::OpenDynaset("SELECT * FROM ExternalReferences"));
  EXPECT_EQ(reference->GUID(), "");
  EXPECT_EQ(reference->ReferenceType(), ReferenceTypes::RT_UNDEFINED);
  EXPECT_TRUE(reference->IsExternal());
}

}  // namespace
}  // namespace hearthmake
