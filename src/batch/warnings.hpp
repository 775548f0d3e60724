// What is taken otherwise than its writer may have meant it, said on standard error.
#pragma once

#include <string>

#include "app/signal/sample_file.hpp"
#include "batch/request.hpp"

namespace torve {

/// A sample file whose first column is no whole number, and, where it is read within the limit of
/// an analysis, one with more lines in `range` than are taken.
enum class Taken { as_analyses_do, whole };
void warn_about_signal(const std::string& name, const SampleRange& range = {},
                       Taken taken = Taken::as_analyses_do);

/// An AU file that is not mono, 44,100 samples a second, 32-bit floating point, little-endian.
void warn_about_au(const std::string& name);

/// A sample file without a sample.
void warn_if_empty(const std::string& name);

/// "torve-batch: warning: NAME WHAT".
void warn(const std::string& name, const std::string& what);

}  // namespace torve
