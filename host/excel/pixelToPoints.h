#pragma once

// Converts a height in screen pixels to points. The host's grids are drawn at 96 dots per inch
// times the screen factor (the resolution ratio of the display), so a pixel on a screen with
// factor f is 72 / (96 f) points. A factor of 0 or less counts as 1.
double pixelToPoints(double pixels, double screenFactor = 1.0);
