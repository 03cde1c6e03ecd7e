// vornctl asks the real engine which application is in front.
#include <gtest/gtest.h>

#include <chrono>
#include <string>

#include "ctl/EngineSession.h"
#include "ports/BusMethodCall.h"
#include "protocol/Focus.h"

namespace vorn::ctl::test {
namespace {

class VornCtlFocusTest : public EngineSession {};

TEST_F(VornCtlFocusTest, SaysWhoIsInFrontAsAProgramTellsIt) {
  const BusAnswer answer =
      callBusMethod({focus::busName, focus::objectPath, focus::interface}, focus::methods::SetApplicationInFront,
                    {{"s", "chess.desktop"}, {"s", "/usr/games/chess"}, {"s", "Chess"}}, std::chrono::seconds(20));
  ASSERT_EQ(answer.status, BusAnswer::Status::Success) << answer.error;
  EXPECT_EQ(outputOf({"focus"}),
            "In front:  Chess, chess.desktop, /usr/games/chess\nTold by:   a program, over the session bus\n"
            "Profile:   none follows an application\n");
  EXPECT_EQ(outputOf({"focus", "--json"}),
            R"({"Executable":"/usr/games/chess","Identifier":"chess.desktop","IsUsed":false,"Name":"Chess",)"
            R"("Needs":"","Profile":"","Source":"bus"})"
            "\n");
}

}  // namespace
}  // namespace vorn::ctl::test
