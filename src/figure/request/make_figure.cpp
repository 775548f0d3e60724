#include "figure/request/make_figure.hpp"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "base/files.hpp"
#include "base/output_file.hpp"
#include "base/typed_names.hpp"
#include "figure/request/drawn_figure.hpp"

namespace torve {

namespace {

constexpr const char* program_name = "torve-figure";

struct Pipe {
  FilePtr from, to;
};

// Neither end is one of the streams 0 .. 2, which set_up_console has left open.
Pipe open_pipe() {
  std::array<int, 2> ends = {-1, -1};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) return {};
  return {FilePtr(fdopen(ends[0], "rb")), FilePtr(fdopen(ends[1], "wb"))};
}

FilePtr file_with(std::string_view bytes) {
  FilePtr file(std::tmpfile());
  if (!file || std::fwrite(bytes.data(), 1, bytes.size(), file.get()) != bytes.size() ||
      std::fflush(file.get()) != 0) {
    return nullptr;
  }
  std::rewind(file.get());
  return file;
}

// Starts it with these two as its standard input and output; 0 or the reason why not.
int start(const std::string& program, std::vector<std::string> words, std::FILE* input,
          std::FILE* output, pid_t* process) {
  std::vector<char*> arguments;
  words.insert(words.begin(), program);
  arguments.reserve(words.size() + 1);
  for (std::string& word : words)
    arguments.push_back(word.data());
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  if (input != nullptr) {
    posix_spawn_file_actions_adddup2(&actions, fileno(input), STDIN_FILENO);
  } else {
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  }
  posix_spawn_file_actions_adddup2(&actions, fileno(output), STDOUT_FILENO);
  posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);
  const int error =
      posix_spawn(process, program.c_str(), &actions, nullptr, arguments.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  return error;
}

std::string all_of(std::FILE* stream) {
  std::string bytes;
  std::array<char, 1 << 14> piece;
  for (;;) {
    const ssize_t got = read(fileno(stream), piece.data(), piece.size());
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) return bytes;
    bytes.append(piece.data(), static_cast<std::size_t>(got));
  }
}

int status_of(pid_t process) {
  int status = 0;
  while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
  }
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

DrawnFigure draw(const FigureRequest& request, std::string_view memory) {
  const std::string program = program_directory() + program_name;
  const auto failed = [&program](int error) {
    return DrawnFigure{{.cause = Cause::not_run, .name = program, .error = error}, {}};
  };
  const FilePtr input = memory.empty() ? nullptr : file_with(memory);
  Pipe pipe = open_pipe();
  if ((!memory.empty() && !input) || !pipe.from || !pipe.to) return failed(errno);
  pid_t process = 0;
  const int error = start(program, figure_arguments(request), input.get(), pipe.to.get(), &process);
  if (error != 0) return failed(error);
  pipe.to.reset();
  const std::string bytes = all_of(pipe.from.get());
  const auto drawn = drawn_figure_of(status_of(process), bytes);
  return drawn ? *drawn : failed(0);
}

}  // namespace

Outcome make_figure(FigureRequest request, const std::string& output, std::string_view memory) {
  // The program is handed names, not what was typed.
  for (FigureInput& input : request.inputs)
    input.name = meant_input(input.name);
  const DrawnFigure drawn = draw(request, memory);
  if (!drawn.outcome.is_done()) return drawn.outcome;
  OutputFile file(output);
  if (!file) return file.outcome();
  file.write(drawn.bytes);
  static_cast<void>(file.finish());  // the outcome says it
  return file.outcome();
}

}  // namespace torve
