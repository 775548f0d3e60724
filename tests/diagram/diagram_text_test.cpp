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
  kept.record.identity = serial + 20;
  kept.label = label;
  return kept;
}

KeptDiagram every_field() {
  KeptDiagram diagram = {figure(FigureKind::node, 7, 9), figure(FigureKind::vcircle, 8),
                         figure(FigureKind::label, 9), figure(FigureKind::arc, 10)};
  FigureRecord& node = diagram[0].record;
  node.colour = 0xABCDEF;
  node.servers = 2147483647, node.exit_filter = -3, node.ps_mode = 7, node.selection_rule = 5;
  node.spare[0] = 1, node.spare[1] = 2, node.spare[2] = 3, node.spare[3] = 4;
  node.value[0] = 0.1, node.value[1] = -1e-300, node.value[2] = DBL_MAX, node.value[3] = 1.0 / 3;
  node.integer[0] = -2147483647 - 1, node.integer[1] = 12;
  std::snprintf(node.name, sizeof node.name, "\"q\\ \xE5\x01 1234567890123");
  std::snprintf(diagram[2].record.text, sizeof node.text, "cpu 1");
  node.other_keys = " z=1 note=\"a \\\" b\"";
  FigureRecord& arc = diagram[3].record;
  arc.from = {.figure = 7, .x_of = 1, .y_of = 2, .dx = 3, .dy = 5};
  arc.x1 = node.x1 + 3, arc.y1 = node.y2 + 5;  // where it holds on
  arc.bends = {{1, -2}, {300, 400}};
  arc.probability = 0.25;
  std::snprintf(arc.job_class, sizeof arc.job_class, "gold");
  return diagram;
}

TEST(DiagramText, ReadsBackWhatWasWritten) {
  const std::string text = diagram_to_text(every_field());
  int bad_line = 0;
  const auto read = diagram_from_text(text, &bad_line);
  ASSERT_TRUE(read) << "line " << bad_line << " of\n" << text;
  EXPECT_EQ(diagram_to_text(*read), text);
  ASSERT_EQ(read->size(), 4U);
  const FigureRecord& node = read->front().record;
  const FigureRecord wanted = every_field().front().record;
  EXPECT_STREQ(node.name, wanted.name);
  EXPECT_EQ(node.colour, wanted.colour);
  EXPECT_EQ(node.y2, -32768);
  EXPECT_EQ(node.value[3], 1.0 / 3);
  EXPECT_EQ(node.integer[0], wanted.integer[0]);
  EXPECT_EQ(node.exit_filter, 0) << "a code that its menu would show";
  EXPECT_EQ(read->front().label, read->at(2).record.serial);
  FigureRecord arc = every_field().back().record;
  arc.serial = read->back().record.serial, arc.from.figure = node.serial, arc.phase = 3;
  EXPECT_TRUE(read->back().record == arc);
  // Where the node is says where the arc begins.
  std::string moved = text;
  moved.replace(moved.find("x1=10"), 5, "x1=20");
  EXPECT_EQ(diagram_from_text(moved, &bad_line)->back().record.x1, 23);
}

TEST(DiagramText, RefusesABadLine) {
  const std::string good = "vline x1=1 y1=2 x2=3 y2=4";
  const std::string label = "label x1=1 y1=2 x2=3 y2=4 text=\"a\"";
  const std::string node = "node x1=1 y1=2 x2=1 y2=40 id=1", arc = "arc x1=1 y1=2 x2=3 y2=4";
  const std::pair<std::string, int> cases[] = {
      {good, 0},
      {"vline  y2=4\tx2=3 y1=2 x1=1 ", 0},
      {good + " label=2\n" + label, 0},
      {"vline\tx1=1 y1=2 x2=3 y2=4 # the way\r\n\n  # nothing\n\r\n" + good + " x1=1", 6},
      {good + " z=1 a.b-c=\"x y\" # rest=", 0},
      {"line x1=1 y1=2 x2=3 y2=4", 2},
      {"vline x1=1 y1=2 x2=3", 2},
      {good + " x1=1", 2},
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
      {good + " z=1 z=2", 2},
      {good + " z=", 2},
      {good + " 1z=2", 2},
      {good + " z=a\"b", 2},
      {good + " servers=1z=2", 2},
      {good + " id=0", 2},
      {good + " id=4\n" + good + " id=4", 3},
      {node + "\n" + arc + " from=1 from_x=x1-5 from_y=y2+7 bends=\"1,2 -3,4\" class=\"a\"", 0},
      {node + "\n" + arc + " probability=1.5", 3},
      {node + "\n" + arc + " to=2", 3},
      {node + "\n" + arc + " to=1 to_x=x3+1", 3},
      {node + "\n" + arc + " to=1 to_x=x1+-1", 3},
      {node + "\n" + arc + " bends=\"1,2 3\"", 3},
      {arc + " bends=\"-32768,32767\"", 0},
      {arc + " bends=\"-32769,0\"", 2},
  };
  for (const auto& [lines, expected] : cases) {
    int bad_line = 0;
    const bool read = diagram_from_text("torve-diagram 1\n" + lines + "\n", &bad_line).has_value();
    EXPECT_EQ(read ? 0 : bad_line, expected) << lines;
  }
  int bad_line = 0;
  EXPECT_FALSE(diagram_from_text("torve-diagram 3\n", &bad_line));
  EXPECT_EQ(bad_line, 1);
}

}  // namespace
}  // namespace torve
