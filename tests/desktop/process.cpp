#include "desktop/process.hpp"

#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <stdexcept>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace torve::desktop {

namespace {

class SpawnActions {
 public:
  SpawnActions() { posix_spawn_file_actions_init(&actions_); }
  SpawnActions(const SpawnActions&) = delete;
  SpawnActions& operator=(const SpawnActions&) = delete;
  ~SpawnActions() { posix_spawn_file_actions_destroy(&actions_); }
  void open(int number, const std::string& path, int flags) {
    posix_spawn_file_actions_addopen(&actions_, number, path.c_str(), flags, 0644);
  }
  void duplicate(int from, int to) { posix_spawn_file_actions_adddup2(&actions_, from, to); }
  void change_directory(const std::string& path) {
    posix_spawn_file_actions_addchdir_np(&actions_, path.c_str());
  }
  [[nodiscard]] const posix_spawn_file_actions_t* get() const { return &actions_; }

 private:
  posix_spawn_file_actions_t actions_;
};

std::vector<char*> pointers(std::vector<std::string>& words) {
  std::vector<char*> result;
  for (std::string& word : words)
    result.push_back(word.data());
  result.push_back(nullptr);
  return result;
}

// By number: the C library's header for it does not link from C++ in glibc 2.36.
int open_process(pid_t id) {
  return static_cast<int>(syscall(SYS_pidfd_open, id, 0));
}

/// Ours, with `changes` in place of the variables of the same name.
std::vector<std::string> environment_with(const std::vector<std::string>& changes) {
  std::vector<std::string> result = changes;
  for (char** variable = environ; *variable != nullptr; ++variable) {
    const std::string text = *variable;
    const std::string name = text.substr(0, text.find('=') + 1);
    bool replaced = false;
    for (const std::string& change : changes)
      replaced = replaced || change.starts_with(name);
    if (!replaced) result.push_back(text);
  }
  return result;
}

}  // namespace

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept {
  if (this != &other) {
    close();
    number_ = other.release();
  }
  return *this;
}

int Descriptor::release() {
  return std::exchange(number_, -1);
}

void Descriptor::close() {
  if (number_ >= 0) ::close(release());
}

Process::Process(const Command& command) {
  constexpr int write_flags = O_WRONLY | O_CREAT | O_TRUNC;
  SpawnActions actions;
  actions.open(STDIN_FILENO, command.input, O_RDONLY);
  actions.open(STDOUT_FILENO, command.output, write_flags);
  actions.open(STDERR_FILENO, command.errors, write_flags);
  if (command.inherited >= 0) actions.duplicate(command.inherited, 3);
  actions.change_directory(command.directory);

  // A test that is killed must not leave servers behind.
  std::vector<std::string> words = {"setpriv", "--pdeathsig", "KILL", "--"};
  words.insert(words.end(), command.words.begin(), command.words.end());
  std::vector<std::string> environment = environment_with(command.environment);
  if (posix_spawnp(&id_, "setpriv", actions.get(), nullptr, pointers(words).data(),
                   pointers(environment).data()) != 0) {
    throw std::runtime_error("cannot start " + command.words.front());
  }
  end_ = Descriptor(open_process(id_));
}

Process::~Process() {
  if (status_) return;
  kill(SIGKILL);
  (void)wait();
}

void Process::kill(int signal) const {
  if (!status_) ::kill(id_, signal);
}

std::optional<int> Process::wait(std::chrono::milliseconds limit) {
  if (status_ || !wait_readable({end_.get()}, limit)) return status_;
  int state = 0;
  if (waitpid(id_, &state, 0) == id_) {
    status_ = WIFEXITED(state) ? WEXITSTATUS(state) : 128 + WTERMSIG(state);
  }
  return status_;
}

bool wait_readable(const std::vector<int>& descriptors, std::chrono::milliseconds limit) {
  std::vector<pollfd> polled;
  for (const int descriptor : descriptors)
    polled.push_back({descriptor, POLLIN, 0});
  return poll(polled.data(), polled.size(), static_cast<int>(limit.count())) > 0;
}

}  // namespace torve::desktop
