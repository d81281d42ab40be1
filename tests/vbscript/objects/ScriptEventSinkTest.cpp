#include "vbscript/objects/ScriptEventSink.hpp"

#include <gtest/gtest.h>

#include "automation/Declare.hpp"
#include "support/SystemObjectTest.hpp"

namespace hearthmake::vbscript {
namespace {

using automation::Variant;

class ScriptEventSinkTest : public SystemObjectTest {
 protected:
  Engine engine{host};
};

TEST_F(ScriptEventSinkTest, CallsTheProcedureOfAnEventWithItsArgumentsByReference) {
  engine.AddCode(u"Sub B_Done(name, cancel)\nlast = name\ncancel = True\nEnd Sub\n");
  ScriptEventSink sink(engine, "b_");
  Variant cancel = Variant::FromBoolean(false);
  Variant arguments[] = {Text("Lib"), Variant::ByReference(&cancel)};
  sink.Raise("Done", arguments);
  EXPECT_TRUE(automation::ToBoolean(cancel));
}

TEST_F(ScriptEventSinkTest, PassesOverAnEventWithoutProcedure) {
  engine.AddCode(u"x = 1");
  ScriptEventSink sink(engine, "b_");
  sink.Raise("Other", {});
  EXPECT_EQ(ToText(engine.Eval(u"x")), "1");
}

}  // namespace
}  // namespace hearthmake::vbscript
