// Numbers in fields, as a user types them and "%g" writes them.
//
// Tabs and blanks before a number are skipped. A reader returns the position behind what it has
// read; without a digit that is the first character that is no blank, and the number is 0.
#pragma once

#include <cstdint>

namespace torve {

/// [+-] digits; what is too large becomes the nearest number there is.
const char* get_short(const char* text, std::int16_t* value);
const char* get_long(const char* text, std::int32_t* value);

/// [+-] digits [. or , digits] [e or E exponent]. The decimals count up to the sixth one behind the
/// zeros that they may begin with. The number goes to the next blank, tab or line end; what is left
/// of it behind these parts does not count. The sign is that of the text, also of "-0.25".
const char* get_float(const char* text, double* value);

}  // namespace torve
