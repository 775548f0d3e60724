#include "gif/lzw.hpp"

#include <algorithm>
#include <bit>
#include <utility>

namespace torve {

namespace {

constexpr int clear_code = 256;
constexpr int end_code = 257;
constexpr int first_free_code = 258;
constexpr int code_limit = 4096;
constexpr int start_code_size = 9;
constexpr std::size_t block_bytes = 255;

}  // namespace

int GetCodeLength(int n) {
  return std::clamp(static_cast<int>(std::bit_width(static_cast<unsigned>(n))), 3, 12);
}

LzwEncoder::LzwEncoder() {
  clear_dictionary();
  WriteCode(clear_code, start_code_size);
}

void LzwEncoder::encode(std::span<const std::uint8_t> bytes) {
  for (const std::uint8_t byte : bytes)
    EncodeLZW(byte);
}

std::vector<std::uint8_t> LzwEncoder::finish() {
  if (prefix_ >= 0) WriteCode(prefix_, code_size_);
  WriteCode(end_code, code_size_);
  if (partial_bits_ > 0) block_.push_back(static_cast<std::uint8_t>(partial_));
  close_block();
  data_.push_back(0);
  return std::move(data_);
}

void LzwEncoder::EncodeLZW(std::uint8_t byte) {
  if (prefix_ < 0) {
    prefix_ = byte;
    return;
  }
  Entry& entry = dictionary_[slot_of(prefix_, byte)];
  if (entry.key >= 0) {
    prefix_ = entry.code;
    return;
  }
  WriteCode(prefix_, code_size_);
  if (next_code_ < code_limit) {
    entry = {prefix_ << 8 | byte, next_code_};
    code_size_ = GetCodeLength(next_code_++);
  } else {
    WriteCode(clear_code, code_size_);
    clear_dictionary();
  }
  prefix_ = byte;
}

void LzwEncoder::WriteCode(int code, int bits) {
  partial_ |= static_cast<unsigned>(code) << partial_bits_;
  for (partial_bits_ += bits; partial_bits_ >= 8; partial_bits_ -= 8) {
    block_.push_back(static_cast<std::uint8_t>(partial_ & 0xFFU));
    partial_ >>= 8;
    if (block_.size() == block_bytes) close_block();
  }
}

void LzwEncoder::close_block() {
  if (block_.empty()) return;
  data_.push_back(static_cast<std::uint8_t>(block_.size()));
  data_.insert(data_.end(), block_.begin(), block_.end());
  block_.clear();
}

void LzwEncoder::clear_dictionary() {
  dictionary_.fill({});
  next_code_ = first_free_code;
  code_size_ = start_code_size;
}

std::size_t LzwEncoder::slot_of(int prefix, std::uint8_t byte) const {
  const int key = prefix << 8 | byte;
  std::size_t slot =
      static_cast<std::size_t>(static_cast<unsigned>(key) * 2654435761U >> 19) % slot_count;
  while (dictionary_[slot].key >= 0 && dictionary_[slot].key != key) {
    slot = (slot + 1) % slot_count;
  }
  return slot;
}

}  // namespace torve
