// Opening files: the one place where it happens.
//
// Names are taken as given, relative to the working directory; those of inputs and outputs may have
// been typed (typed_names.hpp). The program's own files (fonts,
// pictures, messages, templates) may be replaced by files of the same name in the working
// directory and otherwise come from the data directory that belongs to the running executable.
#pragma once

#include <cstdio>
#include <memory>
#include <string>

namespace torve {

struct FileCloser {
  void operator()(std::FILE* file) const { std::fclose(file); }
};

/// An open stream that closes itself; null when opening failed.
using FilePtr = std::unique_ptr<std::FILE, FileCloser>;

/// fopen.
[[nodiscard]] FilePtr open_file(const std::string& name, const char* mode);

/// fopen for reading, for regular files only (a directory or a device gives null, so that no
/// reader can be made to read for ever).
[[nodiscard]] FilePtr open_regular_file(const std::string& name, const char* mode);

/// The directory that the running executable lies in, with a final slash: the programs of an
/// installation lie beside each other.
[[nodiscard]] std::string program_directory();

/// Sub-directories of the data directory.
enum class DataKind { font, picture, include };

/// The data directory's "font/", "fn2/" or "inc/", with a final slash. It lies where an
/// installation puts it as seen from the running executable, usually "../share/torve".
[[nodiscard]] std::string data_directory(DataKind kind);

/// Opens one of the program's own files: in the working directory with `mode`; if that fails, in
/// the data directory with `mode`, and there also when the file can only be read.
[[nodiscard]] FilePtr open_data_file(const std::string& name, DataKind kind, const char* mode);

/// The second half of open_data_file alone: the data directory.
[[nodiscard]] FilePtr open_installed_file(const std::string& name, DataKind kind, const char* mode);

/// The absolute name of a part of the program that is loaded when it is first needed. It lies where
/// an installation puts it as seen from the running executable, usually in "../lib/torve/modules".
[[nodiscard]] std::string module_path(const std::string& name);

/// Whether an output would replace the file that an input is read from (same device and inode, also
/// through links).
[[nodiscard]] bool same_file(const std::string& input, const std::string& output);

/// Cuts a file name at its last '.'; a name without one stays as it is.
[[nodiscard]] std::string strip_off_ending(const std::string& name);

}  // namespace torve
