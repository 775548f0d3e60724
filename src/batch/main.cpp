// torve-batch: the analyses without a window, for scripts.

#include <algorithm>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "base/console.hpp"
#include "batch/commands.hpp"

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
      "error. report, which reads answers, and plot, which looks at endings, take names alone.\n"
      "SAMPLES is a number or \"all\".\n"
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
  const bool fits = command->least_words <= words.size() && words.size() <= command->most_words;
  const int status = fits ? command->run(words) : exit_usage;
  if (status == exit_usage) print_usage(stderr, *command);
  if (status == exit_failed) std::fprintf(stderr, "torve-batch: %s failed\n", command->name);
  return status;
}

}  // namespace

int main(int argc, char** argv) {
  set_up_console();
  const std::vector<std::string> words(argv + std::min(argc, 1), argv + argc);
  if (words.empty()) {
    std::fprintf(stderr, "usage: torve-batch COMMAND ... (see torve-batch --help)\n");
    return exit_usage;
  }
  if (words[0] == "--help") return print_help();
  if (words[0] == "--version") {
    std::printf("torve-batch %s\n", TORVE_VERSION);
    return exit_done;
  }
  return run(words[0], Words(words).subspan(1));
}
