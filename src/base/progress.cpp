#include "base/progress.hpp"

#include <algorithm>

namespace torve {

namespace {

const Watcher* registered = nullptr;
const Watcher* watching = nullptr;  // while a computation runs

double part_from = 0, part_to = 1;  // of the present part, in terms of all the work
double told = 0;

}  // namespace

void set_watcher(const Watcher* watcher) {
  registered = watcher;
}

void tell_done(double fraction) {
  if (watching == nullptr) return;
  told = part_from + std::clamp(fraction, 0.0, 1.0) * (part_to - part_from);
  tell_alive();
}

void tell_alive() {
  if (watching != nullptr && !watching->goes_on(told)) throw Cancelled();
}

PartOfWork::PartOfWork(double from, double to) : around_(part_from, part_to) {
  const double size = part_to - part_from;
  part_to = part_from + to * size;
  part_from += from * size;
}

Unwatched::Unwatched() : before_(watching) {
  watching = nullptr;
}

WatchedWork::WatchedWork(const std::string& output) {
  told = 0;
  watching = registered;
  if (watching != nullptr) watching->begin(output);
}

WatchedWork::~WatchedWork() {
  if (watching != nullptr) watching->end();
  watching = nullptr;
}

}  // namespace torve
