// Any text is taken as a template: what is written is the template with the drawing in one place.

#include <fstream>
#include <iterator>

#include "base/files.hpp"
#include "eps/eps_stream.hpp"
#include "memory_file.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace torve;
  static const MemoryFile form;
  static const MemoryFile output;
  form.fill({data, size});
  const std::string text(reinterpret_cast<const char*>(data), size);
  FilePtr opened = open_eps(output.name(), form.name());
  if (!opened) std::abort();
  write_eps_segment(1, 2, 3, 4, 100);
  write_eps_label(6, 1, 2, 100, 10, "label");
  if (close_eps(std::move(opened)) != 0) std::abort();
  std::ifstream file(output.name(), std::ios::binary);
  std::string written{std::istreambuf_iterator<char>(file), {}};
  const std::string drawing =
      "Or moveto 1 CX 98 CX rmoveto 2 CX -2 CX rlineto stroke\n"
      "Or moveto 1 CX 93 CX rmoveto /Times-Roman findfont 12 CX scalefont setfont (label) show\n";
  std::size_t at = written.find(drawing);
  if (at == std::string::npos) std::abort();
  // A byte 0 cuts its line; everything else is copied as it stands.
  if (text.find('\0') != std::string::npos) return 0;
  while (at != std::string::npos && std::string(written).erase(at, drawing.size()) != text)
    at = written.find(drawing, at + 1);
  if (at == std::string::npos) std::abort();
  return 0;
}
