#include <array>
#include <charconv>
#include <cmath>
#include <string_view>

#include "figure/formats.hpp"

// The library that writes the other formats would make outlines of the texts.

namespace torve {

namespace {

std::string number(double value) {
  std::array<char, 400> text;
  const double rounded = std::round(value * 100) / 100;
  return {
      text.data(),
      std::to_chars(text.data(), text.data() + text.size(), rounded, std::chars_format::fixed).ptr};
}

std::string attribute(const char* name, const std::string& value) {
  std::string text = " ";
  return text.append(name).append("=\"").append(value).append("\"");
}

std::string colour_text(std::uint32_t colour) {
  constexpr std::string_view digits = "0123456789abcdef";
  std::string text = "#";
  for (int shift = 20; shift >= 0; shift -= 4)
    text += digits[colour >> shift & 0xFU];
  return text;
}

std::string escaped(std::string_view text) {
  std::string out;
  for (const char character : text) {
    if (character == '&') {
      out += "&amp;";
    } else if (character == '<') {
      out += "&lt;";
    } else if (character == '>') {
      out += "&gt;";
    } else {
      out += character;
    }
  }
  return out;
}

std::string stroke(const Ink& ink) {
  return attribute("stroke", colour_text(ink.colour)) +
         attribute("stroke-width", number(ink.width));
}

std::string at(const Point& point) {
  return number(point.x).append(" ").append(number(point.y));
}

// Writes the items one after the other.
class SvgWriter {
 public:
  void operator()(const Lines& lines) {
    put("<path", stroke(lines.ink), " d=\"");
    for (const auto& [from, to] : lines.lines) {
      put("M", at(from));
      if (from.x == to.x) {
        put("V", number(to.y));
      } else {
        put("L", at(to));
      }
    }
    put("\"/>\n");
  }

  void operator()(const Curve& curve) {
    const std::string clip = std::string("clip").append(std::to_string(++clips_));
    const Box& box = curve.clip;
    put("<clipPath", attribute("id", clip), "><rect", attribute("x", number(box.x1)),
        attribute("y", number(box.y1)), attribute("width", number(box.width())),
        attribute("height", number(box.height())), "/></clipPath>\n");
    put("<polyline", stroke(curve.ink), " clip-path=\"url(#", clip, ")\" points=\"");
    for (const Point& point : curve.points)
      put(at(point), " ");
    put("\"/>\n");
  }

  void operator()(const Circle& circle) {
    put("<circle", stroke(circle.ink), attribute("cx", number(circle.centre.x)),
        attribute("cy", number(circle.centre.y)), attribute("r", number(circle.radius)), "/>\n");
  }

  void operator()(const Text& text) {
    constexpr std::array<const char*, 3> anchors = {"start", "middle", "end"};
    put("<text", attribute("x", number(text.at.x)), attribute("y", number(text.at.y)),
        attribute("font-size", number(text.size)),
        attribute("text-anchor", anchors.at(static_cast<std::size_t>(text.anchor))),
        attribute("fill", colour_text(text.colour)));
    if (text.upward) put(" transform=\"rotate(-90 ", at(text.at), ")\"");
    put(">", escaped(text.text));
    if (!text.raised.empty()) {
      put("<tspan", attribute("dy", number(-text.size * raise)),
          attribute("font-size", number(text.size * raised_size)), ">", escaped(text.raised),
          "</tspan>");
    }
    put("</text>\n");
  }

  template <typename... Parts>
  void put(const Parts&... parts) {
    (text_.append(parts), ...);
  }

  [[nodiscard]] const std::string& text() const { return text_; }

 private:
  std::string text_;
  int clips_ = 0;
};

}  // namespace

std::string svg_of(const Drawing& drawing) {
  const std::string width = number(drawing.width);
  const std::string height = number(drawing.height);
  SvgWriter writer;
  writer.put("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n",
             "<svg xmlns=\"http://www.w3.org/2000/svg\"", " width=\"", width, "pt\" height=\"",
             height, "pt\" viewBox=\"0 0 ", width, " ", height, "\"",
             attribute("font-family", "Helvetica, Arial, 'DejaVu Sans', sans-serif"), ">\n");
  if (!drawing.title.empty()) writer.put("<title>", escaped(drawing.title), "</title>\n");
  writer.put("<rect width=\"100%\" height=\"100%\" fill=\"#ffffff\"/>\n",
             "<g fill=\"none\" stroke-linecap=\"round\" stroke-linejoin=\"round\">\n");
  for (const Item& item : drawing.items)
    std::visit(writer, item);
  writer.put("</g>\n</svg>\n");
  return writer.text();
}

}  // namespace torve
