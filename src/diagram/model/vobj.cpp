#include "diagram/model/vobj.hpp"

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>
#include <unordered_map>
#include <unordered_set>

#include "base/errors.hpp"
#include "draw/draw_vector.hpp"

namespace torve {

Vobj* firstvobj = nullptr;
Vobj* lastvobj = nullptr;
Vobj* cvobj = nullptr;
int vobjmode = 0;

namespace {

int last_serial = 0;
int last_identity = 0;

// Every figure of the list, by its serial number.
std::unordered_map<int, Vobj*>& figures_by_serial() {
  static std::unordered_map<int, Vobj*> figures;
  return figures;
}

// The next one; when a file has named the highest, the lowest that is free.
int new_identity() {
  if (last_identity < highest_identity) return last_identity + 1;
  std::unordered_set<int> taken;
  for (const Vobj* figure = firstvobj; figure != nullptr; figure = figure->next)
    taken.insert(figure->identity);
  int identity = 1;
  while (taken.contains(identity))
    ++identity;
  return identity;
}

}  // namespace

FigurePlace place_of(const FigureRecord& figure) {
  return {figure.x1, figure.y1, figure.x2, figure.y2};
}

bool shows(const FigureRecord& figure) {
  if (figure.kind == FigureKind::label && is_blank(figure.text)) return false;
  return !figure.bends.empty() || row_of(figure.kind).shows(place_of(figure));
}

bool is_seen(const Vobj& figure) {
  if (figure.phase == 0) return false;
  return shows(figure) || (figure.label != nullptr && shows(*figure.label));
}

void store_text(char (&to)[vobj_name_size], const char* text) {
  std::strncpy(to, text, label_text_length);
  to[label_text_length] = 0;
}

bool is_blank(const char* text) {
  return text[std::strspn(text, " \t")] == 0;
}

int new_serial() {
  return ++last_serial;
}

void keep_identities_above(int identity) {
  last_identity = std::max(last_identity, identity);
}

void restart_identities() {
  last_identity = 0;
}

Vobj* figure_of(int serial) {
  const auto found = figures_by_serial().find(serial);
  return found != figures_by_serial().end() ? found->second : nullptr;
}

Vobj* owner_of(const Vobj* label) {
  return label->owner;
}

void link_label(Vobj* owner, Vobj* label) {
  if (owner->label != nullptr && owner->label->owner == owner) owner->label->owner = nullptr;
  owner->label = label;
  if (label == nullptr) return;
  if (label->owner != nullptr && label->owner != owner) label->owner->label = nullptr;
  label->owner = owner;
}

Vobj* create_vector_obj(FigureKind kind) {
  return create_vector_obj(kind, new_serial(), new_identity());
}

Vobj* create_vector_obj(FigureKind kind, int serial, int identity) try {
  auto figure = std::make_unique<Vobj>();
  figure->serial = serial;
  figure->identity = identity;
  figure->kind = kind;
  figure->saved.assign(row_of(kind).held_slots, empty_slot);
  figures_by_serial()[serial] = figure.get();
  keep_identities_above(identity);
  Vobj* made = figure.release();
  link_last_vobj(made);
  return made;
} catch (const std::bad_alloc&) {
  no_memory();
  return nullptr;
}

void link_last_vobj(Vobj* figure) {
  figure->next = nullptr;
  figure->prev = lastvobj;
  (lastvobj != nullptr ? lastvobj->next : firstvobj) = figure;
  lastvobj = figure;
}

void unlink_vobj(Vobj* figure) {
  (figure->prev != nullptr ? figure->prev->next : firstvobj) = figure->next;
  (figure->next != nullptr ? figure->next->prev : lastvobj) = figure->prev;
  figure->next = figure->prev = nullptr;
}

int remove_vobj(Vobj* figure) {
  if (figure->owner != nullptr && figure->owner->label == figure) figure->owner->label = nullptr;
  if (figure->label != nullptr) figure->label->owner = nullptr;
  if (cvobj == figure) cvobj = nullptr;
  // What was never placed has had no life to be told apart in.
  if (figure->phase == 0 && figure->identity == last_identity) --last_identity;
  figures_by_serial().erase(figure->serial);
  unlink_vobj(figure);
  const std::unique_ptr<Vobj> released(figure);
  return 0;
}

}  // namespace torve
