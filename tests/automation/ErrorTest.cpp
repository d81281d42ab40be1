#include "automation/Error.hpp"

#include <gtest/gtest.h>

#include "support/ErrorExpect.hpp"

namespace hearthmake::automation {
namespace {

using support::ErrorOf;
using support::ExpectError;

TEST(Error, CarriesNumberSourceAndDescription) {
  const Error error(45, "Build.Name", "Invalid name");
  EXPECT_EQ(error.Number(), 45);
  EXPECT_EQ(error.Source(), "Build.Name");
  EXPECT_EQ(error.Description(), "Invalid name");
  EXPECT_STREQ(error.what(), "Invalid name");
}

TEST(Error, NumbersOfTheLibraryAreThoseHostsCompareWith) {
  const auto number = [](BuildErrors error) { return static_cast<std::uint32_t>(error); };
  EXPECT_EQ(number(BuildErrors::be_FailToCompile), 0x80040001U);
  EXPECT_EQ(number(BuildErrors::beInvalidReference), 0x80040002U);
  EXPECT_EQ(number(BuildErrors::beCyclicReferences), 0x80040003U);
  EXPECT_EQ(number(BuildErrors::beCanNotDelete), 0x80040004U);
  EXPECT_EQ(number(BuildErrors::beProjectIsReferenced), 0x80040005U);
  EXPECT_EQ(number(BuildErrors::beProjectAlreadyInBuild), 0x80040006U);
  EXPECT_EQ(number(BuildErrors::beCommandLineToLong), 0x80040007U);
  EXPECT_EQ(number(BuildErrors::beBuildCanNotDelete), 0x80040008U);
  EXPECT_EQ(number(BuildErrors::beFailedToStartProcess), 0x80040009U);
  EXPECT_EQ(number(BuildErrors::beNoProcessStarted), 0x8004000AU);
  EXPECT_EQ(number(BuildErrors::beGUIDmissing), 0x8004000BU);
  EXPECT_EQ(number(BuildErrors::beInvalidBaseAddress), 0x8004000CU);
  EXPECT_EQ(number(BuildErrors::beEvaluateInternalsFaild), 0x8004000DU);
  EXPECT_EQ(number(BuildErrors::beScriptSyntaxError), 0x8004000EU);
  EXPECT_EQ(number(BuildErrors::bePrepareScriptControl), 0x8004000FU);
  EXPECT_EQ(number(BuildErrors::be_BuildNotFound), 0x80040010U);
  EXPECT_EQ(number(BuildErrors::be_InvalidReferenceString), 0x80040011U);
  EXPECT_EQ(number(BuildErrors::beNoDatabase), 0x80040012U);
  EXPECT_EQ(number(BuildErrors::beOpenIncludeFile), 0x80040013U);
  EXPECT_EQ(number(BuildErrors::beScriptRunning), 0x80004005U);
}

TEST(Error, ARunningScriptSharesItsNumberWithASyntaxError) {
  EXPECT_EQ(BuildErrors::beScriptIsExecuting, BuildErrors::beScriptSyntaxError);
}

TEST(Error, RaisesNumbersOfEveryKind) {
  ExpectError([] { Raise(45, "Build.Name", "Invalid name"); }, 45, "Build.Name", "Invalid name");
  ExpectError([] { Raise(BuildErrors::be_BuildNotFound, "Build.Load", "Build not found!"); },
              BuildErrors::be_BuildNotFound, "Build.Load", "Build not found!");
}

TEST(Error, RaisesRuntimeErrorsWithTheirEnglishText) {
  ExpectError([] { Raise(RuntimeError::SubscriptOutOfRange, "Projects.item"); }, 9, "Projects.item",
              "Subscript out of range");
  ExpectError([] { Raise(RuntimeError::InvalidProcedureCall, "Builds.item"); }, 5, "Builds.item",
              "Invalid procedure call or argument");
  ExpectError([] { Raise(RuntimeError::Overflow, ""); }, 6, "", "Overflow");
  ExpectError([] { Raise(RuntimeError::TypeMismatch, ""); }, 13, "", "Type mismatch");
  ExpectError([] { Raise(RuntimeError::ObjectNotSet, ""); }, 91, "",
              "Object variable or With block variable not set");
}

TEST(Error, PutsTheDetailOfARuntimeErrorBehindItsText) {
  ExpectError([] { Raise(RuntimeError::FileNotFound, "Project.LoadFromFile", "C:\\gone.vbp"); }, 53,
              "Project.LoadFromFile", "File not found: C:\\gone.vbp");
}

TEST(Error, EveryRuntimeErrorHasATextOfItsOwn) {
  for (const int number :
       {5, 6, 7, 9, 13, 28, 52, 53, 57, 58, 61, 70, 75, 76, 91, 94, 429, 438, 448, 449, 450, 457}) {
    EXPECT_STRNE(RuntimeErrorText(static_cast<RuntimeError>(number)), "Unknown runtime error") << number;
  }
  EXPECT_STREQ(RuntimeErrorText(static_cast<RuntimeError>(12345)), "Unknown runtime error");
}

}  // namespace
}  // namespace hearthmake::automation
