// Backgrounds that rest in a file while their object lies on the canvas.

#include <array>
#include <cstdio>
#include <cstring>
#include <string>

#include "base/errors.hpp"
#include "base/files.hpp"
#include "display/screen_state.hpp"
#include "pool/pool.hpp"
#include "wm/background.hpp"

namespace torve {

namespace {

constexpr std::size_t header_bytes = 8;
constexpr int not_asked_for = -1;
constexpr int bad_id = 3;  // illegal_pointer codes
constexpr int no_background = 4;
constexpr int short_transfer = 1;  // file_error code

std::string background_file(int id) {
  const std::string name = wd(id).name;
  if (name.starts_with("pcard")) return "pcard" + std::to_string(id) + ".tmp";
  return strip_off_ending(name) + ".tmp";
}

std::array<std::uint8_t, header_bytes> header_of(const WdObject& object) {
  const auto low = [](int value) { return static_cast<std::uint8_t>(value & 0xFF); };
  const auto high = [](int value) { return static_cast<std::uint8_t>(value >> 8 & 0xFF); };
  return {low(object.background_line_bytes),
          high(object.background_line_bytes),
          low(gplanes),
          0,
          low(object.height),
          high(object.height),
          low(object.width),
          high(object.width)};
}

std::size_t picture_bytes(const WdObject& object) {
  return static_cast<std::size_t>(object.background_rows) *
         static_cast<std::size_t>(object.background_line_bytes);
}

int transfer_failed() {
  file_error(short_transfer);
  return 1;
}

// The file to update; a new one begins with the header. Null when it cannot be created.
FilePtr open_for_update(const std::string& name, const WdObject& object) {
  FilePtr file = open_file(name, "r+b");
  if (file) return file;
  file = open_file(name, "w+b");
  const auto header = header_of(object);
  if (file && std::fwrite(header.data(), 1, header.size(), file.get()) != header.size()) {
    file.reset();
  }
  return file;
}

}  // namespace

bool is_on_file(const WdObject& object) {
  return has(object.flags, WdFlags::background_on_file) && object.painted &&
         covered_pixels(object) == nullptr;
}

void rest_background(int id) {
  if (wd(id).painted && wd(id).background != nullptr) static_cast<void>(if_b_opt_bgtofile(id));
}

void fetch_background(int id) {
  if (is_on_file(wd(id))) static_cast<void>(if_b_opt_bgfromfile(id));
}

int if_b_opt_bgtofile(int id) {
  if (!is_wd_id(id)) {
    illegal_pointer(bad_id);
    return 1;
  }
  WdObject& object = wd(id);
  if (!has(object.flags, WdFlags::background_on_file)) return not_asked_for;
  if (object.background == nullptr) {
    illegal_pointer(no_background);
    return 1;
  }
  const std::string name = background_file(id);
  FilePtr file = open_for_update(name, object);
  if (!file) {
    cannot_create_file(name.c_str());
    return 1;
  }
  std::fseek(file.get(), header_bytes, SEEK_SET);
  const std::size_t bytes = picture_bytes(object);
  const bool written = std::fwrite(object.background, 1, bytes, file.get()) == bytes;
  if (std::fclose(file.release()) != 0 || !written) return transfer_failed();
  release_background(object);
  return 0;
}

int if_b_opt_bgfromfile(int id) {
  if (!is_wd_id(id)) {
    illegal_pointer(bad_id);
    return 1;
  }
  WdObject& object = wd(id);
  if (!has(object.flags, WdFlags::background_on_file)) return not_asked_for;
  const FilePtr file = open_file(background_file(id), "r+b");
  if (!file) return 0;
  const std::size_t bytes = picture_bytes(object);
  if (object.background == nullptr) {
    object.background =
        static_cast<std::uint8_t*>(balloc(static_cast<int>(bytes) + object.background_line_bytes));
    if (object.background == nullptr) return 1;
  }
  std::fseek(file.get(), header_bytes, SEEK_SET);
  const bool read = std::fread(object.background, 1, bytes, file.get()) == bytes;
  return read ? 0 : transfer_failed();
}

}  // namespace torve
