#include "vb6/PeWriter.hpp"

#include <gtest/gtest.h>

#include "support/Vb6Sandbox.hpp"
#include "vb6/Identity.hpp"
#include "vb6/MsftWriter.hpp"

namespace hearthmake::vb6 {
namespace {

TEST(PeWriter, CarriesTheLibraryWhereLoadersLook) {
  tests::Vb6Sandbox sandbox;
  PublicInterface library;
  library.name = "Orders";
  AssignIdentity(library, Compatibility::None, nullptr, GuidSource("x"));
  for (const bool isLibrary : {false, true}) {
    PeImage image;
    image.isLibrary = isLibrary;
    image.resources = {{"TYPELIB", 0, 1, MsftWriter::Write(library)}, {"", 16, 1, "version"}};
    const std::string bytes = PeWriter::Write(image);
    EXPECT_EQ(bytes.substr(0, 2), "MZ");
    EXPECT_EQ((static_cast<unsigned char>(bytes[0x57]) & 0x20) != 0, isLibrary);
    sandbox.Files().Replace("C:\\x.dll", bytes);
    EXPECT_EQ(sandbox.Library("C:\\x.dll").guid, library.id.Text());
    EXPECT_EQ(sandbox.Library("C:\\x.dll\\1").guid, library.id.Text());
  }
}

}  // namespace
}  // namespace hearthmake::vb6
