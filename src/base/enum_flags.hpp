// Bit operators for enum classes that ask for them:
//   enum class Edge : unsigned { left = 1, right = 2 };
//   template <> inline constexpr bool is_flag_enum<Edge> = true;
#pragma once

#include <type_traits>

namespace torve {

template <typename E>
inline constexpr bool is_flag_enum = false;

template <typename E>
concept FlagEnum = std::is_enum_v<E> && is_flag_enum<E>;

template <FlagEnum E>
constexpr E operator|(E a, E b) {
  using U = std::underlying_type_t<E>;
  return static_cast<E>(static_cast<U>(a) | static_cast<U>(b));
}

template <FlagEnum E>
constexpr E operator&(E a, E b) {
  using U = std::underlying_type_t<E>;
  return static_cast<E>(static_cast<U>(a) & static_cast<U>(b));
}

template <FlagEnum E>
constexpr E operator^(E a, E b) {
  using U = std::underlying_type_t<E>;
  return static_cast<E>(static_cast<U>(a) ^ static_cast<U>(b));
}

template <FlagEnum E>
constexpr E operator~(E a) {
  using U = std::underlying_type_t<E>;
  return static_cast<E>(~static_cast<U>(a));
}

template <FlagEnum E>
constexpr bool has(E set, E bits) {
  return (set & bits) == bits;
}

}  // namespace torve
