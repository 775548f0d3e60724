#include "desktop/harness.hpp"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <unistd.h>

namespace torve::desktop {

namespace {

namespace fs = std::filesystem;

fs::path new_folder() {
  std::string name = fs::temp_directory_path() / "torve-desktop-XXXXXX";
  if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("cannot create " + name);
  fs::permissions(name, fs::perms(0755));
  return name;
}

std::string read_text(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

/// Root may write whatever the permissions say; the user "nobody" may not.
std::vector<std::string> program_words(const fs::path& program, bool ordinary_user) {
  if (!ordinary_user || geteuid() != 0) return {program.string()};
  const std::string nobody = "65534";
  return {"setpriv", "--reuid",        nobody, "--regid",
          nobody,    "--clear-groups", "--",   program.string()};
}

}  // namespace

Desktop::Desktop()
    : home_(new_folder()),
      folder_(home_ / "work"),
      program_(TORVE_PROGRAM),
      server_(std::make_unique<XServer>()) {
  fs::copy(fs::path(TORVE_DATA_DIR) / "signals", folder_);
}

Desktop::~Desktop() {
  if (HasFailure()) keep_evidence();
  process_.reset();
  server_.reset();
  std::error_code ignored;
  fs::remove_all(home_, ignored);
}

void Desktop::use_screen(const std::string& screen) {
  server_.reset();
  server_ = std::make_unique<XServer>(screen);
}

fs::path Desktop::use_copied_installation() {
  const fs::path share = home_ / "share" / "torve";
  fs::create_directories(home_ / "bin");
  fs::create_directories(share);
  program_ = home_ / "bin" / "torve";
  constexpr auto afresh = fs::copy_options::recursive | fs::copy_options::overwrite_existing;
  fs::copy(TORVE_PROGRAM, program_, afresh);
  fs::copy(TORVE_DATA_DIR, share, afresh);
  return share;
}

void Desktop::use_input(const std::string& text) {
  input_ = home_ / "input";
  std::ofstream(input_) << text;
}

void Desktop::launch() {
  process_ = std::make_unique<Process>(Command{.words = program_words(program_, ordinary_user_),
                                               .environment = {"DISPLAY=" + server_->name()},
                                               .directory = folder_,
                                               .input = input_,
                                               .output = home_ / "output",
                                               .errors = home_ / "errors"});
}

void Desktop::start() {
  launch();
  window_ = server_->wait_for_window(*process_);
  if (window_ == 0)
    throw std::runtime_error("no window; the program wrote:\n" + output() + errors());
  settle();
}

void Desktop::settle() {
  if (!server_->ping(window_, *process_)) {
    throw std::runtime_error("no answer; the program wrote:\n" + output() + errors());
  }
}

void Desktop::press(int x, int y, int button) {
  server_->move_pointer(window_, x, y);
  server_->button(button, true);
}

void Desktop::release(int button) {
  server_->button(button, false);
}

void Desktop::click(int x, int y, int button) {
  press(x, y, button);
  release(button);
}

void Desktop::key(unsigned long keysym) {
  server_->key(keysym);
  settle();
}

void Desktop::type(const std::string& text) {
  for (const char letter : text)
    key(static_cast<unsigned char>(letter));
}

int Desktop::exit_status() {
  return process_->wait().value_or(-1);
}

bool Desktop::running() {
  return !process_->wait(std::chrono::milliseconds(0));
}

std::string Desktop::output() const {
  return read_text(home_ / "output");
}

testing::AssertionResult Desktop::wrote(const std::string& text) const {
  if (output().find(text) != std::string::npos) return testing::AssertionSuccess();
  return testing::AssertionFailure() << "it wrote:\n" << output();
}

std::string Desktop::errors() const {
  return read_text(home_ / "errors");
}

void Desktop::keep_evidence() {
  const fs::path place = "tests/desktop";
  const std::string name = testing::UnitTest::GetInstance()->current_test_info()->name();
  fs::create_directories(place);
  std::ofstream(place / (name + ".log")) << output() << errors();
  if (window_ != 0 && process_ && running()) write_ppm(screenshot(), place / (name + ".ppm"));
}

}  // namespace torve::desktop
