#include <cairo-pdf.h>
#include <cairo.h>
#include <cmath>
#include <memory>
#include <numbers>

#include "figure/formats.hpp"

namespace torve {

namespace {

constexpr const char* font = "Helvetica";  // or what the system takes for it

struct Destroyer {
  void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
  void operator()(cairo_t* context) const { cairo_destroy(context); }
};
using Surface = std::unique_ptr<cairo_surface_t, Destroyer>;
using Context = std::unique_ptr<cairo_t, Destroyer>;

cairo_status_t append(void* bytes, const unsigned char* data, unsigned int size) {
  static_cast<std::string*>(bytes)->append(reinterpret_cast<const char*>(data), size);
  return CAIRO_STATUS_SUCCESS;
}

// Draws the items one after the other.
class Painter {
 public:
  explicit Painter(cairo_t* context) : context_(context) {
    cairo_set_line_cap(context_, CAIRO_LINE_CAP_ROUND);
    cairo_set_line_join(context_, CAIRO_LINE_JOIN_ROUND);
    cairo_select_font_face(context_, font, CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_NORMAL);
    // Letters stand where they belong at any size, not where pixels are.
    cairo_font_options_t* const options = cairo_font_options_create();
    cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
    cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
    cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
    cairo_set_font_options(context_, options);
    cairo_font_options_destroy(options);
  }

  void operator()(const Lines& lines) {
    for (const auto& [from, to] : lines.lines) {
      cairo_move_to(context_, from.x, from.y);
      cairo_line_to(context_, to.x, to.y);
    }
    stroke(lines.ink);
  }

  void operator()(const Curve& curve) {
    cairo_save(context_);
    const Box& box = curve.clip;
    cairo_rectangle(context_, box.x1, box.y1, box.width(), box.height());
    cairo_clip(context_);
    for (const Point& point : curve.points)
      cairo_line_to(context_, point.x, point.y);
    stroke(curve.ink);
    cairo_restore(context_);
  }

  void operator()(const Circle& circle) {
    cairo_new_sub_path(context_);
    cairo_arc(context_, circle.centre.x, circle.centre.y, circle.radius, 0, 2 * std::numbers::pi);
    cairo_close_path(context_);
    stroke(circle.ink);
  }

  void operator()(const Text& text) {
    constexpr double parts[] = {0, 0.5, 1};  // of the width, left of the anchor
    cairo_save(context_);
    set_colour(text.colour);
    cairo_set_font_size(context_, text.size);
    cairo_text_extents_t extents;
    cairo_text_extents(context_, text.text.c_str(), &extents);
    cairo_translate(context_, text.at.x, text.at.y);
    if (text.upward) cairo_rotate(context_, -std::numbers::pi / 2);
    cairo_move_to(context_, -extents.x_advance * parts[static_cast<std::size_t>(text.anchor)], 0);
    cairo_show_text(context_, text.text.c_str());
    cairo_rel_move_to(context_, 0, -text.size * raise);
    cairo_set_font_size(context_, text.size * raised_size);
    cairo_show_text(context_, text.raised.c_str());
    cairo_restore(context_);
  }

 private:
  void set_colour(std::uint32_t colour) {
    const auto part = [colour](unsigned shift) { return (colour >> shift & 0xFFU) / 255.0; };
    cairo_set_source_rgb(context_, part(16), part(8), part(0));
  }

  void stroke(const Ink& ink) {
    set_colour(ink.colour);
    cairo_set_line_width(context_, ink.width);
    cairo_stroke(context_);
  }

  cairo_t* context_;
};

bool paint(cairo_surface_t* surface, const Drawing& drawing, double scale) {
  const Context context(cairo_create(surface));
  cairo_scale(context.get(), scale, scale);
  cairo_set_source_rgb(context.get(), 1, 1, 1);
  cairo_paint(context.get());
  Painter painter(context.get());
  for (const Item& item : drawing.items)
    std::visit(painter, item);
  return cairo_status(context.get()) == CAIRO_STATUS_SUCCESS;
}

}  // namespace

std::optional<std::string> pdf_of(const Drawing& drawing) {
  std::string bytes;
  const Surface surface(
      cairo_pdf_surface_create_for_stream(append, &bytes, drawing.width, drawing.height));
  cairo_pdf_surface_set_metadata(surface.get(), CAIRO_PDF_METADATA_TITLE, drawing.title.c_str());
  cairo_pdf_surface_set_metadata(surface.get(), CAIRO_PDF_METADATA_CREATOR, "TORVE");
  cairo_pdf_surface_set_metadata(surface.get(), CAIRO_PDF_METADATA_CREATE_DATE, "");
  const bool is_painted = paint(surface.get(), drawing, 1);
  cairo_surface_finish(surface.get());
  if (!is_painted || cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS) {
    return std::nullopt;
  }
  return bytes;
}

std::optional<std::string> png_of(const Drawing& drawing, double scale) {
  const Surface surface(cairo_image_surface_create(
      CAIRO_FORMAT_RGB24, static_cast<int>(std::lround(drawing.width * scale)),
      static_cast<int>(std::lround(drawing.height * scale))));
  std::string bytes;
  if (!paint(surface.get(), drawing, scale) ||
      cairo_surface_write_to_png_stream(surface.get(), append, &bytes) != CAIRO_STATUS_SUCCESS) {
    return std::nullopt;
  }
  return bytes;
}

}  // namespace torve
