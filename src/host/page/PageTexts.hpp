#pragma once

namespace hearthmake::host {

// The page's style and script, the files page.css and page.js beside this one, as they were at build time.
extern const char* const kPageStyle;
extern const char* const kPageScript;

}  // namespace hearthmake::host
