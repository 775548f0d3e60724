#include "dialogs/outcomes.hpp"

#include "base/errors.hpp"
#include "dialogs/messages.hpp"
#include "dialogs/strip.hpp"

namespace torve {

namespace {

int show_in_window(Cause cause, const char* name) {
  switch (cause) {
    case Cause::done:
    case Cause::cancelled:  // nobody needs to be told that loudly what he has just asked for
      break;
    case Cause::no_file:
    case Cause::unreadable:
    case Cause::not_run:
      return cannot_find_file(name);
    case Cause::not_created:
    case Cause::not_written:
      return cannot_create_file(name);
    case Cause::no_memory:
      return no_memory();
    case Cause::too_few_samples:
    case Cause::start_behind_end:
      return too_few_samples(name);
    case Cause::no_match:
      return no_match_near_start(name);
    case Cause::negative_start:
      return unknown_parameter("a negative start");
    case Cause::not_au_file:
    case Cause::nothing_to_draw:
    case Cause::unknown_ending:
    case Cause::not_sound:
    case Cause::out_of_range:
    case Cause::silent:
    case Cause::no_codec:
      return not_a_signal(name);
    case Cause::no_spectrum:
      return spectrum_wanted_first();
  }
  return 0;
}

}  // namespace

void show_outcome(const Outcome& outcome) {
  show_in_window(outcome.cause, outcome.name.c_str());
  say_outcome(outcome);
}

void show_first_failure(std::initializer_list<Outcome> outcomes) {
  for (const Outcome& outcome : outcomes) {
    if (!outcome.is_done()) return show_outcome(outcome);
  }
}

void say_outcome(const Outcome& outcome) {
  std::string said = sentence(outcome);
  if (!outcome.kept_as.empty()) {
    if (!said.empty()) said += "; ";
    said += "kept as " + outcome.kept_as;
  }
  if (!said.empty()) say_in_strip(said);
}

}  // namespace torve
