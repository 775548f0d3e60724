// An X server that ends takes no diagram with it.

#include "desktop/diagram.hpp"

namespace torve::desktop {
namespace {

class LostServer : public DiagramEditor {};

TEST_F(LostServer, LeavesTheDiagramInAFile) {
  start();
  open_palette({600, 540});
  draw(PaletteLine::node, {200, 40}, {200, 140});
  settle();
  server().crash();
  EXPECT_EQ(exit_status(), 1);
  EXPECT_NE(read_file("figure.vob.bak").find("node x1=200 y1=40"), std::string::npos);
}

}  // namespace
}  // namespace torve::desktop
