// What figures say about the model that they stand for: for each kind of property menu the numbers
// and texts of a figure, under the keys of files, with the menu's line, unit and words.
#pragma once

#include <iterator>
#include <span>
#include <string>
#include <string_view>

#include "diagram/model/vobj.hpp"
#include "diagram/model/vocabularies.hpp"

namespace torve {

/// Where a figure keeps a property.
using IntegerOf = int& (*)(FigureRecord& figure);
using RealOf = double& (*)(FigureRecord& figure);
using NameText = char[vobj_name_size];
using TextOf = NameText& (*)(FigureRecord& figure);

template <int FigureRecord::*member>
int& integer_of(FigureRecord& figure) {
  return figure.*member;
}
template <int n>
int& int_of(FigureRecord& figure) {
  return figure.integer[n - 1];
}
template <int n>
double& value_of(FigureRecord& figure) {
  return figure.value[n - 1];
}
template <NameText FigureRecord::*member>
NameText& text_of(FigureRecord& figure) {
  return figure.*member;
}

/// An integer, a real or a text.
struct FigureProperty {
  const char* key = "";   // in files
  const char* line = "";  // of the menu, without its blanks and units
  const char* unit = "";
  IntegerOf integer = nullptr;
  RealOf real = nullptr;
  TextOf text = nullptr;
  Vocabulary words = {};  // the integer is the code of one of these
  int first_entry = 0;    // of the words: for a code that is none
  int code_bits = 0;      // 0: the integer is the code; otherwise its low bits are, and what is
                          // above them is a number of its own
  bool is_share = false;  // a real of 0 .. 1, or no_probability, which is shown as nothing
};

// --- the tables ---------------------------------------------------------------------------------

inline constexpr FigureProperty name_property = {
    .key = "name", .line = "Name", .text = text_of<&FigureRecord::name>};

inline constexpr FigureProperty node_properties[] = {
    {.key = "servers", .line = "Servers", .integer = integer_of<&FigureRecord::servers>},
    {.key = "ps_mode",
     .line = "PS-mode",
     .integer = integer_of<&FigureRecord::ps_mode>,
     .words = ps_modes},
    {.key = "selection_rule",
     .line = "Selection rule",
     .integer = integer_of<&FigureRecord::selection_rule>,
     .words = selection_rules},
    {.key = "exit_filter",
     .line = "Exit filter",
     .integer = integer_of<&FigureRecord::exit_filter>,
     .words = exit_filters},
    name_property,
    {.key = "value4", .line = "Queue length", .real = value_of<4>},
};
// Boxes and lines have the first lines of a node's menu.
inline constexpr std::size_t properties_of_a_box = 5;
inline constexpr std::size_t properties_of_a_line = 3;

// A site names these itself.
inline constexpr FigureProperty nodeb_properties[] = {
    name_property,
    {.key = "servers", .line = "Attr1", .integer = integer_of<&FigureRecord::servers>},
    {.key = "ps_mode", .line = "Attr2", .integer = integer_of<&FigureRecord::ps_mode>},
    {.key = "selection_rule",
     .line = "Attr3",
     .integer = integer_of<&FigureRecord::selection_rule>},
    {.key = "exit_filter", .line = "Attr4", .integer = integer_of<&FigureRecord::exit_filter>},
    {.key = "value1", .line = "Attr5", .real = value_of<1>},
    {.key = "value2", .line = "Attr6", .real = value_of<2>},
    {.key = "value3", .line = "Attr7", .real = value_of<3>},
    {.key = "value4", .line = "Attr8", .real = value_of<4>},
    {.key = "int1", .line = "Attr9", .integer = int_of<1>},
    {.key = "int2", .line = "Attr10", .integer = int_of<2>},
};
inline constexpr std::size_t attribute_count = 10;
static_assert(std::size(nodeb_properties) == attribute_count + 1);  // and the name

inline constexpr int work_load_bits = 4;  // of a queue's servers: the distribution
inline constexpr int user_model_entry = 2;
static_assert(distributions[user_model_entry].word == std::string_view("user-model"));

inline constexpr FigureProperty queue_properties[] = {
    {.key = "servers",
     .line = "work load distribution",
     .integer = integer_of<&FigureRecord::servers>,
     .words = distributions,
     .code_bits = work_load_bits},
    {.key = "ps_mode",
     .line = "mean work load",
     .unit = "t.u.",
     .integer = integer_of<&FigureRecord::ps_mode>},
    {.key = "selection_rule",
     .line = "delay",
     .integer = integer_of<&FigureRecord::selection_rule>},
    {.key = "exit_filter", .line = "parameter", .integer = integer_of<&FigureRecord::exit_filter>},
    {.key = "int2", .line = "max message size", .integer = int_of<2>},
    {.key = "value2", .line = "user impatience mean", .unit = "s", .real = value_of<2>},
    {.key = "value3", .line = "user impatience dev", .unit = "s", .real = value_of<3>},
    {.key = "value4", .line = "arrival rate", .unit = "calls/s", .real = value_of<4>},
    {.key = "int1",
     .line = "arrival distribution",
     .integer = int_of<1>,
     .words = distributions,
     .first_entry = user_model_entry},
    {.key = "value1", .line = "system time-out", .unit = "s", .real = value_of<1>},
};

inline constexpr FigureProperty tel_properties[] = {
    {.key = "servers",
     .line = "work load distribution",
     .integer = integer_of<&FigureRecord::servers>,
     .words = distributions},
    {.key = "selection_rule",
     .line = "first parameter",
     .integer = integer_of<&FigureRecord::selection_rule>},
    {.key = "exit_filter",
     .line = "second parameter",
     .integer = integer_of<&FigureRecord::exit_filter>},
    {.key = "ps_mode",
     .line = "modulation function",
     .integer = integer_of<&FigureRecord::ps_mode>},
    {.key = "value4", .line = "arrival rate", .unit = "calls/s", .real = value_of<4>},
    {.key = "value2", .line = "user impatience mean", .unit = "s", .real = value_of<2>},
    {.key = "value3", .line = "user impatience dev", .unit = "s", .real = value_of<3>},
};

inline constexpr FigureProperty arc_properties[] = {
    {.key = "probability",
     .line = "Probability",
     .real = [](FigureRecord& arc) -> double& { return arc.probability; },
     .is_share = true},
    {.key = "class", .line = "Class", .text = text_of<&FigureRecord::job_class>},
    name_property,
};

/// What a kind of menu shows, in the order of its lines; empty for none.
[[nodiscard]] constexpr std::span<const FigureProperty> properties_of(FigureMenu menu) {
  switch (menu) {
    case FigureMenu::node:
      return node_properties;
    case FigureMenu::nodeb:
      return nodeb_properties;
    case FigureMenu::vbox:
      return std::span(node_properties).first(properties_of_a_box);
    case FigureMenu::vline:
      return std::span(node_properties).first(properties_of_a_line);
    case FigureMenu::queue:
      return queue_properties;
    case FigureMenu::tel:
      return tel_properties;
    case FigureMenu::arc:
      return arc_properties;
    case FigureMenu::none:
      break;
  }
  return {};
}

/// The property of a menu with a key; the compiler finds it.
consteval FigureProperty property_with(FigureMenu menu, std::string_view key) {
  for (const FigureProperty& property : properties_of(menu)) {
    if (property.key == key) return property;
  }
  throw "no such property";
}

// ------------------------------------------------------------------------------------------------

/// A real as menus show it: six digits at most, whatever the locale is.
[[nodiscard]] std::string shown_real(double value);

/// The code in an integer that is stored for a property, and the number above it.
struct CodeAndNumber {
  int code = 0;
  int number = 0;
};
[[nodiscard]] CodeAndNumber split_code(const FigureProperty& property, int stored);
[[nodiscard]] int join_code(const FigureProperty& property, CodeAndNumber parts);

/// A code's word, null when the vocabulary has none for it.
[[nodiscard]] const char* word_for(Vocabulary words, int code);

/// A figure's codes become those that its menu would show: one that has no word becomes the first
/// entry's.
void settle_codes(FigureRecord& figure);

}  // namespace torve
