#include "diagram/model/vobj.hpp"

#include <memory>
#include <new>

#include "base/errors.hpp"
#include "draw/draw_vector.hpp"

namespace torve {

Vobj* firstvobj = nullptr;
Vobj* lastvobj = nullptr;
Vobj* cvobj = nullptr;
int vobjmode = 0;

namespace {

int last_serial = 0;

template <typename Wanted>
Vobj* first_figure(Wanted wanted) {
  for (Vobj* figure = firstvobj; figure != nullptr; figure = figure->next) {
    if (wanted(*figure)) return figure;
  }
  return nullptr;
}

}  // namespace

FigurePlace place_of(const Vobj& figure) {
  return {figure.x1, figure.y1, figure.x2, figure.y2};
}

bool is_seen(const Vobj& figure) {
  if (figure.phase == 0) return false;
  return figure.label != nullptr || row_of(figure.kind).shows(place_of(figure));
}

int new_serial() {
  return ++last_serial;
}

Vobj* figure_of(int serial) {
  return first_figure([serial](const Vobj& figure) { return figure.serial == serial; });
}

Vobj* owner_of(const Vobj* label) {
  return first_figure([label](const Vobj& figure) { return figure.label == label; });
}

Vobj* create_vector_obj(FigureKind kind) try {
  auto figure = std::make_unique<Vobj>();
  figure->serial = new_serial();
  figure->kind = kind;
  figure->saved.assign(row_of(kind).held_slots, empty_slot);
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
  if (Vobj* owner = owner_of(figure)) owner->label = nullptr;
  if (cvobj == figure) cvobj = nullptr;
  unlink_vobj(figure);
  const std::unique_ptr<Vobj> released(figure);
  return 0;
}

}  // namespace torve
