#pragma once

namespace artgen
{

// Where the editor puts its controls, and the shape of each knob picture: the
// pictures must fit these positions, hot spots and rotation ranges exactly.
struct KnobLayout
{
    const char* resource;
    const char* label;
    int width, height;      // picture size
    int hot_x, hot_y;       // pivot inside the picture
    int centre_x, centre_y;  // pivot on the editor screen
    double radius;          // of the knob body, in pixels
    double angle_offset;    // body angle at value 0, in turns
};

// Every knob turns by -0.75 turns (clockwise) from value 0 to value 1.
constexpr double knob_angle_span = -0.75;

constexpr KnobLayout knob_layouts[4] = {
    {"KN_01_SPN", "Bof", 73, 69, 36, 34, 294, 226, 32.5, 0.5417},
    {"KN_02_SPN", "Gauloises", 35, 41, 18, 22, 57, 150, 15.5, 0.125},
    {"KN_03_SPN", "Oignons", 40, 39, 20, 19, 64, 223, 18.0, 0.575},
    {"KN_04_SPN", "Vin Rouge", 56, 53, 29, 27, 64, 294, 24.0, 0.375},
};

constexpr int screen_width = 512;
constexpr int screen_height = 384;

// The switch: its track on the screen, and its two pictures, the "on" one
// drawn 8 pixels further right.
constexpr int switch_x = 334;
constexpr int switch_y = 74;
constexpr int switch_track_width = 39;
constexpr int switch_width = 31;
constexpr int switch_height = 25;
constexpr int switch_on_shift = 8;

constexpr int arrow_size = 20;
constexpr int arrow_hot = 9;

}  // namespace artgen
