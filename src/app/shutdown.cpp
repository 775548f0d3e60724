#include "app/shutdown.hpp"

#include <cstdio>
#include <cstdlib>

#include "app/signal/work_buffer.hpp"
#include "diagram/diagram_file.hpp"
#include "diagram/drawing.hpp"
#include "display/graph.hpp"
#include "pool/pool.hpp"
#include "text/fonts.hpp"
#include "wm/background.hpp"
#include "wm/wd_object.hpp"

namespace torve {

namespace {
constexpr int exit_tool_status = 1;
}

int release_everything() {
  free_vector_objects(VectorMode::clipped);
  free_wd_objects();
  release_staging();
  release_work_buffer();
  endgraph();
  release_pool();
  free_font2();
  return free_font();
}

int texit_ope(int, int, int) {
  rescue_diagram();
  release_everything();
  std::fflush(stdout);
  std::exit(exit_tool_status);
}

}  // namespace torve
