// Reports on AU files, line by line on standard output, each led by its byte position.
//
// Behind the fixed header every line waits for a key of standard input and 'q' ends the listing. On
// a terminal a key counts at once, without Return and unseen, and what was typed before the
// question is thrown away; in a pipe each byte is a key. The end of the input counts as 'q'.
#pragma once

#include <string>

#include "base/outcome.hpp"

namespace torve {

/// Lists the header of an AU file, asks whether to skip the rest of it, and lists that and the
/// samples. Not done if the file cannot be read or is no AU file of this layout.
Outcome report_au_file(const std::string& path);

/// The same; 0, or 1 if it is not done.
int analyse(const std::string& path);

// Not used by the workbench itself.

/// Lists where two files differ as 16-bit words, until either ends. Always 0.
int find_differences(const std::string& path1, const std::string& path2);

}  // namespace torve
