// Files that never replace one another: each gets a name that was free until then.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace torve {

/// Writes `text` to a new file that only the user may read. Its name is the first of `names` where
/// that succeeds, with ".2", ".3" ... behind it when such a file exists. Returns the name; empty
/// when it succeeds nowhere.
[[nodiscard]] std::string write_new_file(std::span<const std::string> names, std::string_view text);

/// Whether the content is to be copied, or has only to outlive its old name: then it may be the
/// same file under both.
enum class Keeping { copy, link };

/// Gives the content of a regular file a second name: its own and ".bak", or ".bak.2" and so on
/// when that exists. Returns that name; empty, with errno set, when it cannot be made.
[[nodiscard]] std::string keep_content(const std::string& name, Keeping keeping);

}  // namespace torve
