// torve-batch: the analyses without a window, for scripts.

#include <algorithm>
#include <cstdio>
#include <string>
#include <string_view>
#include <unistd.h>
#include <vector>

#include "base/console.hpp"
#include "batch/commands.hpp"
#include "batch/status.hpp"

namespace {

using namespace torve;

void print_usage(std::FILE* to, const Command& command) {
  std::fprintf(to, "usage: torve-batch %s %s\n", command.name, command.parameters);
}

int print_help() {
  std::printf("usage: torve-batch COMMAND ...\n\n");
  for (const Command& command : all_commands()) {
    std::printf("  %s %s\n      %s\n", command.name, command.parameters, command.summary);
  }
  std::printf(
      "\nAn input named first may be - for standard input; an output named by the user may be -\n"
      "for standard output (but for OUT.spe of the two filters), and messages then go to standard\n"
      "error. report, which reads answers, takes a name alone, as plot and figure do for inputs;\n"
      "their output to - needs --format.\n"
      "SAMPLES is a number or \"all\". RANGE is --start N or --end N or both: samples N, counted\n"
      "from 0, are the first taken and the first not taken. --values prints OFFSET SCALE MEAN\n"
      "alone.\n"
      "Exit status: 0 done, 1 wrong usage, 2 failed.\n");
  return exit_done;
}

int run(const std::string& name, Words words) {
  const auto commands = all_commands();
  const auto command = std::find_if(commands.begin(), commands.end(),
                                    [&](const Command& known) { return name == known.name; });
  if (command == commands.end()) {
    std::fprintf(stderr, "torve-batch: no command %s (see torve-batch --help)\n", name.c_str());
    return exit_usage;
  }
  const auto request = parse_request(command->name, command->options, words);
  const bool fits = request && command->least_words <= request->words.size() &&
                    request->words.size() <= command->most_words;
  const int status = fits ? command->run(*request) : exit_usage;
  if (status == exit_usage) print_usage(stderr, *command);
  return status;
}

int print_version() {
  std::printf("torve-batch %s\n", TORVE_VERSION);
  return exit_done;
}

/// `status`, if what was asked for and is printed has arrived.
int printed(int status) {
  const bool failed = std::fflush(stdout) != 0 || std::ferror(stdout) != 0;
  if (status != exit_done || (!failed && !started_without(STDOUT_FILENO))) return status;
  std::fprintf(stderr, "torve-batch: standard output could not be written\n");
  return exit_failed;
}

}  // namespace

int main(int argc, char** argv) {
  set_up_console();
  const std::vector<std::string> words(argv + std::min(argc, 1), argv + argc);
  if (words.empty()) {
    std::fprintf(stderr, "usage: torve-batch COMMAND ... (see torve-batch --help)\n");
    return exit_usage;
  }
  if (words[0] == "--help") return printed(print_help());
  if (words[0] == "--version") return printed(print_version());
  const int status = run(words[0], Words(words).subspan(1));
  return words[0] == "report" ? printed(status) : status;
}
