// Writes the seeds that are no texts into a corpus folder; see README.md.
//   write_seeds CORPUS

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <string_view>

#include "adapters/jet/RowStream.hpp"
#include "support/JetFileWriter.hpp"
#include "support/TypeLibPeBuilder.hpp"
#include "support/TypeLibSltgWriter.hpp"
#include "vb6/Identity.hpp"
#include "vb6/InterfaceListing.hpp"
#include "vb6/MsftWriter.hpp"
#include "vb6/SourceFile.hpp"

namespace {

using hearthmake::test::TypeLibPeBuilder;
using hearthmake::test::TypeLibSltgWriter;
using namespace hearthmake::vb6;

TypeLibSltgWriter OldLibrary() {
  TypeLibSltgWriter writer;
  writer.guid = {0x10, 0x3E, 0x6D, 0x5A, 0x1C, 0x0B, 0x5E, 0x4F, 0x9A, 0x7B, 1, 2, 3, 4, 5, 6};
  writer.name = "Lamps";
  writer.helpString = "Lamps and their switches";
  writer.helpFile = "lamps.hlp";
  writer.locale = 0x409;
  writer.majorVersion = 2;
  writer.minorVersion = 1;
  writer.types = {{0, "Brightness", "How bright a lamp is", {1}, 0, 0, 0},
                  {3, "Lamp", "Gives light", {2}, 0x10, 1, 2},
                  {5, "Switch", "Turns a lamp on", {3}, 2, 0, 0}};
  return writer;
}

PublicInterface NewLibrary() {
  constexpr const char* kSource =
      "VERSION 1.0 CLASS\r\nBEGIN\r\n  MultiUse = -1  'True\r\nEND\r\n"
      "Attribute VB_Name = \"Lamp\"\r\nAttribute VB_Creatable = True\r\nAttribute VB_Exposed = True\r\n"
      "Public Event Burnt(ByVal Hours As Long)\r\nPublic Name As String\r\n"
      "Public Sub TurnOn(Optional ByVal Level As Integer = 3)\r\nEnd Sub\r\n"
      "Public Property Get Level() As Double\r\nEnd Property\r\n";
  PublicInterface library;
  library.name = "Lamps";
  library.help = "Lamps and their switches";
  library.classes.push_back(ReadSource(kSource, ComponentKind::Class, "").exported.value());
  AssignIdentity(library, Compatibility::None, nullptr, GuidSource("seed"));
  return library;
}

std::string Rows() {
  std::string bytes;
  hearthmake::jet::RowStreamWriter writer([&](std::string_view piece) { bytes += piece; });
  writer.BeginTable("Build", {"Id", "Name", "Date", "Compile"});
  writer.Row({4, std::string("Desk"), 2.5, true});
  writer.OtherTable("Weather");
  writer.Row({5, {}, {}, false});
  writer.End();
  return bytes;
}

std::string Image(bool is64Bit, const std::string& first, const std::string& second) {
  TypeLibPeBuilder builder(is64Bit);
  builder.CodeSize(0).AddTypeLib(1, first).AddTypeLib(2, second);
  builder.Add({16, {}}, {1, {}}, "version", {0x409, 0});
  return builder.Build();
}

void Put(const std::filesystem::path& file, const std::string& bytes) {
  std::filesystem::create_directories(file.parent_path());
  std::ofstream(file, std::ios::binary) << bytes;
}

void WriteSeeds(const std::filesystem::path& corpus) {
  // The replay cuts longer seeds, so the texts are kept short.
  for (const int version : {3, 4}) {
    hearthmake::support::JetFileWriter builds = hearthmake::support::SmallBuilds(version);
    builds.tables[2].rows[0][3] = std::string(3000, 'y');
    Put(corpus / "FuzzMdbImport" / ("Jet" + std::to_string(version) + ".mdb"), builds.Write());
  }
  Put(corpus / "FuzzMdbImport" / "Rows.bin", Rows());
  TypeLibSltgWriter old = OldLibrary();
  Put(corpus / "FuzzTypeLib" / "Sltg.tlb", old.Write());
  Put(corpus / "FuzzPeImage" / "Win32.dll", Image(false, old.Write(), "second"));
  Put(corpus / "FuzzPeImage" / "Win64.dll", Image(true, "first", "second"));
  old.reversedTable = true;
  old.longNameHeading = true;
  Put(corpus / "FuzzTypeLib" / "SltgReversed.tlb", old.Write());
  const PublicInterface library = NewLibrary();
  const std::string msft = MsftWriter::Write(library);
  Put(corpus / "FuzzTypeLib" / "Msft.tlb", msft);
  Put(corpus / "FuzzTypeLib" / "Image.dll", Image(false, msft, old.Write()));
  Put(corpus / "FuzzVb6Source" / "Listing.txt", WithListing({}, library));
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "write_seeds CORPUS\n";
    return 2;
  }
  WriteSeeds(argv[1]);
  return 0;
}
