// The LZW encoder of the GIF writer.
//
// Codes are packed from the least significant bit up into sub-blocks of at most 255 bytes, each
// led by its length; a zero byte ends the data. The code width grows after the entry that needs
// it has been made; after entry 4095 the dictionary is given up and begins anew.
// (T. A. Welch, "A Technique for High-Performance Data Compression", IEEE Computer 17/6, 1984.)
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace torve {

/// Bits of n, at least 3 and at most 12.
[[nodiscard]] int GetCodeLength(int n);

/// Turns bytes into sub-blocks.
class LzwEncoder {
 public:
  LzwEncoder();

  void encode(std::span<const std::uint8_t> bytes);

  /// Ends the data and hands them over: everything from the first sub-block to the zero byte.
  [[nodiscard]] std::vector<std::uint8_t> finish();

 private:
  void EncodeLZW(std::uint8_t byte);
  void WriteCode(int code, int bits);
  void close_block();
  void clear_dictionary();
  [[nodiscard]] std::size_t slot_of(int prefix, std::uint8_t byte) const;

  static constexpr std::size_t slot_count = 1 << 13;  // more than twice the entries there can be

  struct Entry {
    int key = -1;  // prefix and last byte, -1: empty
    int code = 0;
  };
  std::array<Entry, slot_count> dictionary_;
  int next_code_ = 0;
  int code_size_ = 0;
  int prefix_ = -1;

  std::vector<std::uint8_t> data_;
  std::vector<std::uint8_t> block_;
  unsigned partial_ = 0;  // bits that do not fill a byte yet
  int partial_bits_ = 0;
};

}  // namespace torve
