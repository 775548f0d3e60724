// The pixels under window objects, and their pictures while they move.
//
// A saved picture is a plane buffer (draw/plane_copy.hpp) of gplanes planes whose first pixel is
// the first bit of its row, wherever it lay on the canvas: width / 8 + 1 bytes hold it at any x.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "draw/plane_copy.hpp"
#include "wm/wd_object.hpp"

namespace torve {

inline constexpr std::size_t staging_bytes = 489'601;  // of the two shared buffers at start

// State: the shared buffers, written by allocate_staging and release_staging; fg_to_fgbuf lets
// fgbuffer grow with its pictures.
extern std::vector<std::uint8_t> fgbuffer;  // the picture of the object being moved
extern std::vector<std::uint8_t> bgbuffer;

/// Empties the table. `options` and `mask` name further work buffers, of which none is needed.
/// Returns 0.
int init_win(int options, int mask);
int free_win(int options, int mask);

/// Obtains the shared buffers; false when there is no memory.
[[nodiscard]] bool allocate_staging();
void release_staging();

/// Fills in the sizes that are still -1; unless `sizes_only`, saves the canvas under the object
/// into its background, which is taken from the pool when there is none. Returns 0, or 2 when the
/// pool has no memory.
int make_background(WdObject& object, bool sizes_only);

/// Puts the saved background back on the canvas and, unless the object is off-screen, gives the
/// buffer back to the pool. An object that is not painted restores nothing. Returns 0, or 1 after
/// illegal_pointer(8) for an id below 1.
int remove_background(int id);

/// The pixels that a painted object covers: its background, or what its kind keeps instead of
/// one. Null when none are held.
[[nodiscard]] std::uint8_t* covered_pixels(const WdObject& object);

/// Gives the buffer back to the pool, whatever the state.
void release_background(WdObject& object);

/// A background buffer for the object's present size in place of the old one. Nothing is saved.
/// Returns 0, or 1 when the pool has no memory (the old one is kept). In terminal mode it only says
/// "change_background\n".
int change_background(int id);

/// How an object's saved picture lies in memory.
[[nodiscard]] PlaneLayout background_layout(const WdObject& object);

/// Takes an object's picture off the canvas: the pixels that it covers come back.
void take_picture_off(int id);

/// Copies the object's picture from the canvas into fgbuffer. Returns 0, or 1 (illegal_pointer(10)
/// for an id below 1; without that buffer "no fgbuf\n", a key and illegal_pointer(100); no memory).
int fg_to_fgbuf(int id);

/// Mode 2 is take_picture_off (x and y are ignored); mode 0 puts the picture of
/// fgbuffer at (x, y), saving what it covers; mode 1 does one after the other. Modes 0 and 1 store
/// the position. Nothing happens without a valid picture or background.
void movingPicture(int x, int y, int mode, int id);

/// The outline of a move: four runs of pixels that share none, and the pixels they cover.
void draw_outline(const Rect& rect);
void erase_outline();

/// Whether a buffer field's value is the number of a page of an external store (1 .. 72) and not
/// an address.
[[nodiscard]] constexpr int buf_in_extmem(std::uintptr_t value) {
  return value > 0 && value < 73 ? 1 : 0;
}

/// Whether the pixels that a painted object covers are in its file now, and not in memory.
[[nodiscard]] bool is_on_file(const WdObject& object);

/// An object comes to rest in the books, and its background in a file if it has the flag
/// background_on_file; whoever needs the pixels fetches them. A background that cannot be written
/// stays in memory.
void rest_background(int id);
void fetch_background(int id);

/// For objects with flag background_on_file: writes the background to its file and releases the
/// buffer, and reads it back. Return -1 for any other object, 0, or 1 after the error was shown.
int if_b_opt_bgtofile(int id);
int if_b_opt_bgfromfile(int id);

}  // namespace torve
