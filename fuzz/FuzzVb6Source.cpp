// The compiler stand-in's readers of project and source files. A class that a source shows to others must
// be compatible with itself when a later compile reads it from an image.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "automation/Error.hpp"
#include "vb6/CompileError.hpp"
#include "vb6/Identity.hpp"
#include "vb6/InterfaceListing.hpp"
#include "vb6/MsftWriter.hpp"
#include "vb6/ProjectFile.hpp"
#include "vb6/SourceFile.hpp"

namespace {

using namespace hearthmake::vb6;

void ReadProject(std::string_view bytes) {
  try {
    const ProjectFile project = ProjectFile::Parse(bytes);
    const std::string next = ProjectFile::WithNextRevision(bytes);
    if (ProjectFile::Parse(next).Components().size() != project.Components().size()) std::abort();
  } catch (const hearthmake::automation::Error&) {
  }
}

void CompileTwice(const PublicClass& exported) {
  const GuidSource guids("fuzz");
  PublicInterface library;
  library.name = "Fuzz";
  library.classes.push_back(exported);
  PublicInterface again = library;
  AssignIdentity(library, Compatibility::None, nullptr, guids);
  const std::string image = WithListing(MsftWriter::Write(library), library);
  const auto earlier = ReadListing(image);
  if (!earlier || earlier->library.classes.size() != 1) std::abort();
  if (!AssignIdentity(again, Compatibility::Binary, &*earlier, guids).empty()) std::abort();
  if (again.classes[0].interfaceId != library.classes[0].interfaceId) std::abort();
}

void ReadComponent(std::string_view bytes, ComponentKind kind) {
  try {
    const SourceFacts facts = ReadSource(bytes, kind, "");
    if (facts.exported) CompileTwice(*facts.exported);
  } catch (const CompileError&) {
  } catch (const hearthmake::automation::Error&) {
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  ReadProject(bytes);
  for (const ComponentKind kind : {ComponentKind::Class, ComponentKind::Module, ComponentKind::Form,
                                   ComponentKind::UserControl, ComponentKind::PropertyPage}) {
    ReadComponent(bytes, kind);
  }
  ReadListing(bytes);
  return 0;
}
