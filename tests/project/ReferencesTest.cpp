#include "project/References.hpp"

#include <gtest/gtest.h>

#include "build/Projects.hpp"
#include "support/ProjectBench.hpp"

namespace hearthmake {
namespace {

using automation::BuildErrors;
using automation::Variant;
using support::EnvironmentOverride;
using support::Failure;
using support::FailureOf;
using support::kNoFailure;

constexpr const char* kControl = "Object={G}#2.0#0; GRID.OCX";
constexpr const char* kLibrary = "Reference=*\\G{G}#5.0#0#C:\\x\\y.dll#My Lib";
constexpr const char* kOtherLibrary = "Reference=*\\G{H}#5.0#0#C:\\x\\z.dll#Other";

class ReferencesTest : public testing::Test {
 protected:
  Project& Dll(const std::string& name, const std::string& moreRows = {}) {
    return bench.AddDll("C:\\src\\" + name + ".vbp", name, moreRows);
  }
  static automation::Ref<Reference> AddRow(Project& project, const std::string& row) {
    return project.ReferenceList().AddExternalReference(row, "");
  }
  static std::vector<std::string> Texts(const Project& project) {
    return support::ProjectBench::References(project);
  }
  using List = std::vector<std::string>;

  support::ProjectBench bench;
};

// --- the list

TEST_F(ReferencesTest, EnumeratesInInsertionOrder) {
  Project& a = Dll("A");
  AddRow(a, kLibrary);
  AddRow(a, kControl);
  const auto walk = a.ReferenceList().NewEnum();
  Variant item;
  List paths;
  while (walk->Next(item)) paths.push_back(automation::ToText(automation::ToObject(item)->Get("Path")));
  EXPECT_EQ(paths, (List{"C:\\x\\y.dll", "GRID.OCX"}));
}

TEST_F(ReferencesTest, GivesItemsByPositionAndByKey) {
  Project& a = Dll("A");
  const auto first = AddRow(a, kLibrary);
  const auto second = AddRow(a, kControl);
  References& list = a.ReferenceList();
  EXPECT_EQ(automation::ToLong(list.Count()), 2);
  EXPECT_EQ(list.Item(Variant::FromLong(1)).Get(), first.Get());
  EXPECT_EQ(list.Item(Variant::FromText(second->Id())).Get(), second.Get());
  EXPECT_EQ(first->Id(), "1");
  EXPECT_EQ(second->Id(), "2");
  EXPECT_EQ(FailureOf([&] { list.Item(Variant::FromLong(3)); }).number, 9);
  EXPECT_EQ(FailureOf([&] { list.Item(Variant::FromLong(0)); }).source, "References.item");
  EXPECT_EQ(FailureOf([&] { list.Item(Variant::FromText("7")); }).number, 5);
}

TEST_F(ReferencesTest, CountsInAVariantOfALong) {
  EXPECT_EQ(Dll("A").ReferenceList().Count().Type(), automation::VariantType::Long);
}

// --- rows of project files

TEST_F(ReferencesTest, TakesAControlRowApart) {
  Project& a = Dll("A");
  const auto reference = AddRow(a, kControl);
  EXPECT_EQ(reference->GUID(), "{G}");
  EXPECT_EQ(reference->BinaryVersion(), "2.0");
  EXPECT_EQ(reference->Path(), "GRID.OCX");
  EXPECT_EQ(reference->ReferenceType(), ReferenceTypes::RT_OBJECT);
  EXPECT_EQ(reference->Description(), "");
  EXPECT_TRUE(reference->IsExternal());
  EXPECT_EQ(reference->ReferenceString(), "Object={G}#2.0#0;GRID.OCX");
  EXPECT_TRUE(a.ReferenceList().IsDirty());
}

TEST_F(ReferencesTest, ReadsAControlRowWithAndWithoutTheBlankAlike) {
  Project& a = Dll("A");
  EXPECT_EQ(AddRow(a, "Object={G}#2.0#0;GRID.OCX")->ReferenceString(), "Object={G}#2.0#0;GRID.OCX");
  EXPECT_EQ(AddRow(a, "Object={G}#2.0#0;   MY GRID.OCX  ")->Path(), "MY GRID.OCX");
  EXPECT_EQ(AddRow(a, "Object={G}#2.0#GRID.OCX")->Path(), "GRID.OCX") << "no semicolon: the whole field";
  EXPECT_EQ(AddRow(a, "Object={G}#2.0#0;a;b.ocx")->Path(), "b.ocx") << "behind the last semicolon";
}

TEST_F(ReferencesTest, TakesALibraryRowApartAndWritesItBackUnchanged) {
  Project& a = Dll("A");
  const auto reference = AddRow(a, kLibrary);
  EXPECT_EQ(reference->GUID(), "{G}");
  EXPECT_EQ(reference->BinaryVersion(), "5.0");
  EXPECT_EQ(reference->Path(), "C:\\x\\y.dll");
  EXPECT_EQ(reference->Description(), "My Lib");
  EXPECT_EQ(reference->ReferenceType(), ReferenceTypes::RT_REFERENCE);
  EXPECT_EQ(reference->ReferenceString(), kLibrary);
}

TEST_F(ReferencesTest, RecognisesALibraryRowInCapitals) {
  Project& a = Dll("A");
  const auto reference = AddRow(a, "REFERENCE=*\\G{G}#5.0#0#C:\\x\\y.dll#My Lib");
  EXPECT_EQ(reference->ReferenceType(), ReferenceTypes::RT_REFERENCE);
  EXPECT_EQ(reference->Path(), "C:\\x\\y.dll");
}

TEST_F(ReferencesTest, RefusesARowOfTwoFields) {
  Project& a = Dll("A");
  EXPECT_EQ(FailureOf([&] { AddRow(a, "Object={G}#1.0"); }),
            Failure(BuildErrors::be_InvalidReferenceString, "References.AddExternalReference",
                    "Invalid Reference string"));
  EXPECT_EQ(Texts(a), List());
  EXPECT_FALSE(a.ReferenceList().IsDirty());
}

TEST_F(ReferencesTest, AddsNothingForARowWithoutBrace) {
  Project& a = Dll("A");
  EXPECT_EQ(AddRow(a, "Foo#1.0#0").Get(), nullptr);
  EXPECT_EQ(Texts(a), List());
  EXPECT_FALSE(a.ReferenceList().IsDirty());
}

TEST_F(ReferencesTest, RefusesALibraryRowWithoutPath) {
  Project& a = Dll("A");
  EXPECT_EQ(FailureOf([&] { AddRow(a, "Reference=*\\G{G}#1.0#0"); }).number, 9);
  EXPECT_EQ(Texts(a), List());
}

TEST_F(ReferencesTest, KeepsTextBehindTheBraceInTheGuid) {
  Project& a = Dll("A");
  EXPECT_EQ(AddRow(a, "Reference=*\\G{G}tail#5.0#0#p#d")->GUID(), "{G}tail");
  // The length taken is the position of the "}": with the brace in front, no more than that.
  EXPECT_EQ(AddRow(a, "{G}tail#5.0#p")->GUID(), "{G}");
  EXPECT_EQ(AddRow(a, "x{G}tail#5.0#p")->GUID(), "{G}t");
}

TEST_F(ReferencesTest, TakesNoGuidFromABraceThatIsNotClosed) {
  Project& a = Dll("A");
  const auto reference = AddRow(a, "Reference=*\\G{G#5.0#0#C:\\p.dll#d");
  EXPECT_EQ(reference->GUID(), "");
  EXPECT_EQ(reference->ReferenceString(), "Reference=*\\G#5.0#0#C:\\p.dll#d");
}

TEST_F(ReferencesTest, IgnoresFieldsBehindTheDescription) {
  Project& a = Dll("A");
  EXPECT_EQ(AddRow(a, "Reference=*\\G{G}#5.0#0#p.dll#C# Library#x")->Description(), "C");
  EXPECT_EQ(AddRow(a, "Reference=*\\G{G}#5.0#0#p.dll")->Description(), "") << "and needs none";
}

TEST_F(ReferencesTest, WritesTheLocaleAsNeutral) {
  Project& a = Dll("A");
  EXPECT_EQ(AddRow(a, "Reference=*\\G{G}#5.0#409#p.dll#d")->ReferenceString(),
            "Reference=*\\G{G}#5.0#0#p.dll#d");
}

TEST_F(ReferencesTest, CutsTheFieldsOfARowAtTheirWidths) {
  Project& a = Dll("A");
  const auto reference = AddRow(a, "Reference=*\\G{" + std::string(60, 'g') + "}#" + std::string(20, 'v') +
                                       "#0#" + std::string(300, 'p') + "#" + std::string(300, 'd'));
  EXPECT_EQ(reference->GUID(), "{" + std::string(49, 'g'));
  EXPECT_EQ(reference->BinaryVersion(), std::string(10, 'v'));
  EXPECT_EQ(reference->Path(), std::string(255, 'p'));
  EXPECT_EQ(reference->Description(), std::string(255, 'd'));
}

TEST_F(ReferencesTest, TakesTheSameLibraryTwice) {
  Project& a = Dll("A");
  AddRow(a, kLibrary);
  AddRow(a, kLibrary);
  EXPECT_EQ(Texts(a), (List{kLibrary, kLibrary}));
}

// --- library files

TEST_F(ReferencesTest, AddsALibraryFromItsFile) {
  Project& a = Dll("A");
  bench.MakeBinary("C:\\win\\some.dll", 0xAB, 10, 31, "Some library");
  const auto reference = a.ReferenceList().AddExternalReference("", "C:\\win\\some.dll");
  EXPECT_EQ(reference->GUID(), support::ProjectBench::LibraryId(0xAB));
  EXPECT_EQ(reference->BinaryVersion(), "A.1F");
  EXPECT_EQ(reference->Description(), "Some library");
  EXPECT_EQ(reference->Path(), "C:\\win\\some.dll");
  EXPECT_EQ(reference->ReferenceType(), ReferenceTypes::RT_REFERENCE);
  EXPECT_TRUE(reference->IsExternal());
  EXPECT_TRUE(a.ReferenceList().IsDirty());
}

TEST_F(ReferencesTest, TakesALibraryForAControlWhenItsRegisteredFlagsSaySo) {
  Project& a = Dll("A");
  bench.MakeBinary("C:\\win\\grid.dll", 0xAB, 1, 2);
  const std::string key = "Typelib\\" + support::ProjectBench::LibraryId(0xAB) + "\\1.2\\FLAGS";
  const auto typeWith = [&](const char* flags) {
    bench.SetClassesValue(key, flags);
    return a.ReferenceList().AddExternalReference("", "C:\\win\\grid.dll")->ReferenceType();
  };
  EXPECT_EQ(typeWith("2"), ReferenceTypes::RT_OBJECT);
  EXPECT_EQ(typeWith("6"), ReferenceTypes::RT_OBJECT);
  EXPECT_EQ(typeWith("4"), ReferenceTypes::RT_REFERENCE);
  EXPECT_EQ(typeWith("junk"), ReferenceTypes::RT_REFERENCE);
  EXPECT_EQ(typeWith(""), ReferenceTypes::RT_REFERENCE);
  EXPECT_EQ(typeWith("1e300"), ReferenceTypes::RT_REFERENCE) << "no number that flags can have";
}

TEST_F(ReferencesTest, ExpandsALeadingVariableOfTheEnvironment) {
  const EnvironmentOverride folder("HearthmakeTestFolder", "C:\\win");
  Project& a = Dll("A");
  bench.MakeBinary("C:\\win\\some.dll", 0xAB);
  const auto reference = a.ReferenceList().AddExternalReference("", "%HearthmakeTestFolder%\\some.dll");
  EXPECT_EQ(reference->Path(), "C:\\win\\some.dll");
}

TEST_F(ReferencesTest, TakesTheVariablesNameUpToTheLastPercentSign) {
  const EnvironmentOverride part("HearthmakeTestPart", "C:");
  Project& a = Dll("A");
  bench.MakeBinary("C:\\win\\some.dll", 0xAB);
  // One (unset) variable with a long name, of which nothing is left.
  const auto reference =
      a.ReferenceList().AddExternalReference("", "%HearthmakeTestPart%\\%HearthmakeTestPart%\\win\\some.dll");
  EXPECT_EQ(reference->Path(), "\\win\\some.dll");
}

TEST_F(ReferencesTest, TakesAnUnsetVariableForEmptyText) {
  const EnvironmentOverride none("HearthmakeTestNone", std::nullopt);
  Project& a = Dll("A");
  bench.MakeBinary("C:\\win\\some.dll", 0xAB);
  EXPECT_EQ(a.ReferenceList().AddExternalReference("", "%HearthmakeTestNone%C:\\win\\some.dll")->Path(),
            "C:\\win\\some.dll");
}

TEST_F(ReferencesTest, ExpandsNoVariableInTheMiddle) {
  const EnvironmentOverride folder("HearthmakeTestFolder", "win");
  Project& a = Dll("A");
  bench.MakeBinary("C:\\%HearthmakeTestFolder%\\some.dll", 0xAB);
  EXPECT_EQ(a.ReferenceList().AddExternalReference("", "C:\\%HearthmakeTestFolder%\\some.dll")->Path(),
            "C:\\%HearthmakeTestFolder%\\some.dll");
}

TEST_F(ReferencesTest, PassesOnWhatTheValidationSays) {
  Project& a = Dll("A");
  EXPECT_EQ(FailureOf([&] { a.ReferenceList().AddExternalReference("", "C:\\none.dll"); }),
            Failure(45, "References.Validate", "This is not a valid typelibrary!"));
  EXPECT_EQ(FailureOf([&] { a.ReferenceList().AddExternalReference("", "%"); }).source,
            "References.Validate");
  EXPECT_EQ(FailureOf([&] { a.ReferenceList().AddExternalReference("", ""); }).source, "References.Validate");
  EXPECT_EQ(Texts(a), List());
}

// --- projects

TEST_F(ReferencesTest, AddsAProjectOfTheBuild) {
  Project& a = Dll("A");
  Project& b = Dll("B");
  a.ReferenceList().AddInternalReference(b);
  const auto reference = a.ReferenceList().Item(Variant::FromLong(1));
  EXPECT_EQ(reference->ReferencedProject(), b.Id());
  EXPECT_FALSE(reference->IsExternal());
  EXPECT_EQ(reference->ReferenceType(), ReferenceTypes::RT_UNDEFINED);
  EXPECT_EQ(reference->TypeCode(), "U");
  EXPECT_TRUE(a.ReferenceList().IsDirty());
}

TEST_F(ReferencesTest, RefusesAProjectThatIsNotActiveX) {
  Project& a = Dll("A");
  Project& program = bench.Add("C:\\src\\P.vbp", "Type=Exe\nName=\"P\"\n");
  EXPECT_EQ(FailureOf([&] { a.ReferenceList().AddInternalReference(program); }),
            Failure(45, "ReferencedProjects.AddInternalReference", "Project is not an ActiveX project"));
  EXPECT_EQ(FailureOf([&] { program.ReferenceList().AddInternalReference(program); }).text,
            "Project is not an ActiveX project")
      << "checked first";
}

TEST_F(ReferencesTest, RefusesTheProjectItself) {
  Project& a = Dll("A");
  EXPECT_EQ(FailureOf([&] { a.ReferenceList().AddInternalReference(a); }),
            Failure(BuildErrors::beInvalidReference, "clReference.AddInternalReference",
                    "Project can't reference it self"));
}

TEST_F(ReferencesTest, RefusesACrossReferenceAndNamesTheOtherProjectFirst) {
  Project& a = Dll("A");
  Project& b = Dll("B");
  b.ReferenceList().AddInternalReference(a);
  EXPECT_EQ(FailureOf([&] { a.ReferenceList().AddInternalReference(b); }),
            Failure(BuildErrors::beInvalidReference, "clReference.AddInternalReference",
                    "Cross reference: B references A"));
  EXPECT_FALSE(a.ReferenceList().IsDirty());
}

TEST_F(ReferencesTest, RefusesAProjectThatIsReferencedAlready) {
  Project& a = Dll("A");
  Project& b = Dll("B");
  a.ReferenceList().AddInternalReference(b);
  EXPECT_EQ(FailureOf([&] { a.ReferenceList().AddInternalReference(b); }),
            Failure(45, "References.AddInternalReference", "Reference already exists"));
  EXPECT_EQ(automation::ToLong(a.ReferenceList().Count()), 1);
}

TEST_F(ReferencesTest, PutsAProjectInThePlaceOfTheFirstExternalReferenceToTheSameName) {
  Project& a = Dll("A");
  Project& lib = Dll("Lib1");
  const std::string first = "Object={G}#1.0#0;D:\\elsewhere\\LIB1.OCX";
  const std::string second = "Reference=*\\G{H}#1.0#0#lib1.tlb#Second";
  AddRow(a, kLibrary);
  AddRow(a, first);
  AddRow(a, second);
  a.ReferenceList().AddInternalReference(lib);
  EXPECT_EQ(Texts(a), (List{kLibrary, second, support::ProjectBench::To(lib)}));
}

TEST_F(ReferencesTest, KeepsExternalReferencesWhoseNameOnlyBeginsAlike) {
  Project& a = Dll("A");
  Project& lib = Dll("Lib1");
  const std::string row = "Reference=*\\G{H}#1.0#0#lib12.dll#d";
  AddRow(a, row);
  a.ReferenceList().AddInternalReference(lib);
  EXPECT_EQ(Texts(a), (List{row, support::ProjectBench::To(lib)}));
}

TEST_F(ReferencesTest, AddingAProjectDoesNotTouchItsOutputFolder) {
  Project& a = Dll("A");
  Project& b = Dll("B", "Path32=\"C:\\bin\"\n");
  a.ReferenceList().AddInternalReference(b);
  EXPECT_EQ(b.Path32(), "C:\\bin");
}

// --- removal

TEST_F(ReferencesTest, RemovesByPositionAndByKeyInEditMode) {
  Project& a = Dll("A");
  AddRow(a, kLibrary);
  AddRow(a, kControl);
  AddRow(a, kOtherLibrary);
  a.BeginEdit();
  a.ReferenceList().Remove(Variant::FromLong(1));
  a.ReferenceList().Remove(Variant::FromText("2"));
  EXPECT_EQ(Texts(a), List{kOtherLibrary});
  EXPECT_TRUE(a.ReferenceList().IsDirty());
  EXPECT_EQ(FailureOf([&] { a.ReferenceList().Remove(Variant::FromLong(2)); }).number, 9);
  EXPECT_EQ(FailureOf([&] { a.ReferenceList().Remove(Variant::FromText("1")); }).number, 5);
}

TEST_F(ReferencesTest, RemovesNothingOutsideEditMode) {
  Project& a = Dll("A");
  AddRow(a, kLibrary);
  EXPECT_EQ(FailureOf([&] { a.ReferenceList().Remove(Variant::FromLong(1)); }),
            Failure(1004, "Project.CancelEdit", "Not in edit mode"));
  EXPECT_EQ(Texts(a), List{kLibrary});
}

// --- questions

TEST_F(ReferencesTest, ComparesGuidsOfExternalReferencesExactly) {
  Project& a = Dll("A");
  AddRow(a, "Reference=*\\G{Ab}#1.0#0#p#d");
  EXPECT_TRUE(a.ReferenceList().IsProjectReferencingExternal("{Ab}"));
  EXPECT_FALSE(a.ReferenceList().IsProjectReferencingExternal("{AB}"));
  EXPECT_FALSE(a.ReferenceList().IsProjectReferencingExternal(""));
}

TEST_F(ReferencesTest, DoesNotCountInternalReferencesAsExternalOnes) {
  Project& a = Dll("A");
  a.ReferenceList().AddInternalReference(Dll("B"));
  EXPECT_FALSE(a.ReferenceList().IsProjectReferencingExternal(""));
}

TEST_F(ReferencesTest, KnowsWhichProjectsAreReferenced) {
  Project& a = Dll("A");
  Project& b = Dll("B");
  AddRow(a, kLibrary);
  EXPECT_FALSE(a.ReferenceList().IsProjectReferencing(0)) << "external references name no project";
  EXPECT_FALSE(a.ReferenceList().IsProjectReferencing(b.Id()));
  a.ReferenceList().AddInternalReference(b);
  EXPECT_TRUE(a.ReferenceList().IsProjectReferencing(b.Id()));
}

// --- validation

TEST_F(ReferencesTest, ValidatesATypeLibrary) {
  Project& a = Dll("A");
  bench.MakeBinary("C:\\win\\some.dll", 1);
  bench.WriteBytes("C:\\win\\raw.tlb", support::ProjectBench::LibraryBytes(2));
  EXPECT_TRUE(a.ReferenceList().ValidateReference("C:\\win\\some.dll"));
  EXPECT_TRUE(a.ReferenceList().ValidateReference("C:\\win\\raw.tlb"));
  EXPECT_TRUE(a.ReferenceList().ValidateReference("C:\\win\\some.dll\\1"));
  EXPECT_FALSE(a.ReferenceList().IsDirty());
}

TEST_F(ReferencesTest, RefusesAFileThatIsNoTypeLibrary) {
  Project& a = Dll("A");
  bench.WriteBytes("C:\\win\\text.dll", "no library");
  const Failure expected(45, "References.Validate", "This is not a valid typelibrary!");
  EXPECT_EQ(FailureOf([&] { a.ReferenceList().ValidateReference("C:\\win\\text.dll"); }), expected);
  EXPECT_EQ(FailureOf([&] { a.ReferenceList().ValidateReference("C:\\win\\missing.dll"); }), expected);
  EXPECT_EQ(FailureOf([&] { a.ReferenceList().ValidateReference("C:\\win"); }), expected);
}

TEST_F(ReferencesTest, RefusesALibraryThatTheBuildMakes) {
  Project& a = Dll("A");
  Project& b = Dll("B", "Path32=\"C:\\bin\"\n");
  bench.MakeBinary("C:\\bin\\B.dll", 7);
  bench.MakeBinary("C:\\copies\\old.dll", 7);
  EXPECT_EQ(FailureOf([&] { a.ReferenceList().ValidateReference("C:\\copies\\old.dll"); }),
            Failure(45, "", "You should use the project B which is part of this build instead!"));
  EXPECT_EQ(b.Path32(), "C:\\bin") << "the search changes no project";
}

TEST_F(ReferencesTest, ValidatesARelativePathFromTheProjectFileAndThenFromItsFolder) {
  Project& a = Dll("A");
  bench.MakeBinary("C:\\src\\libs\\near.dll", 1);
  EXPECT_TRUE(a.ReferenceList().ValidateReference("libs\\near.dll"));
  EXPECT_TRUE(a.ReferenceList().ValidateReference("\\..\\libs\\near.dll"));
  bench.MakeBinary("C:\\up.dll", 2);
  EXPECT_TRUE(a.ReferenceList().ValidateReference("..\\up.dll"));
}

// --- the database

TEST_F(ReferencesTest, LoadsInternalReferencesBeforeExternalOnes) {
  Project& a = Dll("A");
  Project& b = Dll("B");
  Project& c = Dll("C");
  a.BeginEdit();
  AddRow(a, kLibrary);
  a.ReferenceList().AddInternalReference(c);
  AddRow(a, kControl);
  a.ReferenceList().AddInternalReference(b);
  a.ApplyEdit();
  const auto again = bench.Reload();
  const auto loaded = again->Projects().GetByName("A");
  EXPECT_EQ(Texts(*loaded), (List{support::ProjectBench::To(c), support::ProjectBench::To(b), kLibrary,
                                  "Object={G}#2.0#0;GRID.OCX"}));
  EXPECT_FALSE(loaded->ReferenceList().IsDirty());
  EXPECT_EQ(loaded->ReferenceList().Item(Variant::FromLong(1))->TypeCode(), "U");
  EXPECT_EQ(loaded->ReferenceList().Item(Variant::FromLong(4))->Id(), "4");
}

TEST_F(ReferencesTest, SavesWhatAColumnHolds) {
  Project& a = Dll("A");
  Project& b = Dll("B");
  a.BeginEdit();
  AddRow(a, kLibrary);
  a.ReferenceList().AddInternalReference(b);
  a.ApplyEdit();
  const auto external = modDatabase::OpenDynaset("SELECT * FROM ExternalReferences");
  EXPECT_EQ(external->GetText("TypeLibGUID"), "{G}");
  EXPECT_EQ(external->GetText("BinaryVersion"), "5.0");
  EXPECT_EQ(external->GetText("Description"), "My Lib");
  EXPECT_EQ(external->GetText("Path"), "C:\\x\\y.dll");
  EXPECT_EQ(external->GetText("Type"), "R");
  EXPECT_EQ(external->GetLong("ProjectID"), a.Id());
  const auto internal = modDatabase::OpenDynaset("SELECT * FROM References");
  EXPECT_EQ(internal->GetLong("idReferencing"), a.Id());
  EXPECT_EQ(internal->GetLong("idReferenced"), b.Id());
}

TEST_F(ReferencesTest, SavesTheRegisteredNameOfALibraryWithoutDescription) {
  Project& a = Dll("A");
  bench.SetClassesValue("Typelib\\{G}\\2.0", "Registered");
  a.BeginEdit();
  AddRow(a, kControl);
  a.ApplyEdit();
  EXPECT_EQ(support::ProjectBench::StoredText("SELECT * FROM ExternalReferences", "Description"),
            "Registered");
}

TEST_F(ReferencesTest, SavesAddedReferencesOnlyWithTheNextEdit) {
  Project& a = Dll("A");
  AddRow(a, kLibrary);
  EXPECT_EQ(support::ProjectBench::CountRows("ExternalReferences"), 0);
  a.BeginEdit();
  a.ApplyEdit();
  EXPECT_EQ(support::ProjectBench::CountRows("ExternalReferences"), 1);
  EXPECT_FALSE(a.ReferenceList().IsDirty());
}

TEST_F(ReferencesTest, LeavesTheRowsOfOtherProjectsAlone) {
  Project& a = Dll("A");
  Project& b = Dll("B");
  for (Project* project : {&a, &b}) {
    project->BeginEdit();
    AddRow(*project, kLibrary);
    project->ApplyEdit();
  }
  a.BeginEdit();
  a.ReferenceList().Remove(Variant::FromLong(1));
  a.ApplyEdit();
  const auto rows = modDatabase::OpenDynaset("SELECT * FROM ExternalReferences");
  EXPECT_EQ(rows->GetLong("ProjectID"), b.Id());
  EXPECT_EQ(support::ProjectBench::CountRows("ExternalReferences"), 1);
}

TEST_F(ReferencesTest, FailsToSaveATextWithAnApostropheAndLeavesTheDatabaseAsItWas) {
  Project& a = Dll("A");
  Project& b = Dll("B");
  a.BeginEdit();
  AddRow(a, kLibrary);
  a.ReferenceList().AddInternalReference(b);
  a.ApplyEdit();
  a.BeginEdit();
  a.ReferenceList().Remove(Variant::FromLong(1));
  AddRow(a, "Reference=*\\G{N}#1.0#0#C:\\x.dll#Somebody's library");
  EXPECT_EQ(FailureOf([&] { a.ApplyEdit(); }), Failure(45, "References.SaveReferences", "Save failed!"));
  EXPECT_EQ(support::ProjectBench::StoredText("SELECT * FROM ExternalReferences", "Description"), "My Lib");
  EXPECT_EQ(support::ProjectBench::CountRows("ExternalReferences"), 1);
  EXPECT_EQ(support::ProjectBench::CountRows("References"), 1);
  // In memory all stays as it was, to be mended or cancelled.
  EXPECT_EQ(automation::ToLong(a.ReferenceList().Count()), 2);
  EXPECT_TRUE(a.ReferenceList().IsDirty());
  a.ReferenceList().Item(Variant::FromLong(2))->SetDescription("mended");
  EXPECT_EQ(FailureOf([&] { a.ApplyEdit(); }), kNoFailure);
  EXPECT_EQ(support::ProjectBench::StoredText("SELECT * FROM ExternalReferences", "Description"), "mended");
}

TEST_F(ReferencesTest, RunsNoStatementThatAReferenceSmugglesIn) {
  Project& a = Dll("A");
  a.BeginEdit();
  AddRow(a, "Reference=*\\G{N}#1.0#0#x','1','R'); DELETE FROM Project; --#d");
  EXPECT_EQ(FailureOf([&] { a.ApplyEdit(); }).text, "Save failed!");
  EXPECT_EQ(support::ProjectBench::CountRows("Project"), 1);
}

// --- the edit cycle

TEST_F(ReferencesTest, RefusesToBeginAnEditTwice) {
  const auto project = automation::Make<Project>();
  project->ReferenceList().BeginEdit();
  EXPECT_EQ(FailureOf([&] { project->ReferenceList().BeginEdit(); }),
            Failure(1004, "Project.BeginEdit", "Already in edit mode"));
}

TEST_F(ReferencesTest, RefusesToEndAnEditThatNobodyBegan) {
  const auto project = automation::Make<Project>();
  const Failure expected(1004, "Project.CancelEdit", "Not in edit mode");
  EXPECT_EQ(FailureOf([&] { project->ReferenceList().ApplyEdit(); }), expected);
  EXPECT_EQ(FailureOf([&] { project->ReferenceList().CancelEdit(); }), expected);
}

TEST_F(ReferencesTest, PutsARemovedReferenceBackUnderItsOldKey) {
  Project& a = Dll("A");
  const auto first = AddRow(a, kLibrary);
  AddRow(a, kControl);
  a.BeginEdit();
  a.ReferenceList().Remove(Variant::FromLong(1));
  AddRow(a, kOtherLibrary);
  a.CancelEdit();
  EXPECT_EQ(Texts(a), (List{kLibrary, "Object={G}#2.0#0;GRID.OCX"}));
  EXPECT_EQ(a.ReferenceList().Item(Variant::FromText("1")).Get(), first.Get());
  EXPECT_EQ(a.ReferenceList().Item(Variant::FromLong(1)).Get(), first.Get());
  EXPECT_FALSE(a.ReferenceList().IsDirty());
}

TEST_F(ReferencesTest, DoesNotTakeBackChangesOfASingleReference) {
  Project& a = Dll("A");
  AddRow(a, kLibrary);
  a.BeginEdit();
  a.ReferenceList().Item(Variant::FromLong(1))->SetPath("changed");
  a.CancelEdit();
  EXPECT_EQ(a.ReferenceList().Item(Variant::FromLong(1))->Path(), "changed");
}

TEST_F(ReferencesTest, NumbersOnAfterARemoval) {
  Project& a = Dll("A");
  AddRow(a, kLibrary);
  AddRow(a, kControl);
  a.BeginEdit();
  a.ReferenceList().Remove(Variant::FromLong(2));
  EXPECT_EQ(AddRow(a, kOtherLibrary)->Id(), "3");
}

TEST_F(ReferencesTest, LetsARemovedReferenceLiveOnWithItsHolder) {
  Project& a = Dll("A");
  const auto reference = AddRow(a, kLibrary);
  a.BeginEdit();
  a.ReferenceList().Remove(Variant::FromLong(1));
  a.ApplyEdit();
  bench.build->RemoveSink(bench.sink);
  bench.build = automation::Make<Build>();
  EXPECT_EQ(reference->Path(), "C:\\x\\y.dll");
}

}  // namespace
}  // namespace hearthmake
