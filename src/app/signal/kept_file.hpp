// The values of sample and spectrum files, kept while the files are unchanged.
//
// A file of minutes takes a while to read. Whoever looks at it again and again asks here and gets
// what was read the first time, until the file is another one or has been written to. What nobody
// holds is given back when memory runs short.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "base/outcome.hpp"

namespace torve {

struct FileValues {
  std::vector<float> values;  // all of them, in line order
  int size = 0;               // K of a spectrum's first line, at least 1; 0 for samples
};
using KeptFile = std::shared_ptr<const FileValues>;

enum class FileForm { samples, spectrum };

/// The values of a file. Not done: no_file, unreadable or no_memory, and `*kept` is untouched;
/// nothing_to_draw for a spectrum without a first line.
Outcome keep_file(const std::string& name, FileForm form, KeptFile* kept);

/// Forgets all files that nobody holds; whether there was one.
bool release_kept_files();

}  // namespace torve
