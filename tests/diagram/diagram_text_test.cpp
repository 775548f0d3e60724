// Diagrams as text: what is written reads back, and nothing else is read.

#include "diagram/model/diagram_text.hpp"

#include <cfloat>

#include <gtest/gtest.h>

namespace torve {
namespace {

KeptFigure figure(FigureKind kind, int serial, int label = 0) {
  KeptFigure kept;
  kept.record.kind = kind;
  kept.record.serial = serial;
  kept.record.x1 = 10, kept.record.y1 = -20, kept.record.x2 = 32767, kept.record.y2 = -32768;
  kept.label = label;
  return kept;
}

KeptDiagram every_field() {
  KeptDiagram diagram = {figure(FigureKind::node, 7, 9), figure(FigureKind::vcircle, 8),
                         figure(FigureKind::label, 9)};
  Vobj& node = diagram[0].record;
  node.colour = 0xABCDEF;
  node.servers = 2147483647, node.exit_filter = -3, node.ps_mode = 7, node.selection_rule = 5;
  node.spare[0] = 1, node.spare[1] = 2, node.spare[2] = 3, node.spare[3] = 4;
  node.value[0] = 0.1, node.value[1] = -1e-300, node.value[2] = DBL_MAX, node.value[3] = 1.0 / 3;
  node.integer[0] = -2147483647 - 1, node.integer[1] = 12;
  std::snprintf(node.name, sizeof node.name, "\"q\\ \xE5\x01 1234567890123");
  std::snprintf(diagram[2].record.text, sizeof node.text, "cpu 1");
  return diagram;
}

TEST(DiagramText, ReadsBackWhatWasWritten) {
  const std::string text = diagram_to_text(every_field());
  int bad_line = 0;
  const auto read = diagram_from_text(text, &bad_line);
  ASSERT_TRUE(read) << "line " << bad_line << " of\n" << text;
  EXPECT_EQ(diagram_to_text(*read), text);
  ASSERT_EQ(read->size(), 3U);
  const Vobj& node = read->front().record;
  const Vobj wanted = every_field().front().record;
  EXPECT_STREQ(node.name, wanted.name);
  EXPECT_EQ(node.colour, wanted.colour);
  EXPECT_EQ(node.y2, -32768);
  EXPECT_EQ(node.value[3], 1.0 / 3);
  EXPECT_EQ(node.integer[0], wanted.integer[0]);
  EXPECT_EQ(read->front().label, read->back().record.serial);
}

TEST(DiagramText, RefusesABadLine) {
  const std::string good = "vline x1=1 y1=2 x2=3 y2=4";
  const std::string label = "label x1=1 y1=2 x2=3 y2=4 text=\"a\"";
  const std::pair<std::string, int> cases[] = {
      {good, 0},
      {"vline  y2=4\tx2=3 y1=2 x1=1 ", 0},
      {good + " label=2\n" + label, 0},
      {"", 2},
      {"line x1=1 y1=2 x2=3 y2=4", 2},
      {"vline x1=1 y1=2 x2=3", 2},
      {good + " x1=1", 2},
      {good + " z=1", 2},
      {good + " servers=", 2},
      {good + " servers=1.5", 2},
      {good + " servers=99999999999", 2},
      {"vline x1=40000 y1=2 x2=3 y2=4", 2},
      {good + " value1=nan", 2},
      {good + " value1=1e999", 2},
      {good + " colour=#1000000", 2},
      {good + " colour=255", 2},
      {good + " name=abc", 2},
      {good + " name=\"abc", 2},
      {good + " name=\"123456789012345678901\"", 2},
      {good + " name=\"\\n\"", 2},
      {good + " name=\"\\x00\"", 2},
      {good + " name=\"\\x1\"", 2},
      {good + "\n" + good + " label=1", 3},
      {good + " label=3", 2},
      {good + " label=-1", 2},
      {label + " label=1", 2},
      {good + " label=3\n" + good + " label=3\n" + label, 3},
  };
  for (const auto& [lines, expected] : cases) {
    int bad_line = 0;
    const bool read = diagram_from_text("torve-diagram 1\n" + lines + "\n", &bad_line).has_value();
    EXPECT_EQ(read ? 0 : bad_line, expected) << lines;
  }
  int bad_line = 0;
  EXPECT_FALSE(diagram_from_text("torve-diagram 2\n", &bad_line));
  EXPECT_EQ(bad_line, 1);
}

}  // namespace
}  // namespace torve
