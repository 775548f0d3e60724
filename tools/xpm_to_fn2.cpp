// xpm_to_fn2 PICTURE.xpm PICTURE.fn2
//
// Converts a picture from the text it is drawn in to the plane-oriented format the program reads.

#include <cstdio>
#include <exception>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

#include "output.hpp"
#include "xpm.hpp"

namespace {

std::string read_text(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw std::runtime_error("cannot be opened");
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fputs("usage: xpm_to_fn2 PICTURE.xpm PICTURE.fn2\n", stderr);
    return 2;
  }
  try {
    torve::write_whole_file(argv[2], torve::fn2_bytes(torve::parse_xpm(read_text(argv[1]))));
  } catch (const std::exception& error) {
    std::fprintf(stderr, "xpm_to_fn2: %s: %s\n", argv[1], error.what());
    return 1;
  }
  return 0;
}
