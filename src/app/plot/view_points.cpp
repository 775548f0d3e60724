#include "app/plot/view_points.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <new>
#include <utility>

#include "app/plot/decibels.hpp"
#include "app/plot/running_sums.hpp"
#include "app/signal/sample_file.hpp"
#include "base/saturate.hpp"

namespace torve {

namespace {

using Made = std::shared_ptr<const std::vector<float>>;

// Points that have been made of a file's values.
struct KeptPoints {
  KeptFile file;
  int step = 1;
  bool decibels = false;
  Made made;
  int range = 0;
};

std::array<KeptPoints, pane_count> kept;
std::size_t next_kept = 0;

// Differences of sums from the beginning on: the time does not grow with the step. What is no
// number counts as 0 here, so that it does not spoil all that follow.
std::vector<float> sums_of(std::span<const float> values, int step) {
  const std::size_t n = values.size();
  std::vector<double> before(n + 1);
  for (std::size_t i = 0; i < n; ++i) {
    const double value = static_cast<double>(values[i]);
    before[i + 1] = before[i] + (std::isfinite(value) ? value : 0);
  }
  std::vector<float> sums(n);
  for (std::size_t i = 0; i < n; ++i) {
    const std::size_t end = std::min(n, i + static_cast<std::size_t>(step));
    sums[i] = static_cast<float>(before[end] - before[i]);
  }
  return sums;
}

KeptPoints make_points(const PaneView& view, const KeptFile& file) {
  KeptPoints points = {file, view.step, view.decibels, nullptr, 0};
  std::vector<float> made = view.step > 1 ? sums_of(file->values, view.step) : file->values;
  if (view.decibels) {
    points.range = decibel_range(made);
    made = decibel_heights(made, points.range);
  }
  points.made = std::make_shared<const std::vector<float>>(std::move(made));
  return points;
}

const KeptPoints& kept_points(const PaneView& view, const KeptFile& file) {
  for (const KeptPoints& entry : kept) {
    if (entry.file == file && entry.step == view.step && entry.decibels == view.decibels) {
      return entry;
    }
  }
  KeptPoints& entry = kept.at(next_kept);
  entry = make_points(view, file);
  next_kept = (next_kept + 1) % kept.size();
  return entry;
}

}  // namespace

Outcome load_points(const PaneView& view, ViewPoints* loaded) try {
  Outcome nothing = {.cause = Cause::nothing_to_draw, .name = view.file};
  if (view.kind == PaneKind::nothing) return nothing;
  const FileForm form = view.kind == PaneKind::spectrum ? FileForm::spectrum : FileForm::samples;
  KeptFile file;
  Outcome read = keep_file(view.file, form, &file);
  if (!read.is_done()) return read;
  if (file->values.empty()) return nothing;
  *loaded = {file, nullptr, 0};
  if (view.step <= 1 && !view.decibels) return {};
  const KeptPoints& points = kept_points(view, file);
  loaded->made = points.made;
  loaded->decibels = points.range;
  return {};
} catch (const std::bad_alloc&) {
  return {.cause = Cause::no_memory, .name = view.file};
}

double full_scale_of(const PaneView& view, const ViewPoints& loaded) {
  const std::span<const float> all = loaded.file->values;
  const int first = std::max(0, saturate_to_int(view.start));
  const int limit = view.kind == PaneKind::spectrum ? sample_budget(view.samples) : most_samples;
  if (static_cast<std::size_t>(first) >= all.size()) return 0;
  const std::span<const float> behind = all.subspan(static_cast<std::size_t>(first));
  const std::span<const float> taken =
      behind.first(std::min(behind.size(), static_cast<std::size_t>(limit)));
  return static_cast<double>(find_extremes(running_sums(taken, std::max(1, view.step))).largest);
}

bool release_kept_points() {
  bool any = false;
  for (KeptPoints& entry : kept) {
    any = any || entry.made != nullptr;
    entry = {};
  }
  return release_kept_files() || any;
}

}  // namespace torve
