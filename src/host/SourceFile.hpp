#pragma once

#include "embedding/Options.hpp"

namespace hearthmake::host {

// What became of a file that was asked of source control.
using embedding::SourceFile;
using embedding::SourceFileState;

}  // namespace hearthmake::host
