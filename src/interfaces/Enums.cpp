#include "interfaces/Enums.hpp"

#include "automation/Declare.hpp"

namespace hearthmake {

const automation::Interface& Enums::Describe() {
  static const automation::Interface kInterface =
      automation::Declare("Enums", "_Enums", "{6A4407B2-C0A2-47EB-BFF3-634AE0E46013}",
                          "{3BA90989-0E14-4B9E-A426-1C548B419D4F}")
          .build();
  return kInterface;
}

}  // namespace hearthmake
