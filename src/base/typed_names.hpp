// Which file a name means that was typed into a field.
//
// Fields hold Latin-1, a byte a character; the names of files are UTF-8 today. A name that is UTF-8
// as it stands (every one of ASCII is) means itself, so nothing changes for it, and nothing for
// names that were handed over as bytes: only a program with fields says that its names are typed.
#pragma once

#include <string>
#include <string_view>

namespace torve {

/// Whether the names that files are opened by may have been typed; false at the start.
void take_names_as_typed(bool typed);

/// The file that a result of this name goes to: the name in UTF-8.
[[nodiscard]] std::string meant_output(const std::string& name);

/// The file that is read by this name: that of the very bytes if there is one, else meant_output.
[[nodiscard]] std::string meant_input(const std::string& name);

/// Latin-1, a byte a character, as UTF-8.
[[nodiscard]] std::string utf8_of_latin1(std::string_view text);

}  // namespace torve
