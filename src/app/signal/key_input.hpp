// Single key presses from standard input.
#pragma once

namespace torve {

/// While it lives, a terminal on standard input hands over each key as it is pressed and does not
/// show it. The terminal is put back when the object goes, when the program exits,
/// and when a signal ends or stops it meanwhile. Nothing happens where standard input is no
/// terminal, or where the program runs in its background. One object at a time.
class KeyInput {
 public:
  KeyInput();
  ~KeyInput();
  KeyInput(const KeyInput&) = delete;
  KeyInput& operator=(const KeyInput&) = delete;

  /// Throws away what was typed so far.
  void forget_typed() const;

  /// Waits for a key; false if it is 'q' or the input ends.
  [[nodiscard]] bool wants_more() const;

 private:
  bool is_terminal_ = false;
};

}  // namespace torve
