#include "Artwork.h"

#include "BitmapText.h"
#include "Shapes.h"

#include <cmath>
#include <string>

namespace artgen
{

namespace artwork
{

namespace
{

constexpr double black = 1.0;
constexpr double white = 0.0;

// The scale's ends, in degrees: value 0 at the lower left, 1 at the lower right.
constexpr double scale_start_deg = 225.0;
constexpr double scale_sweep_deg = 360.0 * knob_angle_span;

Point knob_centre_in_picture(const KnobLayout& k)
{
    // The toolkit turns a picture about the centre of its hot-spot pixel.
    return {k.hot_x + 0.5, k.hot_y + 0.5};
}

void rounded_rect(Canvas& c, double x1, double y1, double x2, double y2, double r, double tone)
{
    paint(c, {disc({x1 + r, y1 + r}, r), disc({x2 - r, y1 + r}, r), disc({x1 + r, y2 - r}, r),
              disc({x2 - r, y2 - r}, r), polygon({{x1 + r, y1}, {x2 - r, y1}, {x2 - r, y2}, {x1 + r, y2}}),
              polygon({{x1, y1 + r}, {x2, y1 + r}, {x2, y2 - r}, {x1, y2 - r}})},
          tone);
}

// The knob's scale on the background: eleven ticks, the ends and the middle longer.
void knob_scale(Canvas& c, const KnobLayout& k, const PcfFont& small)
{
    const Point centre{k.centre_x + 0.5, k.centre_y + 0.5};
    // A shadow to the lower right, as if lit from the upper left: it shows
    // around the body as a grey crescent whatever the knob's angle.
    paint_grey(c, disc({centre.x + 1.5, centre.y + 2.5}, k.radius + 0.5), 0.5);
    const double r_in = k.radius + 3.5;
    const double width = k.radius > 30 ? 1.6 : 1.3;
    for (int i = 0; i <= 10; ++i)
    {
        const double deg = scale_start_deg + scale_sweep_deg * i / 10.0;
        const bool major = i == 0 || i == 5 || i == 10;
        const double r_out = r_in + (major ? 6.0 : 3.5) + (k.radius > 30 ? 2.0 : 0.0);
        paint(c, stroke(polar(centre, r_in, deg), polar(centre, r_out, deg), width), black);
    }
    if (k.radius > 30)
    {
        // The large knob has room for its numbers.
        const BitmapText text(small, 1, false);
        const Point at0 = polar(centre, k.radius + 17, scale_start_deg);
        const Point at10 = polar(centre, k.radius + 19, scale_start_deg + scale_sweep_deg);
        text.paint_centred(c, at0.x, at0.y - 4, "0", black);
        text.paint_centred(c, at10.x, at10.y - 4, "10", black);
    }
}

void frame(Canvas& c)
{
    const double w = screen_width, h = screen_height;
    paint(c, polyline({{5, 5}, {w - 5, 5}, {w - 5, h - 5}, {5, h - 5}, {5, 5}}, 2.5), black);
    paint(c, polyline({{10, 10}, {w - 10, 10}, {w - 10, h - 10}, {10, h - 10}, {10, 10}}, 1.0), black);
}

void title(Canvas& c, const Lettering& fonts)
{
    const BitmapText big(fonts.title, 2, true);
    big.paint(c, 24, 16, "Zarquette", black);
    const BitmapText maker(fonts.label, 1, false);
    paint(c, stroke({26, 70}, {190, 70}, 1.5), black);
    maker.paint(c, 198, 61, "Velnor", black);
    const BitmapText small(fonts.small, 1, false);
    small.paint(c, 27, 78, "boucles, chats et vin rouge", black);
}

void labels(Canvas& c, const Lettering& fonts)
{
    const BitmapText label(fonts.label, 1, false);
    const KnobLayout& big = knob_layouts[0];
    label.paint_centred(c, big.centre_x, big.centre_y + big.radius + 20, big.label, black);
    for (int i = 1; i < 4; ++i)
    {
        const KnobLayout& k = knob_layouts[i];
        label.paint(c, k.centre_x + k.radius + 16, k.centre_y - 9, k.label, black);
    }
    label.paint_centred(c, switch_x + switch_track_width / 2.0, switch_y - 24, "Nuclear Power", black);
    const BitmapText small(fonts.small, 1, false);
    small.paint_centred(c, switch_x + 8, switch_y + switch_height + 4, "off", black);
    small.paint_centred(c, switch_x + switch_track_width - 7, switch_y + switch_height + 4, "on", black);
}

void switch_track(Canvas& c)
{
    const double x1 = switch_x - 2.5, y1 = switch_y - 2.5;
    const double x2 = switch_x + switch_track_width + 2.5, y2 = switch_y + switch_height + 2.5;
    rounded_rect(c, x1, y1, x2, y2, 5, black);
    // Hatched inside, so the part the slider leaves free reads as a slot.
    paint_grey(c, polygon({{x1 + 1.5, y1 + 1.5}, {x2 - 1.5, y1 + 1.5}, {x2 - 1.5, y2 - 1.5}, {x1 + 1.5, y2 - 1.5}}), 0.25);
}

void cat(Canvas& c)
{
    const Figure head = ellipse({446, 218}, 34, 29);
    paint(c, {ellipse({446, 318}, 44, 54), ellipse({446, 354}, 54, 18), ellipse({446, 258}, 27, 26), head,
              polygon({{413, 214}, {418, 174}, {441, 196}}), polygon({{451, 196}, {474, 174}, {479, 214}})},
          black);
    paint(c, polyline(bezier({488, 362}, {530, 360}, {515, 300}, {490, 292}), 7.0), black);
    // The bib and the face.
    paint_grey(c, ellipse({446, 302}, 14, 26), 0.15);
    for (const double side : {-1.0, 1.0})
    {
        const Point eye{446 + side * 13, 214};
        paint(c, ellipse(eye, 6.5, 4.8, side * -12), white);
        paint(c, ellipse(eye, 1.6, 4.4), black);
        for (const double dy : {-4.0, 0.0, 4.0})
        {
            const Figure whisker = stroke({446 + side * 12, 229 + dy / 3}, {446 + side * 52, 225 + dy * 2.2}, 1.1);
            paint(c, intersect(whisker, head), white);
            paint(c, subtract(whisker, head), black);
        }
    }
    paint(c, polygon({{441, 223}, {451, 223}, {446, 228}}), white);
    paint(c, polyline(bezier({439, 233}, {441, 236}, {445, 235}, {446, 231}, 8), 1.1), white);
    paint(c, polyline(bezier({453, 233}, {451, 236}, {447, 235}, {446, 231}, 8), 1.1), white);
    // The beret, tilted over one ear, with its little stalk.
    // The beret: a flat brim and a puffed crown, tilted over one ear, set off
    // from the black head by a white edge, with its little stalk.
    const Point brim{424, 190}, crown{419, 183};
    paint(c, {ellipse(brim, 43, 14, 10), ellipse(crown, 33, 14.5, 10)}, white);
    paint(c, {ellipse(brim, 40, 11, 10), ellipse(crown, 30, 11.5, 10)}, black);
    paint(c, stroke({421, 172}, {424, 164}, 3.0), black);
}

void onion(Canvas& c, Point base, double s)
{
    // A squat bulb that narrows to a point at the top.
    std::vector<Point> outline = bezier({base.x, base.y}, {base.x - 1.7 * s, base.y + 0.1 * s},
                                        {base.x - 1.2 * s, base.y - 1.4 * s}, {base.x, base.y - 1.9 * s});
    const std::vector<Point> right = bezier({base.x, base.y - 1.9 * s}, {base.x + 1.2 * s, base.y - 1.4 * s},
                                            {base.x + 1.7 * s, base.y + 0.1 * s}, {base.x, base.y});
    outline.insert(outline.end(), right.begin(), right.end());
    const Figure body = polygon(outline);
    paint(c, body, white);
    // Shade on the right, in a dither that stays inside the skin.
    paint_grey(c, intersect(body, ellipse({base.x + 0.75 * s, base.y - 0.6 * s}, 0.7 * s, 0.9 * s)), 0.35);
    paint(c, polyline(outline, 1.6), black);
    for (const double k : {-0.55, 0.0, 0.55})
    {
        paint(c, polyline(bezier({base.x, base.y - 1.85 * s}, {base.x + k * s * 1.7, base.y - 1.3 * s},
                                 {base.x + k * s * 1.5, base.y - 0.3 * s}, {base.x, base.y - 0.05 * s}, 12),
                          0.9),
              black);
    }
    paint(c, stroke({base.x, base.y - 1.9 * s}, {base.x + 0.15 * s, base.y - 2.5 * s}, 1.8), black);
    for (const double dx : {-3.0, 0.0, 3.0})
    {
        paint(c, stroke({base.x, base.y}, {base.x + dx, base.y + 2}, 0.9), black);
    }
}

// A bottle and a half-full glass, standing on the table at x0.
void wine(Canvas& c, const PcfFont& small, double x0)
{
    const auto at = [x0](double x, double y) { return Point{x0 + x, y}; };
    paint(c, {polygon({at(0, 371), at(0, 318), at(8, 304), at(16, 298), at(16, 268), at(26, 268), at(26, 298),
                       at(34, 304), at(42, 318), at(42, 371)}),
              stroke(at(15, 269), at(27, 269), 3.0)},
          black);
    paint(c, polygon({at(4, 330), at(38, 330), at(38, 355), at(4, 355)}), white);
    const BitmapText text(small, 1, false);
    text.paint_centred(c, x0 + 21, 336, "VIN", black);
    const Point bowl = at(66, 322);
    paint_grey(c, intersect(ellipse(bowl, 15, 18), polygon({at(49, 322), at(83, 322), at(83, 342), at(49, 342)})), 0.6);
    paint(c, polyline(arc(bowl, 15.5, 180, 360, 40), 1.5), black);
    paint(c, {stroke(at(50.5, 322), at(50.5, 302), 1.5), stroke(at(81.5, 322), at(81.5, 302), 1.5)}, black);
    paint(c, stroke(at(66, 340), at(66, 366), 2.0), black);
    paint(c, ellipse(at(66, 368), 12, 3), black);
}

}  // namespace

double knob_pointer_deg(const KnobLayout& k)
{
    return scale_start_deg - 360.0 * k.angle_offset;
}

Canvas knob(const KnobLayout& k, double extra_deg)
{
    Canvas c(k.width, k.height, white, 0.0);
    const Point centre = knob_centre_in_picture(k);
    const double r = k.radius;
    // A knurled skirt: teeth every 7 pixels or so around the rim.
    const int teeth = static_cast<int>(std::lround(2.0 * pi * r / 7.0));
    const double rot = knob_pointer_deg(k) + extra_deg;
    std::vector<Figure> body{disc(centre, r - 2.0)};
    for (int i = 0; i < teeth; ++i)
    {
        body.push_back(wedge(centre, r, r - 2.5, rot + (i + 0.7) * 360.0 / teeth, 0.3 * 360.0 / teeth));
    }
    paint(c, body, black);
    // The cap, set off from the skirt by a fine white ring.
    paint(c, ring(centre, r * 0.74 + 0.6, r * 0.74 - 0.6), white);
    // The pointer: a broad white bar from near the middle out to the rim,
    // clear of the middle where the drag pointer is drawn.
    const double bar = std::max(3.0, r * 0.15);
    // It stops at the teeth, so the body's outline stays round as it turns.
    paint(c, intersect(stroke(polar(centre, r * 0.38, rot), polar(centre, r, rot), bar), disc(centre, r - 2.0)), white);
    return c;
}

Canvas switch_state(int state)
{
    Canvas c(switch_width, switch_height, white, 0.0);
    const double w = switch_width, h = switch_height;
    if (state == 0)
    {
        // Off: a white slider on the left, with grip lines.
        rounded_rect(c, 0, 0, w, h, 4, black);
        rounded_rect(c, 2, 2, w - 2, h - 2, 2.5, white);
        for (const double x : {11.5, 15.5, 19.5})
        {
            paint(c, stroke({x, 7}, {x, h - 7}, 1.4), black);
        }
        return c;
    }
    // On: a black slider on the right, showing the trefoil.
    rounded_rect(c, 0, 0, w, h, 4, black);
    const Point centre{w / 2, h / 2};
    paint(c, disc(centre, 2.6), white);
    for (const double deg : {30.0, 150.0, 270.0})
    {
        paint(c, wedge(centre, 10.5, 4.0, deg, 30.0), white);
    }
    return c;
}

Canvas arrow()
{
    // The drag pointer: a white up-and-down arrow, drawn over a knob's cap.
    Canvas c(arrow_size, arrow_size, white, 0.0);
    const double x = arrow_hot + 0.5;
    paint(c, {polygon({{x, 0.5}, {x + 5.5, 6.5}, {x - 5.5, 6.5}}), polygon({{x, 19.0}, {x + 5.5, 13.0}, {x - 5.5, 13.0}}),
              stroke({x, 5}, {x, 14.5}, 2.6)},
          white);
    return c;
}

Canvas background(const Lettering& fonts)
{
    Canvas c(screen_width, screen_height, white, 1.0);
    frame(c);
    title(c, fonts);
    for (const KnobLayout& k : knob_layouts)
    {
        knob_scale(c, k, fonts.small);
    }
    switch_track(c);
    labels(c, fonts);
    paint(c, stroke({190, 371.5}, {500, 371.5}, 1.5), black);
    wine(c, fonts.small, 200);
    onion(c, {306, 369}, 12);
    onion(c, {340, 369}, 15);
    onion(c, {373, 369}, 11);
    cat(c);
    return c;
}

}  // namespace artwork

}  // namespace artgen
