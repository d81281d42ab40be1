#include "scripting/App.hpp"

#include "automation/Declare.hpp"

namespace hearthmake {

const automation::Interface& App::Describe() {
  static const automation::Interface kInterface =
      automation::Declare("App", "_App", "{08B84932-8B23-48C6-80B2-7D1D574AFC0A}")
          .get<&App::Path>("Path")
          .get<&App::EXEName>("EXEName")
          .get<&App::Title>("Title")
          .get<&App::ProductName>("ProductName")
          .get<&App::Major>("Major")
          .get<&App::Minor>("Minor")
          .get<&App::Revision>("Revision")
          .get<&App::ThreadID>("ThreadID")
          .build();
  return kInterface;
}

}  // namespace hearthmake
