#include "host/page/Html.hpp"

#include <gtest/gtest.h>

namespace hearthmake::host {
namespace {

TEST(Html, EscapesWhatMeansSomething) {
  EXPECT_EQ(Html("</script> & \"a\" 'b'"), "&lt;/script&gt; &amp; &quot;a&quot; &#39;b&#39;");
}

TEST(Html, CleansText) { EXPECT_EQ(Html("a\x1b\xff\r\n<"), "a␛�\n&lt;"); }

}  // namespace
}  // namespace hearthmake::host
