#include "vb6/StubImage.hpp"

#include <gtest/gtest.h>

#include "automation/Error.hpp"
#include "support/Vb6Sandbox.hpp"
#include "vb6/Identity.hpp"
#include "vb6/MsftWriter.hpp"
#include "vb6/PeWriter.hpp"

namespace hearthmake::vb6 {
namespace {

// An image of 32 bits without resources, as a linker leaves one.
std::string Stub() {
  PeImage image;
  image.isLibrary = true;
  return PeWriter::Write(image);
}

std::vector<PeResource> Library(Guid& id) {
  PublicInterface library;
  library.name = "Orders";
  AssignIdentity(library, Compatibility::None, nullptr, GuidSource("x"));
  id = library.id;
  return {{"TYPELIB", 0, 1, MsftWriter::Write(library)}, {"", 16, 1, "version"}};
}

void ExpectRefused(const std::string& image, const std::string& why) {
  Guid id;
  try {
    WithResources(image, Library(id));
    ADD_FAILURE() << "taken as a stub";
  } catch (const automation::Error& error) {
    EXPECT_TRUE(error.Description().ends_with("The stub can't be used: " + why)) << error.Description();
  }
}

TEST(StubImage, CarriesTheLibraryWhereLoadersLook) {
  tests::Vb6Sandbox sandbox;
  Guid id;
  const auto resources = Library(id);
  sandbox.Files().Replace("C:\\x.dll", WithResources(Stub(), resources));
  EXPECT_EQ(sandbox.Library("C:\\x.dll").guid, id.Text());
}

TEST(StubImage, LeavesTheStubAsItIsBeforeItsOwnSection) {
  Guid id;
  const std::string stub = Stub();
  const std::string image = WithResources(stub, Library(id));
  constexpr std::size_t kHeaders = 0x200;
  ASSERT_GT(image.size(), stub.size());
  EXPECT_EQ(image.substr(kHeaders, stub.size() - kHeaders), stub.substr(kHeaders));
  EXPECT_EQ(image, WithResources(stub, Library(id)));
}

TEST(StubImage, RefusesWhatIsNoStub) {
  Guid id;
  ExpectRefused("", "it is no image.");
  ExpectRefused("no image", "it is no image.");
  ExpectRefused(WithResources(Stub(), Library(id)), "it has resources already.");
  std::string full = Stub();
  full[0x46] = 12;  // so many sections that their headers end where the code begins
  ExpectRefused(full, "its headers leave no room for a section.");
}

TEST(StubImage, RefusesAnImageThatIsCutOffInItsHeaders) {
  Guid id;
  const auto resources = Library(id);
  const std::string stub = Stub();
  for (std::size_t size = 0; size < 0x1B0; ++size) {
    EXPECT_THROW(WithResources(stub.substr(0, size), resources), automation::Error) << size;
  }
}

}  // namespace
}  // namespace hearthmake::vb6
